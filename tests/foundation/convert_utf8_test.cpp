// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "tests/foundation/support.h"

#include <sigildesk/convert_utf8.h>
#include <sigildesk/util.h>

#include <climits>
#include <cstring>
#include <memory>
#include <optional>

namespace {

using namespace std::string_literals;

using Bytes = std::optional<std::string>; // nothing: the conversion failed

/** Runs a conversion that allocates its output. */
Bytes allocated(int (ConvertUTF8::*convert)(const unsigned char*, int, unsigned char**, int&),
    const std::string& in, int capacity, int failure)
{
    unsigned char* out = nullptr;
    int outLen = capacity;
    const int result = (ConvertUTF8().*convert)(
        reinterpret_cast<const unsigned char*>(in.data()), static_cast<int>(in.size()), &out, outLen);
    const std::unique_ptr<unsigned char[]> owner(out);
    if (result == 0)
        return std::string(reinterpret_cast<char*>(out), static_cast<std::size_t>(outLen));
    EXPECT_EQ(result, failure);
    EXPECT_EQ(out, nullptr);
    return std::nullopt;
}

/** Runs a conversion into the caller's buffer; nothing is written behind the output, nor at all on failure. */
Bytes written(int (ConvertUTF8::*convert)(const char*, int, char*, int&), const std::string& in)
{
    std::string out(in.size() * 3 / 2 + 2, '#');
    int outLen = 77;
    const int result = (ConvertUTF8().*convert)(in.data(), static_cast<int>(in.size()), out.data(), outLen);
    const std::size_t length = result == 0 ? static_cast<std::size_t>(outLen) : 0;
    EXPECT_EQ(out.find_first_not_of('#', length), std::string::npos);
    if (result == 0)
        return out.substr(0, length);
    EXPECT_EQ(result, -1);
    EXPECT_EQ(outLen, 77);
    return std::nullopt;
}

Bytes utf82unicode(const std::string& in) { return allocated(&ConvertUTF8::utf82unicode, in, 0, 0); }
Bytes unicode2utf8(const std::string& in) { return allocated(&ConvertUTF8::unicode2utf8, in, 0, -1); }
Bytes ascii2unicode(const std::string& in) { return allocated(&ConvertUTF8::ascii2unicode, in, 0, -1); }
Bytes unicode2ascii(const std::string& in, int capacity = 1000)
{
    return allocated(&ConvertUTF8::unicode2ascii, in, capacity, 3);
}
Bytes utf82ascii(const std::string& in) { return written(&ConvertUTF8::utf82ascii, in); }
Bytes ascii2utf8(const std::string& in) { return written(&ConvertUTF8::ascii2utf8, in); }

/** UCS-2 of code units. */
std::string units(std::initializer_list<unsigned> list)
{
    std::string text;
    for (unsigned unit : list) {
        text += static_cast<char>(unit & 0xFF);
        text += static_cast<char>(unit >> 8);
    }
    return text;
}

} // namespace

TEST(ConvertUtf8, Utf8ToUnicode)
{
    struct Case {
        const char* name;
        std::string in;
        std::string out;
    };
    const Case cases[] = {
        {"empty", "", ""},
        {"ASCII with zero bytes", "a\0\x7F"s, units({'a', 0, 0x7F})},
        {"first syllable", "\xEA\xB0\x80", units({0xAC00})},
        {"last syllable", "\xED\x9E\xA3", units({0xD7A3})},
        {"before the first syllable", "\xEA\xAF\xBF", units({'?', '?', '?'})},
        {"behind the last syllable", "\xED\x9E\xA4", units({'?', '?', '?'})},
        {"between ASCII", "a\xEA\xB0\x80z", units({'a', 0xAC00, 'z'})},
        {"two bytes", "\xC3\xA9", units({'?', '?'})},
        {"Hanja", "\xE4\xB8\x80", units({'?', '?', '?'})},
        {"Hangul letter", "\xE3\x84\xB1", units({'?', '?', '?'})},
        {"four bytes", "\xF0\x9F\x98\x80", units({'?', '?', '?', '?'})},
        {"stray continuation", "\x80\xBF", units({'?', '?'})},
        {"cut after one byte", "\xEA", units({'?'})},
        {"cut after two bytes", "\xEA\xB0", units({'?', '?'})},
        {"syllable behind a cut one", "\xEA\xB0\xEA\xB0\x80", units({'?', '?', 0xAC00})},
        {"second byte is none", "\xEA\x30\x80", units({'?', '0', '?'})},
        {"third byte is none", "\xEA\xB0\x30", units({'?', '?', '0'})},
        {"third byte is a lead byte", "\xEA\xB0\xC0", units({'?', '?', '?'})},
        {"bytes that never occur", "\xFE\xFF", units({'?', '?'})},
    };
    for (const Case& c : cases)
        EXPECT_EQ(utf82unicode(c.in), c.out) << c.name;
}

TEST(ConvertUtf8, UnicodeToUtf8)
{
    struct Case {
        std::string in;
        Bytes out;
    };
    const Case cases[] = {
        {"", ""},
        {units({0, 'a', 0x7F}), "\0a\x7F"s},
        {units({0x80, 0x7FF}), "\xC2\x80\xDF\xBF"},
        {units({0x800, 0xAC00, 0xFFFF}), "\xE0\xA0\x80\xEA\xB0\x80\xEF\xBF\xBF"},
        {units({0xD83D, 0xDE00}), "\xED\xA0\xBD\xED\xB8\x80"}, // surrogates one by one
        {"a", std::nullopt},
        {"a\0b"s, std::nullopt},
    };
    for (const Case& c : cases)
        EXPECT_EQ(unicode2utf8(c.in), c.out);
}

TEST(ConvertUtf8, UnicodeToCp949)
{
    struct Case {
        const char* name;
        std::string in;
        std::string out;
    };
    const Case cases[] = {
        {"empty", "", ""},
        {"ASCII", units({0, 'a', 0x7F}), "\0a\x7F"s},
        {"KS X 1001 syllable", units({0xAC00}), "\xB0\xA1"},
        {"extension syllable", units({0xAC02}), "\x81\x41"},
        {"last syllable", units({0xD7A3}), "\xC6\x52"},
        {"first letter", units({0x3131}), "\xA4\xA1"},
        {"last letter", units({0x318E}), "\xA4\xFE"},
        {"unassigned letter", units({0x318F}), "\xA4\xFF"},
        {"before the letters", units({0x3130}), "?"},
        {"behind the letters", units({0x3190}), "?"},
        {"before the syllables", units({0xABFF}), "?"},
        {"behind the syllables", units({0xD7A4}), "?"},
        {"others", units({0x80, 0xE9, 0x4E00, 0xD83D, 0xFFFF}), "?????"},
        {"odd last byte", units({'a'}) + "b", "a"},
        {"only an odd byte", "b", ""},
    };
    for (const Case& c : cases)
        EXPECT_EQ(unicode2ascii(c.in), c.out) << c.name;
}

TEST(ConvertUtf8, LettersMustFitIntoTheCapacity)
{
    struct Case {
        int capacity;
        std::string in;
        Bytes out;
    };
    const std::string letter = units({0x3131});
    const Case cases[] = {
        {2, letter, "\xA4\xA1"}, {1, letter, std::nullopt}, {0, letter, std::nullopt}, {-1, letter, std::nullopt},
        {INT_MIN, letter, std::nullopt}, {3, units({'a', 0x3131}), "a\xA4\xA1"},
        {2, units({'a', 0x3131}), std::nullopt}, {4, units({0xAC00, 0x3131}), "\xB0\xA1\xA4\xA1"},
        {3, units({0xAC00, 0x3131}), std::nullopt},
        {0, units({'a', 0xAC00, 0x4E00}), "a\xB0\xA1?"}, // all else is not held against it
    };
    for (const Case& c : cases)
        EXPECT_EQ(unicode2ascii(c.in, c.capacity), c.out) << c.capacity;
}

TEST(ConvertUtf8, Cp949ToUnicode)
{
    struct Case {
        const char* name;
        std::string in;
        Bytes out;
    };
    const Case cases[] = {
        {"empty", "", ""},
        {"ASCII", "\0a\x7F"s, units({0, 'a', 0x7F})},
        {"syllables", "\xB0\xA1\x81\x41", units({0xAC00, 0xAC02})},
        {"letters", "\xA4\xA1\xA4\xFE", units({0x3131, 0x318E})},
        {"symbol", "\xA1\xA1", units({0x3000})},
        {"euro sign", "\xA2\xE6", units({0})},
        {"registered sign", "\xA2\xE7", units({0})},
        {"code before them", "\xA2\xE5", units({0x2121})},
        {"unassigned trail", "\x82\x20", units({0})},
        {"last code", "\xC8\xFE", units({0xD79D})},
        {"first code", "\x81\x41", units({0xAC02})},
        {"before the first", "\x81\x40", std::nullopt},
        {"behind the last", "\xC8\xFF", std::nullopt},
        {"Hanja", "\xCA\xA1", std::nullopt},
        {"user area", "\xC9\xA1", std::nullopt},
        {"lead byte 80", "\x80\xFF", std::nullopt},
        {"lead byte FF", "\xFF\x41", std::nullopt},
        {"failure behind a good part", "abc\xB0\xA1\xCA\xA1", std::nullopt},
        {"lead byte at the end", "a\xB0", std::nullopt},
        {"lead byte alone", "\xB0", std::nullopt},
    };
    for (const Case& c : cases)
        EXPECT_EQ(ascii2unicode(c.in), c.out) << c.name;
}

TEST(ConvertUtf8, Utf8ToCp949)
{
    struct Case {
        std::string in;
        std::string out;
    };
    const Case cases[] = {
        {"", ""},
        {"ASCII\0text"s, "ASCII\0text"s},
        {"\xEA\xB0\x80", "\xB0\xA1"},
        {"\xEA\xB0\x82", "\x81\x41"},
        {"cn=\xED\x99\x8D\xEA\xB8\xB8\xEB\x8F\x99,c=KR", "cn=\xC8\xAB\xB1\xE6\xB5\xBF,c=KR"},
        {"\xC3\xA9", "??"},
        {"\xE4\xB8\x80", "???"},
        {"\xE3\x84\xB1", "???"},
        {"\xEA\xB0", "??"},
    };
    for (const Case& c : cases)
        EXPECT_EQ(utf82ascii(c.in), c.out);
}

TEST(ConvertUtf8, Cp949ToUtf8)
{
    struct Case {
        const char* name;
        std::string in;
        Bytes out;
    };
    const Case cases[] = {
        {"empty", "", ""},
        {"ASCII", "ASCII\0text"s, "ASCII\0text"s},
        {"syllables", "\xB0\xA1\x81\x41", "\xEA\xB0\x80\xEA\xB0\x82"},
        {"letters", "\xA4\xA1", "\xE3\x84\xB1"},
        {"between ASCII", "a\xB0\xA1z", "a\xEA\xB0\x80z"},
        // Two bytes that would become a single one are refused, unless other characters make up for it.
        {"euro sign alone", "\xA2\xE6", std::nullopt},
        {"euro sign behind a syllable", "\xB0\xA1\xA2\xE6", "\xEA\xB0\x80\0"s},
        {"two euro signs behind one syllable", "\xB0\xA1\xA2\xE6\xA2\xE6", std::nullopt},
        {"euro sign behind ASCII", "a\xA2\xE6", std::nullopt},
        {"two-byte result for two bytes", "\xA1\xBE", "\xC2\xB1"},
        {"Hanja", "\xCA\xA1", std::nullopt},
        {"cut", "\xB0\xA1\xB0", std::nullopt},
    };
    for (const Case& c : cases)
        EXPECT_EQ(ascii2utf8(c.in), c.out) << c.name;
}

TEST(ConvertUtf8, ASyllableAnywhereInARunOfAscii)
{
    const std::string letters = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ";
    for (std::size_t length = 0; length <= letters.size(); ++length)
        for (std::size_t at = 0; at <= length; ++at) {
            const std::string before = letters.substr(0, at);
            const std::string behind = letters.substr(at, length - at);
            const std::string utf8 = before + "\xEA\xB0\x80" + behind;
            const std::string cp949 = before + "\xB0\xA1" + behind;
            ASSERT_EQ(utf82ascii(utf8), cp949);
            ASSERT_EQ(ascii2utf8(cp949), utf8);
            ASSERT_EQ(ascii2unicode(cp949), utf82unicode(utf8));
            ASSERT_EQ(utf82unicode(utf8)->size(), 2 * length + 2);
            ASSERT_EQ(unicode2utf8(*utf82unicode(utf8)), utf8);
            // a byte that is neither, in the same place
            ASSERT_EQ(utf82ascii(before + "\x80" + behind), before + "?" + behind);
            ASSERT_EQ(ascii2utf8(before + "\xFF\xFF" + behind), std::nullopt);
        }
}

TEST(ConvertUtf8, EveryCodePointGivesTheSameByTheShortWay)
{
    const std::string letters(17, 'a'); // so that it stands behind a block of ASCII too
    for (unsigned point = 0; point < 0x110000; point += point < 0x10000 ? 1 : 0x400) {
        const auto byte = [point](unsigned lead, unsigned shift) {
            return static_cast<char>(lead | (lead == 0x80 ? point >> shift & 0x3F : point >> shift));
        };
        std::string text;
        if (point < 0x80)
            text = {byte(0, 0)};
        else if (point < 0x800)
            text = {byte(0xC0, 6), byte(0x80, 0)};
        else if (point < 0x10000)
            text = {byte(0xE0, 12), byte(0x80, 6), byte(0x80, 0)};
        else
            text = {byte(0xF0, 18), byte(0x80, 12), byte(0x80, 6), byte(0x80, 0)};
        const bool syllable = point >= 0xAC00 && point <= 0xD7A3;
        const std::string other = point < 0x80 ? text : std::string(text.size(), '?');
        const std::string expected = syllable ? unicode2ascii(units({point})).value() : other;
        ASSERT_EQ(utf82ascii(text), expected) << point;
        ASSERT_EQ(utf82ascii(letters + text + letters), letters + expected + letters) << point;
    }
}

TEST(ConvertUtf8, TextsOfAnyLength)
{
    std::string utf8, utf16, cp949;
    for (int i = 0; i < 1200; ++i) {
        utf8 += "\xEA\xB0\x80z";
        utf16 += units({0xAC00, 'z'});
        cp949 += "\xB0\xA1z";
    }
    EXPECT_EQ(utf82unicode(utf8), utf16);
    EXPECT_EQ(unicode2utf8(utf16), utf8);
    EXPECT_EQ(unicode2ascii(utf16), cp949);
    EXPECT_EQ(ascii2unicode(cp949), utf16);
    EXPECT_EQ(utf82ascii(utf8), cp949);
    EXPECT_EQ(ascii2utf8(cp949), utf8);
}

TEST(ConvertUtf8, TreatsNegativeLengthsAndNullAsEmpty)
{
    unsigned char* out = nullptr;
    int outLen = 5;
    EXPECT_EQ(ConvertUTF8().utf82unicode(nullptr, 5, &out, outLen), 0);
    EXPECT_EQ(outLen, 0);
    delete[] out;
    outLen = 5;
    EXPECT_EQ(ConvertUTF8().unicode2ascii(reinterpret_cast<const unsigned char*>("abc"), INT_MIN, &out, outLen), 0);
    EXPECT_EQ(outLen, 0);
    delete[] out;
    char text[4] = "abc";
    outLen = 5;
    EXPECT_EQ(ConvertUTF8().ascii2utf8("", 0, text, outLen), 0);
    EXPECT_EQ(outLen, 0);
    outLen = 5;
    EXPECT_EQ(ConvertUTF8().utf82ascii("xyz", -1, text, outLen), 0);
    EXPECT_EQ(outLen, 0);
    EXPECT_STREQ(text, "abc");
}

TEST(ConvertUtf8, RefusesNullOutputs)
{
    int length = 77;
    for (const char* text : {"", "a", "\xB0\xA1"}) {
        const auto* bytes = reinterpret_cast<const unsigned char*>(text);
        const int size = static_cast<int>(std::strlen(text));
        for (auto convert : {&ConvertUTF8::utf82unicode, &ConvertUTF8::unicode2utf8, &ConvertUTF8::unicode2ascii,
                 &ConvertUTF8::ascii2unicode})
            EXPECT_EQ((ConvertUTF8().*convert)(bytes, size, nullptr, length), -1);
        for (auto convert : {&ConvertUTF8::utf82ascii, &ConvertUTF8::ascii2utf8})
            EXPECT_EQ((ConvertUTF8().*convert)(text, size, nullptr, length), -1);
    }
    EXPECT_EQ(length, 77);
}

TEST(ConvertUtf8, TheOutputMayBeTheInput)
{
    char text[32] = "a\xB0\xA1\xB0\xA1z";
    int length = 6;
    EXPECT_EQ(ConvertUTF8().ascii2utf8(text, length, text, length), 0);
    EXPECT_EQ(std::string(text, static_cast<std::size_t>(length)), "a\xEA\xB0\x80\xEA\xB0\x80z");
    EXPECT_EQ(ConvertUTF8().utf82ascii(text, length, text, length), 0);
    EXPECT_EQ(std::string(text, static_cast<std::size_t>(length)), "a\xB0\xA1\xB0\xA1z");
}

TEST(ConvertUtf8, TheOutputMayLieAnywhereInTheInput)
{
    const std::string utf8 = "ASCII of more than a block\xEA\xB0\x80\xEA\xB0\x82 and then some more of it";
    const std::string cp949 = "ASCII of more than a block\xB0\xA1\x81\x41 and then some more of it";
    for (std::size_t in : {0, 40})
        for (std::size_t out = 0; out < 120; ++out) {
            std::string memory(300, '#');
            int length = 0;
            memory.replace(in, utf8.size(), utf8);
            EXPECT_EQ(ConvertUTF8().utf82ascii(
                          memory.data() + in, static_cast<int>(utf8.size()), memory.data() + out, length),
                0);
            ASSERT_EQ(memory.substr(out, static_cast<std::size_t>(length)), cp949) << in << ' ' << out;
            memory.replace(in, cp949.size(), cp949);
            EXPECT_EQ(ConvertUTF8().ascii2utf8(
                          memory.data() + in, static_cast<int>(cp949.size()), memory.data() + out, length),
                0);
            ASSERT_EQ(memory.substr(out, static_cast<std::size_t>(length)), utf8) << in << ' ' << out;
        }
}

TEST(TextConversion, ConvertsZeroTerminatedTexts)
{
    struct Case {
        const char* name;
        int (CUtil::*convert)(char*, char*, int*);
        const char* in;
        Bytes out;
    };
    const Case cases[] = {
        {"CP949 to UTF-8 under the opposite name", &CUtil::UTF8ToMultibyte, "a\xB0\xA1", "a\xEA\xB0\x80"},
        {"CP949 to UTF-8", &CUtil::MultibyteToWideData, "a\xB0\xA1", "a\xEA\xB0\x80"},
        {"UTF-8 to CP949", &CUtil::WideDataToMultibyte, "a\xEA\xB0\x80", "a\xB0\xA1"},
        {"empty", &CUtil::UTF8ToMultibyte, "", ""},
        {"empty to CP949", &CUtil::WideDataToMultibyte, "", ""},
        {"outside the table", &CUtil::UTF8ToMultibyte, "\xCA\xA1", std::nullopt},
        {"cut character", &CUtil::MultibyteToWideData, "\xB0", std::nullopt},
        {"no such character in CP949", &CUtil::WideDataToMultibyte, "\xC3\xA9", "??"},
    };
    for (const Case& c : cases) {
        char out[32] = {};
        int length = 77;
        EXPECT_EQ((CUtil().*c.convert)(Arg(c.in), out, &length), c.out ? 0 : -1) << c.name;
        EXPECT_EQ(out, c.out.value_or("")) << c.name;
        EXPECT_EQ(length, c.out ? static_cast<int>(c.out->size()) : 77) << c.name;
    }
}

TEST(TextConversion, RefusesNullPointers)
{
    char out[8] = "old";
    int length = 77;
    for (auto convert : {&CUtil::UTF8ToMultibyte, &CUtil::MultibyteToWideData, &CUtil::WideDataToMultibyte}) {
        EXPECT_EQ((CUtil().*convert)(nullptr, out, &length), -1);
        EXPECT_EQ((CUtil().*convert)(Arg("a"), nullptr, &length), -1);
        EXPECT_EQ((CUtil().*convert)(Arg("a"), out, nullptr), -1);
    }
    EXPECT_STREQ(out, "old");
    EXPECT_EQ(length, 77);
}
