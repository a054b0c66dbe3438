// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "foundation/text_field.h"

#include <gtest/gtest.h>

#include <string>

namespace {

std::string copied(std::size_t capacity, std::string_view text)
{
    std::string field = "####";
    sigil::copyText(field.data(), capacity, text);
    return field;
}

TEST(TextField, HoldsWhatFitsBeforeItsEnd)
{
    EXPECT_EQ(copied(4, "ab"), std::string("ab\0#", 4));
    EXPECT_EQ(copied(4, "abcd"), std::string("abc\0", 4));
    EXPECT_EQ(copied(1, "abcd"), std::string("\0###", 4));
    EXPECT_EQ(copied(4, {}), std::string("\0###", 4));
    EXPECT_EQ(copied(0, "abcd"), "####");
    sigil::copyText(nullptr, 4, "abcd");
}

TEST(TextField, IsReadToItsEndAtMost)
{
    EXPECT_EQ(sigil::fieldText("ab", 3), "ab");
    EXPECT_EQ(sigil::fieldText("abcd", 2), "ab");
    EXPECT_EQ(sigil::fieldText("abcd", 0), "");
}

} // namespace
