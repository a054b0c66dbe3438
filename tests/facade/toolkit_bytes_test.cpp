// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "facade/toolkit_bytes.h"

#include "tests/doubles/recorder.h"
#include "tests/facade/handle.h"

#include <gtest/gtest.h>

using sigil::ToolkitBytes;

class ToolkitBytesTest : public testing::TestWithParam<Type> {
protected:
    ToolkitBytesTest() { doubles::reset(); }
    Handle handle{GetParam().number, DOUBLES_FOLDER};
};

INSTANTIATE_TEST_SUITE_P(BothTypes, ToolkitBytesTest, testing::ValuesIn(bothTypes));

TEST_P(ToolkitBytesTest, HoldsACopyAndGivesItBack)
{
    {
        const ToolkitBytes bytes(handle, "abc", 3);
        EXPECT_EQ(doubles::liveByteStrings(), 1);
        EXPECT_EQ(bytes.size(), 3);
        CBinary copy = bytes.copy();
        EXPECT_STREQ(copy.toString(), "abc");
    }
    EXPECT_EQ(doubles::liveByteStrings(), 0);
}

TEST_P(ToolkitBytesTest, ReceivesAnOutputAndGivesItBack)
{
    doubles::answer(GetParam().symbol("BASE64_Encode"), doubles::fills(1, "YWJj"));
    {
        ToolkitBytes data(handle, "abc", 3);
        ToolkitBytes text(handle);
        EXPECT_TRUE(text.empty());
        ASSERT_EQ(Base64Encode(handle, data.get(), text.get()), 0);
        EXPECT_EQ(std::string(text.data(), 4), "YWJj");
        EXPECT_FALSE(text.empty());
    }
    EXPECT_EQ(doubles::liveByteStrings(), 0);
}

TEST_P(ToolkitBytesTest, ReleasesTheOldContentsBeforeNewOnes)
{
    ToolkitBytes bytes(handle, "old", 3);
    EXPECT_EQ(bytes.set("newer", 5), 0);
    EXPECT_EQ(doubles::contents(bytes.get()), "newer");
    EXPECT_EQ(doubles::liveByteStrings(), 1);
    bytes.clear();
    EXPECT_TRUE(bytes.empty());
    EXPECT_EQ(doubles::liveByteStrings(), 0);
}

TEST_P(ToolkitBytesTest, EmptyOnesReachNoRelease)
{
    {
        ToolkitBytes bytes(handle);
        EXPECT_TRUE(bytes.copy().isEmpty());
        EXPECT_EQ(bytes.set(nullptr, 0), 1001);
    }
    EXPECT_TRUE(doubles::callsOf(GetParam().symbol("BINSTR_Delete")).empty());
}

TEST_P(ToolkitBytesTest, ThatMemoryDoesNotSufficeForAreNotTakenForNone)
{
    ToolkitBytes bytes(handle, "old", 3);
    doubles::answer(GetParam().symbol("BINSTR_SetData"), 3002);
    EXPECT_THROW(bytes.set("newer", 5), std::bad_alloc);
    EXPECT_THROW(ToolkitBytes(handle, "abc", 3), std::bad_alloc);
    EXPECT_EQ(doubles::liveByteStrings(), 0);
}
