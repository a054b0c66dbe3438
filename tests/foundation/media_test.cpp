// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "foundation/media.h"

#include <gtest/gtest.h>

#include <string>

namespace {

std::string kindsOf(int medium)
{
    std::string kinds;
    kinds += sigil::isDisk(medium) ? "disk " : "";
    kinds += sigil::isToken(medium) ? "token " : "";
    kinds += sigil::isMemory(medium) ? "memory " : "";
    kinds += sigil::isRefused(medium) ? "refused" : "";
    return kinds;
}

TEST(Media, HaveTheirKinds)
{
    EXPECT_EQ(kindsOf(SIGIL_MEDIUM_HARD_DISK), "disk ");
    EXPECT_EQ(kindsOf(SIGIL_MEDIUM_REMOVABLE_DISK), "disk ");
    EXPECT_EQ(kindsOf(SIGIL_MEDIUM_TOKEN_FIRST), "token refused");
    EXPECT_EQ(kindsOf(SIGIL_MEDIUM_TOKEN_LAST), "token refused");
    EXPECT_EQ(kindsOf(SIGIL_MEDIUM_MEMORY_RESERVED), "memory refused");
    EXPECT_EQ(kindsOf(SIGIL_MEDIUM_MEMORY), "memory ");
    EXPECT_EQ(kindsOf(SIGIL_MEDIUM_OTHER), "");
}

} // namespace
