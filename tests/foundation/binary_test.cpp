// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "tests/foundation/support.h"

#include <sigildesk/binary.h>

#include <algorithm>
#include <climits>
#include <cstring>
#include <memory>
#include <new>
#include <type_traits>

namespace {

using namespace std::string_literals;

/** Every buffer, whatever made it, is followed by a zero byte; an empty one has no memory. */
void expectBytes(const CBinary& b, const std::string& bytes)
{
    EXPECT_EQ(bytesOf(b), bytes);
    EXPECT_EQ(b.m_nLength, static_cast<int>(bytes.size()));
    if (bytes.empty())
        EXPECT_EQ(b.m_pData, nullptr);
    else
        EXPECT_EQ(b.m_pData[b.m_nLength], '\0');
}

const std::string samples[] = {"", "a", "\0"s, "text", "\x30\x82\x00\xFF"s, std::string(5000, 'x')};

} // namespace

static_assert(std::has_virtual_destructor_v<CBinary>);

TEST(Binary, KeepsTheOrderOfItsMembers)
{
    CBinary b;
    const auto offset = [&b](auto& member) {
        return reinterpret_cast<const char*>(&member) - reinterpret_cast<const char*>(&b);
    };
    EXPECT_EQ(offset(b.m_pData), 8); // behind the table of the virtual destructor
    EXPECT_EQ(offset(b.m_nLength), 16);
    EXPECT_EQ(offset(b.m_pString), 24);
    EXPECT_EQ(offset(b.m_pHexString), 32);
    EXPECT_EQ(sizeof b, 40U);
}

TEST(Binary, StartsEmpty)
{
    CBinary b;
    expectBytes(b, "");
    EXPECT_TRUE(b.isEmpty());
    EXPECT_EQ(b.m_pString, nullptr);
    EXPECT_EQ(b.m_pHexString, nullptr);
}

TEST(Binary, ConstructorSetAndCopyHoldTheBytes)
{
    for (const std::string& sample : samples) {
        CBinary constructed = binary(sample);
        expectBytes(constructed, sample);
        EXPECT_EQ(constructed.isEmpty(), sample.empty());

        CBinary set = binary("old");
        set.set(std::string(sample).data(), static_cast<int>(sample.size()));
        expectBytes(set, sample);

        CBinary copy(constructed);
        expectBytes(copy, sample);
        EXPECT_TRUE(sample.empty() || copy.m_pData != constructed.m_pData);
    }
}

TEST(Binary, TreatsNegativeLengthsAndNullDataAsNoBytes)
{
    char data[] = "abc";
    expectBytes(CBinary(data, -1), "");
    expectBytes(CBinary(data, INT_MIN), "");
    expectBytes(CBinary(nullptr, 3), "");
    CBinary b = binary("old");
    b.set(data, -3);
    expectBytes(b, "");
}

TEST(Binary, CanBeDeletedThroughABasePointer)
{
    struct Derived : CBinary {
        explicit Derived(bool& gone)
            : m_gone(gone)
        {
        }
        ~Derived() override { m_gone = true; }
        bool& m_gone;
    };
    bool gone = false;
    std::unique_ptr<CBinary>(std::make_unique<Derived>(gone)).reset();
    EXPECT_TRUE(gone);
}

TEST(Binary, CopyTakesTheTextAlong)
{
    CBinary source = binary("a\0b"s);
    source.toString();
    CBinary copy(source);
    ASSERT_NE(copy.m_pString, nullptr);
    EXPECT_NE(copy.m_pString, source.m_pString);
    EXPECT_EQ(std::string(copy.m_pString, 4), "a\0b\0"s);
    EXPECT_EQ(CBinary(binary("ab")).m_pString, nullptr);
}

TEST(Binary, CopyOfATextOlderThanTheDataReachesOneByteFurtherThanTheData)
{
    struct Case {
        const char* data;
        const char* text;
    };
    for (const Case& c :
        {Case{"", "o"}, {"xy", "old"}, {"wxyz", "older"}, {"vwxyz", "older"}, {"a much longer content", "older"}}) {
        CBinary source = binary("older");
        source.toString();
        source = Arg(c.data);
        CBinary copy(source);
        expectBytes(copy, c.data);
        ASSERT_NE(copy.m_pString, nullptr);
        EXPECT_STREQ(copy.m_pString, c.text) << c.data;
        CBinary second(copy); // what is copied on is no longer than what was copied
        EXPECT_STREQ(second.m_pString, c.text) << c.data;
    }
}

TEST(Binary, EmptyReleasesEverything)
{
    CBinary b = binary("abc");
    b.toString();
    b.toHexString();
    b.empty();
    expectBytes(b, "");
    EXPECT_EQ(b.m_pString, nullptr);
    EXPECT_EQ(b.m_pHexString, nullptr);
    b.empty();
    expectBytes(b, "");
}

TEST(Binary, IsEmptyWithoutDataOrLength)
{
    CBinary b = binary("abc");
    b.m_nLength = 0;
    EXPECT_TRUE(b.isEmpty());
    b.m_nLength = 3;
    EXPECT_FALSE(b.isEmpty());
}

TEST(Binary, AssignmentCopiesTheBytes)
{
    for (const std::string& sample : samples) {
        CBinary source = binary(sample);
        CBinary target = binary("old content");
        target = source;
        expectBytes(target, sample);
        expectBytes(source, sample);
        target = target;
        expectBytes(target, sample);
    }
}

TEST(Binary, AssignmentOfATextDropsItsTerminator)
{
    CBinary b = binary("old");
    b = Arg("new text");
    expectBytes(b, "new text");
    b = Arg("");
    expectBytes(b, "");
    b = Arg("again");
    b = static_cast<char*>(nullptr);
    expectBytes(b, "");
}

TEST(Binary, TextsSurviveAssignmentsAndAppends)
{
    CBinary b = binary("abc");
    CBinary other = binary("other");
    CBinary none;
    char* text = b.toString();
    char* hex = b.toHexString();
    b = other;
    b = Arg("third");
    b = none;
    b += other;
    b += Arg("more");
    EXPECT_STREQ(text, "abc");
    EXPECT_STREQ(hex, "616263");
    EXPECT_EQ(b.m_pString, text);
    EXPECT_EQ(b.m_pHexString, hex);
    expectBytes(b, "othermore");
}

TEST(Binary, PlusJoins)
{
    for (const std::string& left : samples)
        for (const std::string& right : samples) {
            CBinary l = binary(left);
            CBinary r = binary(right);
            expectBytes(l + r, left + right);
            expectBytes(l, left);
            expectBytes(r, right);
        }
}

TEST(Binary, PlusIgnoresASideWithoutData)
{
    CBinary odd;
    odd.m_nLength = 5;
    CBinary text = binary("text");
    expectBytes(odd + text, "text");
    expectBytes(text + odd, "text");
    odd.m_nLength = 0;
}

TEST(Binary, PlusEqualsAppends)
{
    for (const std::string& left : samples)
        for (const std::string& right : samples) {
            CBinary l = binary(left);
            CBinary r = binary(right);
            EXPECT_EQ(&(l += r), &l);
            expectBytes(l, left + right);
        }
}

TEST(Binary, PlusEqualsWithNothingKeepsTheBlock)
{
    CBinary b = binary("abc");
    CBinary none;
    const char* block = b.m_pData;
    b += none;
    b += static_cast<char*>(nullptr);
    EXPECT_EQ(b.m_pData, block);
    expectBytes(b, "abc");
}

TEST(Binary, PlusEqualsWithATextAppendsItsCharacters)
{
    CBinary b = binary("abc");
    b += Arg("def");
    expectBytes(b, "abcdef");
    b += Arg("");
    expectBytes(b, "abcdef");
}

TEST(Binary, PlusEqualsWithAnEmptyTextGivesAnEmptyBufferABlock)
{
    CBinary b;
    b += Arg("");
    ASSERT_NE(b.m_pData, nullptr);
    EXPECT_EQ(b.m_pData[0], '\0');
    EXPECT_EQ(b.m_nLength, 0);
    EXPECT_TRUE(b.isEmpty());
    EXPECT_EQ(b.toString(), nullptr);
    b += Arg("abc");
    expectBytes(b, "abc");
}

TEST(Binary, ArgumentsMayPointIntoTheObject)
{
    CBinary b = binary("abc");
    b += b;
    expectBytes(b, "abcabc");
    b += b.m_pData;
    expectBytes(b, "abcabcabcabc");
    b.set(b.m_pData + 1, 2);
    expectBytes(b, "bc");
    b = b.m_pData + 1;
    expectBytes(b, "c");
    b.fromHexString(b.toHexString());
    expectBytes(b, "c");
}

TEST(Binary, Equality)
{
    CBinary none;
    CBinary block;
    block += Arg("");
    CBinary a = binary("abc");
    CBinary same = binary("abc");
    CBinary other = binary("abd");
    CBinary longer = binary("abcd");
    CBinary zeros = binary("a\0b"s);
    CBinary otherZeros = binary("a\0c"s);
    CBinary claimed;
    claimed.m_nLength = 3;
    CBinary claimedToo;
    claimedToo.m_nLength = 3;

    struct Case {
        const char* name;
        CBinary& left;
        CBinary& right;
        bool equal;
    };
    const Case cases[] = {
        {"both empty", none, none, true},
        {"same bytes", a, same, true},
        {"same object", a, a, true},
        {"other bytes", a, other, false},
        {"other length", a, longer, false},
        {"empty and not", none, a, false},
        {"not and empty", a, none, false},
        {"bytes behind a zero byte count", zeros, otherZeros, false},
        {"no data left, same claimed length", claimed, a, false},
        {"no data right, same claimed length", a, claimed, false},
        {"no data on both sides", claimed, claimedToo, true},
        {"null and an empty block", none, block, false},
        {"an empty block and null", block, none, false},
        {"an empty block and itself", block, block, true},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(c.left == c.right, c.equal) << c.name;
        EXPECT_EQ(c.left != c.right, !c.equal) << c.name;
    }
}

TEST(Binary, ZeroEmptyLeavesTheObjectEmpty)
{
    CBinary b = binary("secret");
    b.toString();
    b.zeroEmpty();
    expectBytes(b, "");
    EXPECT_EQ(b.m_pString, nullptr);
    b.zeroEmpty();
    expectBytes(b, "");
}

TEST(Binary, GetSub)
{
    struct Case {
        int start;
        int len;
        const char* expected;
    };
    const Case cases[] = {
        {0, 6, "abcdef"},
        {0, 1, "a"},
        {5, 1, "f"},
        {2, 3, "cde"},
        {6, 1, ""},
        {0, 0, ""},
        {3, 0, ""},
        {0, 7, ""},
        {5, 2, ""},
        {7, 0, ""},
        {100, 1, ""},
        {-1, 2, ""},
        {0, -1, ""},
        {2, -1, ""},
        {1, INT_MAX, ""},
        {INT_MAX, INT_MAX, ""},
        {INT_MIN, INT_MIN, ""},
    };
    CBinary source = binary("abcdef");
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << c.start << ", " << c.len);
        expectBytes(source.getSub(c.start, c.len), c.expected);
    }
    expectBytes(CBinary().getSub(0, 1), "");
}

TEST(Binary, ToStringMakesAFreshText)
{
    EXPECT_EQ(CBinary().toString(), nullptr);
    CBinary b = binary("ab\0c"s);
    const char* text = b.toString();
    ASSERT_NE(text, nullptr);
    EXPECT_NE(text, b.m_pData);
    EXPECT_EQ(text, b.m_pString);
    EXPECT_EQ(std::string(text, 5), "ab\0c\0"s);
    b.m_pData[0] = 'X';
    EXPECT_STREQ(text, "ab");
    EXPECT_STREQ(b.toString(), "Xb");
}

TEST(Binary, ToHexString)
{
    EXPECT_EQ(CBinary().toHexString(), nullptr);
    EXPECT_STREQ(binary("\x00\xAB"s).toHexString(), "00ab");
    EXPECT_STREQ(binary("\x01\x23\x45\x67\x89\xAB\xCD\xEF").toHexString(), "0123456789abcdef");
    CBinary b = binary("\xFF");
    b.toHexString();
    EXPECT_STREQ(b.toHexString(), "ff");
}

TEST(Binary, FromHexString)
{
    struct Case {
        const char* hex;
        int result;
        std::string bytes;
    };
    const Case cases[] = {
        {"00ab", 0, "\x00\xAB"s},
        {"0123456789abcdefABCDEF", 0, "\x01\x23\x45\x67\x89\xAB\xCD\xEF\xAB\xCD\xEF"},
        {"0A1", 0, "\x0A"},
        {"f", 0, ""},
        {"", 0, ""},
        {"zz", -1, "\0"s},
        {"12g4", -1, "\x12\0"s},
        {"124g56", -1, "\x12\0\0"s},
        {"41424:44", -1, "AB\0\0"s},
        {"@1", -1, "\0"s},
        {"1/", -1, "\0"s},
        {"1 2", -1, "\0"s},
        {"12 ", 0, "\x12"},
        {"\xB0\xA1", -1, "\0"s},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.hex);
        CBinary b = binary("old");
        b.toString();
        EXPECT_EQ(b.fromHexString(Arg(c.hex)), c.result);
        expectBytes(b, c.bytes);
        EXPECT_EQ(b.m_pString, nullptr);
    }
    CBinary b = binary("old");
    EXPECT_EQ(b.fromHexString(nullptr), -1);
    expectBytes(b, "");
}

TEST(Binary, Find)
{
    struct Case {
        std::string pattern;
        long len;
        int index;
    };
    const Case cases[] = {
        {"ab", 2, 0},
        {"cab", 3, 2},
        {"abcab", 5, 0},
        {"\0x"s, 2, 5},
        {"x", 1, 6},
        {"zz", 2, -1},
        {"abcab\0x"s, 7, 0},
        {"abcab\0xy"s, 8, -1},
        {"ab", 0, -1},
        {"ab", -1, -1},
        {"ab", LONG_MAX, -1},
        {"ab", 1, 0},
    };
    CBinary source = binary("abcab\0x"s);
    for (const Case& c : cases) {
        std::string pattern = c.pattern;
        EXPECT_EQ(source.find(reinterpret_cast<unsigned char*>(pattern.data()), c.len), c.index) << c.pattern;
    }
    EXPECT_EQ(source.find(nullptr, 1), -1);
    EXPECT_EQ(CBinary().find(reinterpret_cast<unsigned char*>(std::string("a").data()), 1), -1);
}

TEST(Binary, FindText)
{
    CBinary source = binary("abcab");
    EXPECT_EQ(source.find(Arg("ca")), 2);
    EXPECT_EQ(source.find(Arg("abcab")), 0);
    EXPECT_EQ(source.find(Arg("abcabc")), -1);
    EXPECT_EQ(source.find(Arg("")), -1);
    EXPECT_EQ(source.find(static_cast<char*>(nullptr)), -1);
    EXPECT_EQ(CBinary().find(Arg("a")), -1);
}

TEST(Binary, RefusesMoreBytesThanAnIntCounts)
{
    CBinary half;
    half.m_pData = new char[1]{};
    half.m_nLength = INT_MAX;
    EXPECT_THROW(half += Arg("x"), std::bad_alloc);
    half.m_nLength = 0;
}
