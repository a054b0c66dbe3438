// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// The tables against the C library's own CP949, for every entry and in both directions.

#include "foundation/cp949_tables.h"
#include "tests/foundation/support.h"

#include <sigildesk/convert_utf8.h>

#include <iconv.h>
#include <memory>

namespace {

/** The C library's converter between two encodings. */
class Iconv {
public:
    Iconv(const char* to, const char* from)
        : m_converter(iconv_open(to, from))
    {
    }
    ~Iconv() { iconv_close(m_converter); }
    Iconv(const Iconv&) = delete;
    Iconv& operator=(const Iconv&) = delete;

    /** The converted bytes, empty when the input is no character of the encoding. */
    std::string operator()(std::string in)
    {
        char buffer[16];
        char* from = in.data();
        char* to = buffer;
        std::size_t left = in.size();
        std::size_t room = sizeof buffer;
        iconv(m_converter, nullptr, nullptr, nullptr, nullptr);
        const bool whole = iconv(m_converter, &from, &left, &to, &room) != static_cast<std::size_t>(-1);
        return whole ? std::string(buffer, to) : std::string();
    }

private:
    iconv_t m_converter;
};

std::string bytes(int code) { return {static_cast<char>(code >> 8), static_cast<char>(code)}; }

std::string unit(int codePoint) { return {static_cast<char>(codePoint), static_cast<char>(codePoint >> 8)}; }

int number(const std::string& littleEndian)
{
    return static_cast<unsigned char>(littleEndian[0]) | static_cast<unsigned char>(littleEndian[1]) << 8;
}

int published(Iconv& toUnicode, int code)
{
    if (code == 0xA2E6 || code == 0xA2E7) // late additions, deliberately unassigned
        return 0;
    // A code whose second byte is ASCII is two characters, or none.
    const std::string text = toUnicode(bytes(code));
    return text.size() == 2 ? number(text) : 0;
}

std::string convert(
    int (ConvertUTF8::*conversion)(const unsigned char*, int, unsigned char**, int&), const std::string& in)
{
    unsigned char* out = nullptr;
    int length = 100;
    EXPECT_EQ((ConvertUTF8().*conversion)(
                  reinterpret_cast<const unsigned char*>(in.data()), static_cast<int>(in.size()), &out, length),
        0);
    const std::unique_ptr<unsigned char[]> owner(out);
    return std::string(reinterpret_cast<char*>(out), static_cast<std::size_t>(length));
}

} // namespace

static_assert(std::size(sigil::uni2ksc) == 11172);
static_assert(std::size(sigil::uni2ksc_consonant) == 96);
static_assert(std::size(sigil::ksc2uni) == 18366);

TEST(Cp949Tables, EverySyllableHasItsPublishedCode)
{
    Iconv toCp949("CP949", "UTF-16LE");
    int standard = 0;
    for (int i = 0; i < 11172; ++i) {
        const int code = sigil::uni2ksc[i];
        ASSERT_EQ(toCp949(unit(0xAC00 + i)), bytes(code)) << i;
        ASSERT_EQ(convert(&ConvertUTF8::unicode2ascii, unit(0xAC00 + i)), bytes(code));
        ASSERT_EQ(convert(&ConvertUTF8::ascii2unicode, bytes(code)), unit(0xAC00 + i));
        const bool ksx1001 = code >= 0xB0A1 && code <= 0xC8FE && (code & 0xFF) >= 0xA1;
        standard += ksx1001;
        ASSERT_TRUE(ksx1001 || (code >= 0x8141 && code <= 0xC652)) << i;
    }
    EXPECT_EQ(standard, 2350);
}

TEST(Cp949Tables, EveryLetterHasItsPublishedCode)
{
    Iconv toCp949("CP949", "UTF-16LE");
    for (int i = 0; i < 96; ++i)
        EXPECT_EQ(sigil::uni2ksc_consonant[i], 0xA4A0 + i);
    for (int i = 1; i < 95; ++i) {
        EXPECT_EQ(toCp949(unit(0x3130 + i)), bytes(0xA4A0 + i)) << i;
        EXPECT_EQ(convert(&ConvertUTF8::unicode2ascii, unit(0x3130 + i)), bytes(0xA4A0 + i));
        EXPECT_EQ(convert(&ConvertUTF8::ascii2unicode, bytes(0xA4A0 + i)), unit(0x3130 + i));
    }
    // U+318F is no character; its code follows the rule of the others and leads nowhere.
    EXPECT_EQ(convert(&ConvertUTF8::unicode2ascii, unit(0x318F)), "\xA4\xFF");
    EXPECT_EQ(convert(&ConvertUTF8::ascii2unicode, "\xA4\xFF"), unit(0));
}

TEST(Cp949Tables, EveryCodeHasItsPublishedCharacter)
{
    Iconv toUnicode("UTF-16LE", "CP949");
    int assigned = 0;
    for (int i = 0; i < 18366; ++i) {
        const int code = 0x8141 + i;
        ASSERT_EQ(sigil::ksc2uni[i], published(toUnicode, code)) << std::hex << code;
        ASSERT_EQ(convert(&ConvertUTF8::ascii2unicode, bytes(code)), unit(sigil::ksc2uni[i])) << std::hex << code;
        assigned += sigil::ksc2uni[i] != 0;
    }
    EXPECT_EQ(assigned, 12158); // 8,822 extension syllables and 3,336 of KS X 1001 before the Hanja rows
}
