// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "foundation/secret.h"

#include <gtest/gtest.h>

#include <array>
#include <string>

TEST(Wipe, OverwritesEveryByteWithTheValue)
{
    std::array<char, 5> key{'s', 'e', 'c', 'r', 't'};
    sigil::wipe(key.data(), key.size() - 1, 0xCD);
    EXPECT_EQ(key, (std::array<char, 5>{'\xCD', '\xCD', '\xCD', '\xCD', 't'}));
}

TEST(Wipe, IgnoresANullPointer) { EXPECT_NO_FATAL_FAILURE(sigil::wipe(nullptr, 8)); }

TEST(Allocators, AreAllOneSoThatTextsChangeHands)
{
    EXPECT_EQ(sigil::SecretAllocator<char>(), sigil::SecretBytes().get_allocator());
    using Text = std::basic_string<char, std::char_traits<char>, sigil::WipingAllocator<char>>;
    EXPECT_EQ(sigil::WipingAllocator<char>(), Text().get_allocator());
}
