// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "foundation/secret.h"

#include <gtest/gtest.h>

#include <array>

TEST(Wipe, OverwritesEveryByteWithTheValue)
{
    std::array<char, 5> key{'s', 'e', 'c', 'r', 't'};
    sigil::wipe(key.data(), key.size() - 1, 0xCD);
    EXPECT_EQ(key, (std::array<char, 5>{'\xCD', '\xCD', '\xCD', '\xCD', 't'}));
}

TEST(Wipe, IgnoresANullPointer) { EXPECT_NO_FATAL_FAILURE(sigil::wipe(nullptr, 8)); }
