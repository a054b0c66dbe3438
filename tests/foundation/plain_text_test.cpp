// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "tests/foundation/support.h"

#include <sigildesk/util.h>

#include <memory>

using namespace std::string_literals;

TEST(Hex, ToHexString)
{
    struct Case {
        std::string data;
        int len;
        const char* text;
    };
    const Case cases[] = {
        {"\x00\xAB"s, 2, "00ab"},
        {"\x01\x23\x45\x67\x89\xAB\xCD\xEF", 8, "0123456789abcdef"},
        {"abc", 1, "61"},
        {"abc", 0, ""},
        {"abc", -1, ""},
    };
    for (const Case& c : cases) {
        std::string data = c.data;
        const std::unique_ptr<char[]> text(CUtil().toHexString(data.data(), c.len));
        EXPECT_STREQ(text.get(), c.text);
    }
    const std::unique_ptr<char[]> text(CUtil().toHexString(nullptr, 3));
    EXPECT_STREQ(text.get(), "");
}

TEST(Hex, HexStringToBin)
{
    struct Case {
        std::string hex;
        std::string bytes;
    };
    const Case cases[] = {
        {"0a, 1B", "\x0A\x1B"},
        {"0123456789abcdefABCDEF", "\x01\x23\x45\x67\x89\xAB\xCD\xEF\xAB\xCD\xEF"},
        {"", ""},
        {"a", ""},
        {"abc", "\xAB"},
        {", ,,", ""},
        {"a ,b", "\xAB"},
        // Other characters are not refused: letters go on behind "F", what is below "0" counts down from it.
        {"0G", "\x10"},
        {"0g", "\x10"},
        {"G0", "\0"s},
        {"1z", "\x33"},
        {"0/", "\xFF"},
        {"0:", "\xE3"},
        {"00\0"s, "\0"s},
        {"0\0"s, "\xD0"},
    };
    for (const Case& c : cases) {
        std::string hex = c.hex;
        std::string out(16, '#');
        int length = 77;
        EXPECT_EQ(CUtil().HexStringToBin(hex.data(), static_cast<int>(hex.size()), out.data(), &length), 0);
        EXPECT_EQ(length, static_cast<int>(c.bytes.size())) << c.hex;
        EXPECT_EQ(out.substr(0, c.bytes.size()), c.bytes) << c.hex;
        EXPECT_EQ(out.substr(c.bytes.size()), std::string(16 - c.bytes.size(), '#'));
    }
}

TEST(Hex, HexStringToBinLooksAtTheLengthOnly)
{
    const std::unique_ptr<char[]> exact(new char[4]{'4', '1', '4', '2'});
    char out[8] = {};
    int length = 0;
    EXPECT_EQ(CUtil().HexStringToBin(exact.get(), 4, out, &length), 0);
    EXPECT_STREQ(out, "AB");
    EXPECT_EQ(CUtil().HexStringToBin(exact.get(), -1, out, &length), 0);
    EXPECT_EQ(length, 0);
    EXPECT_EQ(CUtil().HexStringToBin(nullptr, 4, out, &length), -1);
    EXPECT_EQ(CUtil().HexStringToBin(exact.get(), 4, nullptr, &length), -1);
    EXPECT_EQ(CUtil().HexStringToBin(exact.get(), 4, out, nullptr), -1);
}

TEST(PlainText, TrimData)
{
    struct Case {
        const char* in;
        int length;
        const char* out;
    };
    const Case cases[] = {
        {"abc", 3, "abc"},
        {"a\tb\r\nc\n", 3, "abc"},
        {"\n\n a b \t", 5, " a b "},
        {"\r\n\t", 3, "old"},
        {"", 3, "old"},
    };
    for (const Case& c : cases) {
        char out[16] = "old";
        EXPECT_EQ(CUtil().TrimData(Arg(c.in), out), c.length);
        EXPECT_STREQ(out, c.out);
    }
    char out[16] = "old";
    EXPECT_EQ(CUtil().TrimData(nullptr, out), 0);
    EXPECT_EQ(CUtil().TrimData(Arg("a"), nullptr), 0);
}

TEST(PlainText, TrimDataCutsItsInputUp)
{
    char in[] = "ab\ncd";
    char out[16] = "";
    CUtil().TrimData(in, out);
    EXPECT_EQ(std::string(in, 5), "ab\0cd"s);
    char same[] = "\ta\nb\n";
    EXPECT_EQ(CUtil().TrimData(same, same), 2);
    EXPECT_STREQ(same, "ab");
}

TEST(PlainText, ReplaceData)
{
    struct Case {
        const char* in;
        const char* from;
        const char* to;
        const char* out; // the buffer held "########"
    };
    const Case cases[] = {
        {"1.2.3", ".", " ", "1 2 3###"},
        {"1.2.3", ".x", " y", "1 2 3###"},
        {"abc", "x", "y", "abc#####"},
        {"", "x", "y", "########"},
        {"abc", "", "y", "abc#####"},
        {nullptr, "a", "b", "########"},
        {"abc", nullptr, "b", "########"},
        {"abc", "a", nullptr, "########"},
    };
    for (const Case& c : cases) {
        char out[] = "########";
        EXPECT_EQ(CUtil().ReplaceData(Arg(c.in), Arg(c.from), Arg(c.to), out), 0);
        EXPECT_STREQ(out, c.out);
    }
    EXPECT_EQ(CUtil().ReplaceData(Arg("abc"), Arg("a"), Arg("b"), nullptr), 0);
}

TEST(PlainText, ToLowerAndToUpperChangeOnlyAsciiLetters)
{
    struct Case {
        const char* text;
        const char* lower;
        const char* upper;
    };
    const Case cases[] = {
        {"", "", ""},
        {"Ab9_Z[`z{@", "ab9_z[`z{@", "AB9_Z[`Z{@"},
        {"\xC0\xE0\xB0\xA1", "\xC0\xE0\xB0\xA1", "\xC0\xE0\xB0\xA1"},
    };
    for (const Case& c : cases) {
        std::string lower = c.text;
        std::string upper = c.text;
        EXPECT_EQ(CUtil().ToLower(reinterpret_cast<unsigned char*>(lower.data())), static_cast<int>(lower.size()));
        EXPECT_EQ(CUtil().ToUpper(reinterpret_cast<unsigned char*>(upper.data())), static_cast<int>(upper.size()));
        EXPECT_EQ(lower, c.lower);
        EXPECT_EQ(upper, c.upper);
    }
    EXPECT_EQ(CUtil().ToLower(nullptr), 0);
    EXPECT_EQ(CUtil().ToUpper(nullptr), 0);
}
