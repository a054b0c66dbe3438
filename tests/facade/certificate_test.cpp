// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// The certificate functions that do more than forward.

#include "tests/doubles/recorder.h"
#include "tests/doubles/variant.h"
#include "tests/facade/handle.h"

#include <gtest/gtest.h>

#include <array>
#include <climits>
#include <cstring>
#include <vector>

namespace {

/** A buffer that shows what was written to it. */
struct Buffer {
    explicit Buffer(char with = 'z') { bytes.fill(with); }
    char* data() { return bytes.data(); }
    std::string first(std::size_t n) const { return {bytes.data(), n}; }
    bool untouched() const { return first(bytes.size()) == std::string(bytes.size(), 'z'); }
    std::array<char, 128> bytes;
};

} // namespace

class CertificateTest : public testing::TestWithParam<Type> {
protected:
    CertificateTest() { doubles::reset(); }
    std::string symbol(const char* name) const { return GetParam().symbol(name); }
    Handle open(const std::string& folder = DOUBLES_FOLDER) const { return {GetParam().number, folder}; }
    /** Sets the version number that the toolkit reports. */
    void reportVersion(int version, int result = 0) const
    {
        doubles::answer(symbol("CERT_GetVersion"), [=](const doubles::Call& call) {
            EXPECT_EQ(*call.pointer<int>(0), 0);
            *call.pointer<int>(0) = version;
            return result;
        });
    }
};

INSTANTIATE_TEST_SUITE_P(BothTypes, CertificateTest, testing::ValuesIn(bothTypes));

TEST_P(CertificateTest, VersionIsWrittenInDecimal)
{
    const Handle handle = open();
    Buffer text;
    reportVersion(3);
    EXPECT_EQ(CertGetVersion(handle, 128, text.data()), 0);
    EXPECT_STREQ(text.data(), "3");
    reportVersion(-12);
    EXPECT_EQ(CertGetVersion(handle, 128, text.data()), 0);
    EXPECT_STREQ(text.data(), "-12");
}

TEST_P(CertificateTest, VersionKeepsToTheCapacity)
{
    const Handle handle = open();
    Buffer text;
    reportVersion(12345);
    EXPECT_EQ(CertGetVersion(handle, 3, text.data()), 0);
    EXPECT_EQ(text.first(4), std::string("12\0z", 4));
    Buffer untouched;
    EXPECT_EQ(CertGetVersion(handle, 0, untouched.data()), 0);
    EXPECT_EQ(CertGetVersion(handle, -1, untouched.data()), 0);
    EXPECT_TRUE(untouched.untouched());
}

TEST_P(CertificateTest, VersionIsWrittenAlsoWhenTheToolkitFails)
{
    const Handle handle = open();
    Buffer text;
    doubles::answer(symbol("CERT_GetVersion"), 55);
    EXPECT_EQ(CertGetVersion(handle, 128, text.data()), 55);
    EXPECT_STREQ(text.data(), "0");
    reportVersion(2, 56);
    EXPECT_EQ(CertGetVersion(handle, 128, text.data()), 56);
    EXPECT_STREQ(text.data(), "2");
}

TEST_P(CertificateTest, VersionIsNotWrittenWithoutTheToolkitsFunction)
{
    doubles::FolderWithout folder(symbol("CERT_GetVersion"));
    const Handle handle = open(folder.chars());
    Buffer text;
    EXPECT_EQ(CertGetVersion(handle, 128, text.data()), 1003);
    EXPECT_TRUE(text.untouched());
}

TEST(MakerValidity, InsistsOnRoomForTwoDates)
{
    doubles::reset();
    const Handle handle(0, DOUBLES_FOLDER);
    const Handle unloaded(0, "/nonexistent");
    Buffer before, after;
    doubles::forgetCalls();
    const int tooSmall[][2] = {{24, 100}, {100, 24}, {24, 24}, {0, 0}, {-1, 100}, {100, -1}};
    for (const auto& [first, second] : tooSmall) {
        EXPECT_EQ(CertGetValidity(handle, first, before.data(), second, after.data()), 1001);
        EXPECT_EQ(CertGetValidity(unloaded, first, before.data(), second, after.data()), 1001);
    }
    EXPECT_EQ(CertGetValidity(handle, 0, nullptr, 0, after.data()), 1000) << "the buffers come first";
    EXPECT_EQ(CertGetValidity(handle, 0, before.data(), 0, nullptr), 1000);
    EXPECT_TRUE(doubles::calls().empty());
    EXPECT_EQ(CertGetValidity(handle, 25, before.data(), 25, after.data()), 0);
    ASSERT_EQ(doubles::calls().size(), 1U);
    EXPECT_EQ(doubles::calls()[0].pointer<char>(0), before.data());
    EXPECT_EQ(doubles::calls()[0].pointer<char>(1), after.data());
    EXPECT_EQ(doubles::calls()[0].arguments.size(), 2U) << "the capacities are not passed on";
}

class GpkiValidity : public testing::Test {
protected:
    GpkiValidity() { doubles::reset(); }
    int validity(const std::string& text, int result = 0)
    {
        doubles::answer("GPKI_CERT_GetValidity", doubles::writesText(text, result));
        return CertGetValidity(handle, capacity, before.data(), 0, after.data());
    }
    Handle handle{1, DOUBLES_FOLDER};
    Buffer before, after;
    int capacity = 100;
};

TEST_F(GpkiValidity, SplitsTheTwoDates)
{
    EXPECT_EQ(validity("2020-01-01 00:00:00 ~ 2030-12-31 23:59:59"), 0);
    EXPECT_EQ(before.first(20), "2020-01-01 00:00:00z") << "deliberately not terminated";
    EXPECT_STREQ(after.data(), "2030-12-31 23:59:59");
}

TEST_F(GpkiValidity, SplitsAtTheFirstTilde)
{
    EXPECT_EQ(validity("A ~ B ~ C"), 0);
    EXPECT_EQ(before.first(2), "Az");
    EXPECT_STREQ(after.data(), "B ~ C");
}

TEST_F(GpkiValidity, TakesAnySeparatorCharacter)
{
    EXPECT_EQ(validity("A-~-B"), 0);
    EXPECT_EQ(before.first(2), "Az");
    EXPECT_STREQ(after.data(), "B");
}

TEST_F(GpkiValidity, DatesMayBeEmpty)
{
    EXPECT_EQ(validity(" ~ "), 0);
    EXPECT_TRUE(before.untouched());
    EXPECT_STREQ(after.data(), "");
    EXPECT_EQ(validity("A ~"), 0);
    EXPECT_STREQ(after.data(), "");
}

TEST_F(GpkiValidity, RefusesATextThatCannotBeSplit)
{
    EXPECT_EQ(validity("2020-01-01"), 1001);
    EXPECT_EQ(validity(""), 1001);
    EXPECT_EQ(validity("~ B"), 1001);
    EXPECT_TRUE(before.untouched());
    EXPECT_TRUE(after.untouched());
}

TEST_F(GpkiValidity, FailureLeavesTheBuffersAlone)
{
    EXPECT_EQ(validity("A ~ B", 88), 88);
    EXPECT_TRUE(before.untouched());
    EXPECT_TRUE(after.untouched());
}

TEST_F(GpkiValidity, ToolkitIsToldTheFirstCapacityForABufferOfItsOwn)
{
    for (int told : {5, 100, 1024, 5000}) {
        doubles::answer("GPKI_CERT_GetValidity", [&](const doubles::Call& call) {
            EXPECT_EQ(call.integer(0), told);
            char* local = call.pointer<char>(1);
            EXPECT_NE(local, before.data());
            EXPECT_EQ(std::string(local, 1024), std::string(1024, '\0'));
            std::memset(local, 'x', static_cast<std::size_t>(told)); // as much as it was told
            std::memcpy(local, "A ~ B", 6 > told ? 5U : 6U);
            return 0;
        });
        EXPECT_EQ(CertGetValidity(handle, told, before.data(), 0, after.data()), 0);
        EXPECT_STREQ(after.data(), "B");
    }
}

TEST_F(GpkiValidity, TextMayFillTheCapacityWithoutATerminator)
{
    std::vector<char> first(8192), second(8192);
    for (int told : {100, 1024, 5000}) {
        const auto size = static_cast<std::size_t>(told);
        doubles::answer("GPKI_CERT_GetValidity", [&](const doubles::Call& call) {
            std::memset(call.pointer<char>(1), 'x', size);
            std::memcpy(call.pointer<char>(1), "A ~ ", 4);
            return 0;
        });
        EXPECT_EQ(CertGetValidity(handle, told, first.data(), 0, second.data()), 0);
        EXPECT_EQ(second.data(), std::string(size - 4, 'x'));
    }
}

TEST_F(GpkiValidity, AnEndlessCapacityTakesNoEndlessMemory)
{
    int told = 0;
    doubles::answer("GPKI_CERT_GetValidity", [&](const doubles::Call& call) {
        told = call.integer(0);
        std::memset(call.pointer<char>(1), 'x', static_cast<std::size_t>(told)); // it is all there
        std::memcpy(call.pointer<char>(1), "A ~ B", 6);
        return 0;
    });
    EXPECT_EQ(CertGetValidity(handle, INT_MAX, before.data(), 0, after.data()), 0);
    EXPECT_STREQ(after.data(), "B");
    EXPECT_EQ(told, 65536);
}
