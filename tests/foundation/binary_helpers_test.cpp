// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "tests/foundation/support.h"

#include <sigildesk/util.h>

#include <climits>

namespace {

using namespace std::string_literals;

} // namespace

TEST(BinaryHelpers, LeftAndRight)
{
    struct Case {
        std::string source;
        int n;
        std::string left;
        std::string right;
    };
    const Case cases[] = {
        {"abcdef", 2, "ab", "ef"},
        {"abcdef", 6, "abcdef", "abcdef"},
        {"abcdef", 0, "", ""},
        {"a\0b"s, 2, "a\0"s, "\0b"s},
        {"abcdef", 7, "abcdef", "abcdef"},
        {"abcdef", INT_MAX, "abcdef", "abcdef"},
        {"abcdef", -1, "", ""},
        {"abcdef", INT_MIN, "", ""},
        {"", 3, "", ""},
    };
    for (const Case& c : cases) {
        CBinary out = binary("old");
        EXPECT_EQ(CUtil().BinaryLeft(binary(c.source), &out, c.n), 0);
        EXPECT_EQ(bytesOf(out), c.left) << c.source << ' ' << c.n;
        out = Arg("old");
        EXPECT_EQ(CUtil().BinaryRight(binary(c.source), &out, c.n), 0);
        EXPECT_EQ(bytesOf(out), c.right) << c.source << ' ' << c.n;
    }
}

TEST(BinaryHelpers, Mid)
{
    struct Case {
        int start;
        int n;
        const char* expected;
    };
    const Case cases[] = {
        {0, 6, "abcdef"},
        {1, 2, "bc"},
        {5, 1, "f"},
        {3, 0, ""},
        {3, 10, "def"},
        {6, 1, ""},
        {9, 2, ""},
        {-1, 3, "ab"},
        {2, -1, ""},
        {INT_MAX, INT_MAX, ""},
        {INT_MIN, INT_MAX, ""},
        {1, INT_MAX, "bcdef"},
    };
    for (const Case& c : cases) {
        CBinary out = binary("old");
        EXPECT_EQ(CUtil().BinaryMid(binary("abcdef"), &out, c.start, c.n), 0);
        EXPECT_EQ(bytesOf(out), c.expected) << c.start << ' ' << c.n;
    }
}

TEST(BinaryHelpers, RefuseANullOutput)
{
    EXPECT_EQ(CUtil().BinaryLeft(binary("abc"), nullptr, 1), -1);
    EXPECT_EQ(CUtil().BinaryMid(binary("abc"), nullptr, 0, 1), -1);
    EXPECT_EQ(CUtil().BinaryRight(binary("abc"), nullptr, 1), -1);
    EXPECT_EQ(CUtil().ParingFindCnt(binary("abc"), Arg("b"), nullptr), -1);
    EXPECT_EQ(CUtil().ReplaceAll(Arg("abc"), "b", "x", nullptr), -1);
}

TEST(BinaryHelpers, Find2)
{
    struct Case {
        std::string source;
        const char* text;
        int start;
        int index;
    };
    const Case cases[] = {
        {"a|b|c", "|", 0, 1},
        {"a|b|c", "|", 1, 1},
        {"a|b|c", "|", 2, 3},
        {"a|b|c", "|", 4, -1},
        {"a|b|c", "|", 5, -1},
        {"a|b|c", "|", 6, -1},
        {"a|b|c", "|", -1, -1},
        {"a|b|c", "|", INT_MAX, -1},
        {"a|b|c", "b|c", 1, 2},
        // From 0 the search covers all bytes; from any other start it ends at a zero byte.
        {"a\0b|"s, "|", 0, 3},
        {"ab\0|"s, "|", 1, -1},
        {"ab\0|"s, "|", 3, 3},
        {"abc", "", 0, -1},
        {"abc", "", 1, -1},
        {"abc", nullptr, 0, -1},
        {"abc", nullptr, 1, -1},
        {"", "a", 0, -1},
        {"", "a", 1, -1},
    };
    for (const Case& c : cases)
        EXPECT_EQ(CUtil().BinaryFind2(binary(c.source), Arg(c.text), c.start), c.index)
            << c.source << ' ' << c.start;
}

TEST(BinaryHelpers, FindCount)
{
    struct Case {
        std::string source;
        const char* text;
        int count;
        int pos;
    };
    const Case cases[] = {
        {"a|b|c", "|", 2, 3},
        {"a|b|c|", "|", 3, 5},
        {"abc", "|", 0, -1},
        {"aaaa", "aa", 3, 2},
        {"abababa", "aba", 3, 4},
        // A single hit is reported one further than where it is.
        {"a|b", "|", 1, 2},
        {"|", "|", 1, 1},
        {"|ab", "|", 1, 1},
        {"x\0x"s, "x", 2, 2},
        {"", "x", 0, -1},
        {"abc", "", 0, -1},
        {"abc", nullptr, 0, -1},
    };
    for (const Case& c : cases) {
        int pos = 77;
        EXPECT_EQ(CUtil().BinaryFindCount(binary(c.source), Arg(c.text), pos), c.count) << c.source;
        EXPECT_EQ(pos, c.pos) << c.source;
    }
}

TEST(BinaryHelpers, ParingFindCnt)
{
    struct Case {
        std::string source;
        const char* separator;
        int count;
    };
    const Case cases[] = {
        {"a|b|c", "|", 2},
        {"a|b|c|", "|", 3},
        {"|||", "|", 3},
        {"abc", "|", 0},
        {"", "|", 0},
        {"line\nline\nrest", "\n", 2},
        // The walk goes on one byte behind the start of a hit, whatever the length of the separator.
        {"a,,b", ",,", 1},
        {"a,,,b", ",,", 2},
        {"a\r\nb\r\n", "\r\n", 2},
        // Behind the first separator a zero byte ends the search, before it does not.
        {"a\0b|c|"s, "|", 2},
        {"a|b\0c|"s, "|", 1},
        {"abc", "", 0},
        {"abc", nullptr, 0},
    };
    for (const Case& c : cases) {
        int count = 77;
        EXPECT_EQ(CUtil().ParingFindCnt(binary(c.source), Arg(c.separator), &count), 0);
        EXPECT_EQ(count, c.count) << c.source;
    }
}

TEST(BinaryHelpers, ReplaceAll)
{
    struct Case {
        const char* source;
        const char* from;
        const char* to;
        const char* expected;
    };
    const Case cases[] = {
        {"1.2.410", ".", " ", "1 2 410"},
        {"a.b", ".", "", "ab"},
        {"...", ".", "", ""},
        {"aaa", "aa", "b", "ba"},
        {"aaaa", "aa", "aaa", "aaaaaa"},
        {"abc", "x", "y", "abc"},
        {"abc", "abc", "y", "y"},
        {"", "x", "y", ""},
        {"xaxbx", "x", "long", "longalongblong"},
        {"abcabc", "abcabcd", "x", "abcabc"},
        {"abc", "b", nullptr, "ac"},
        {nullptr, "b", "x", ""},
    };
    for (const Case& c : cases) {
        CBinary out = binary("old");
        EXPECT_EQ(CUtil().ReplaceAll(Arg(c.source), c.from, c.to, &out), 0);
        EXPECT_EQ(bytesOf(out), c.expected);
        EXPECT_TRUE(!out.m_pData || out.m_pData[out.m_nLength] == '\0');
    }
    CBinary out = binary("old");
    EXPECT_EQ(CUtil().ReplaceAll(Arg("abc"), "", "x", &out), -1);
    EXPECT_EQ(CUtil().ReplaceAll(Arg("abc"), nullptr, "x", &out), -1);
    EXPECT_EQ(bytesOf(out), "old");
}

TEST(BinaryHelpers, ReplaceAllKeepsTheOutputWhenTheResultIsTooLarge)
{
    CBinary out = binary("old");
    const std::string many(70'000, 'a');
    EXPECT_EQ(CUtil().ReplaceAll(Arg(many), "a", many.c_str(), &out), 0);
    EXPECT_EQ(bytesOf(out), "old");
}
