// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// HV_GetErrInfo, which asks the toolkit, and HV_GetErrInfo2, which remembers.

#include "tests/doubles/recorder.h"
#include "tests/doubles/variant.h"
#include "tests/facade/handle.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstring>

class ErrorTextTest : public testing::TestWithParam<Type> {
protected:
    ErrorTextTest() { doubles::reset(); }
    std::string symbol(const char* name) const { return GetParam().symbol(name); }
    Handle open(const std::string& folder = DOUBLES_FOLDER) const { return {GetParam().number, folder}; }
};

INSTANTIATE_TEST_SUITE_P(BothTypes, ErrorTextTest, testing::ValuesIn(bothTypes));

TEST_P(ErrorTextTest, ErrorTextIsAskedWithTheContextAndALocalBuffer)
{
    const Handle handle = open();
    char buffer[64];
    std::memset(buffer, 'z', sizeof buffer);
    bool zeroed = false;
    doubles::answer(symbol("API_GetErrInfo"), [&](const doubles::Call& call) {
        const char* local = call.pointer<char>(1);
        zeroed = std::all_of(local, local + 2049, [](char c) { return c == 0; });
        EXPECT_NE(local, buffer);
        EXPECT_EQ(std::string(buffer, 9), std::string(8, '\0') + "z") << "the first eight bytes are cleared before";
        std::strcpy(call.pointer<char>(1), "wrong password"); // NOLINT: the double's own buffer
        return 0;
    });
    EXPECT_EQ(HV_GetErrInfo(handle, 63, buffer), 0);
    EXPECT_STREQ(buffer, "wrong password");
    EXPECT_TRUE(zeroed);
    const doubles::Call& call = doubles::calls().back();
    EXPECT_EQ(call.integer(0), 2048);
    EXPECT_NE(call.context, nullptr);
}

TEST_P(ErrorTextTest, ErrorTextIsCopiedToTheLimitAndThenNotTerminated)
{
    const Handle handle = open();
    doubles::setErrorText("0123456789ABCDEF");
    char buffer[24];
    std::memset(buffer, 'z', sizeof buffer);
    EXPECT_EQ(HV_GetErrInfo(handle, 12, buffer), 0);
    EXPECT_EQ(std::string(buffer, 14), "0123456789ABzz");
    EXPECT_EQ(HV_GetErrInfo(handle, 16, buffer), 0);
    EXPECT_EQ(std::string(buffer, 17), "0123456789ABCDEFz");
    EXPECT_EQ(HV_GetErrInfo(handle, 17, buffer), 0);
    EXPECT_EQ(std::string(buffer, 18), std::string("0123456789ABCDEF\0z", 18));
    EXPECT_EQ(HV_GetErrInfo(handle, -1, buffer), 0) << "no room, nothing but the cleared bytes";
    EXPECT_EQ(std::string(buffer, 9), std::string(8, '\0') + "8");
}

TEST_P(ErrorTextTest, FailedErrorTextLeavesTheBufferCleared)
{
    const Handle handle = open();
    doubles::answer(symbol("API_GetErrInfo"), -5);
    char buffer[] = "an older text";
    EXPECT_EQ(HV_GetErrInfo(handle, 13, buffer), -5);
    EXPECT_EQ(std::string(buffer, 13), std::string(8, '\0') + " text");
}

TEST_P(ErrorTextTest, ErrorTextNeedsABuffer)
{
    const Handle handle = open();
    EXPECT_EQ(HV_GetErrInfo(handle, 16, nullptr), GetParam().number == 0 ? 1001 : 1000);
}

TEST_P(ErrorTextTest, ErrorTextFunctionMayBeMissing)
{
    doubles::FolderWithout folder(symbol("API_GetErrInfo"));
    const Handle handle = open(folder.chars());
    char buffer[] = "an older text";
    EXPECT_EQ(HV_GetErrInfo(handle, 13, buffer), 1003);
    EXPECT_EQ(std::string(buffer, 13), std::string(8, '\0') + " text");
    doubles::answer(symbol("CERT_Unload"), 5);
    EXPECT_EQ(CertUnLoad(handle), 5) << "the failure that was to be reported counts";
}

TEST_P(ErrorTextTest, KeptErrorTextIsTheLastFailures)
{
    const Handle handle = open();
    std::array<char, 64> buffer{};
    EXPECT_EQ(HV_GetErrInfo2(handle, 63, buffer.data()), 0);
    EXPECT_EQ(buffer, (std::array<char, 64>{})) << "untouched before the first failure";
    EXPECT_EQ(HV_GetErrInfo2(handle, 63, nullptr), 0);

    doubles::answer(symbol("CERT_Unload"), 5);
    doubles::setErrorText("first");
    EXPECT_EQ(CertUnLoad(handle), 5);
    doubles::setErrorText("never asked for");
    doubles::answer(symbol("CERT_Unload"), 0);
    EXPECT_EQ(CertUnLoad(handle), 0);
    doubles::forgetCalls();
    EXPECT_EQ(HV_GetErrInfo2(handle, 63, buffer.data()), 0);
    EXPECT_STREQ(buffer.data(), "first");
    EXPECT_TRUE(doubles::calls().empty()) << "no toolkit is asked";
    EXPECT_EQ(HV_GetErrInfo2(handle, 63, nullptr), 0) << "null is not written to";

    buffer.fill('z');
    EXPECT_EQ(HV_GetErrInfo2(handle, 3, buffer.data()), 0);
    EXPECT_EQ(std::string(buffer.data(), 4), "firz");
}

TEST_P(ErrorTextTest, KeptErrorTextIsClearedWhenTheToolkitGivesNone)
{
    const Handle handle = open();
    doubles::answer(symbol("CERT_Unload"), 5);
    doubles::setErrorText("old text");
    CertUnLoad(handle);
    doubles::answer(symbol("API_GetErrInfo"), 6);
    CertUnLoad(handle);
    char buffer[64] = {};
    EXPECT_EQ(HV_GetErrInfo2(handle, 63, buffer), 0);
    EXPECT_STREQ(buffer, "");
}

TEST_P(ErrorTextTest, KeptErrorTextHasRoomForTheLongestText)
{
    const Handle handle = open();
    doubles::answer(symbol("CERT_Unload"), 5);
    doubles::answer(symbol("API_GetErrInfo"), [](const doubles::Call& call) {
        std::memset(call.pointer<char>(1), 'e', 2048);
        return 0;
    });
    CertUnLoad(handle);
    std::array<char, 4096> buffer{};
    EXPECT_EQ(HV_GetErrInfo2(handle, 4096, buffer.data()), 0);
    EXPECT_EQ(std::string(buffer.data()), std::string(2048, 'e'));
}
