// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "text.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <langinfo.h>
#include <memory>

namespace host {

namespace {

struct Character {
    char32_t code;
    std::size_t size; ///< bytes that it takes
};

constexpr char32_t notACharacter = 0xFFFFFFFF;

/** The character that UTF-8 @p text begins with. A byte that begins none is notACharacter. */
Character firstOf(std::string_view text)
{
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const unsigned char first = byte(0);
    if (first < 0x80)
        return {first, 1};
    const std::size_t size = first >= 0xF0 ? 4 : first >= 0xE0 ? 3 : 2;
    if (first < 0xC2 || first > 0xF4 || text.size() < size)
        return {notACharacter, 1};
    char32_t code = first & (0xFFU >> (size + 1));
    for (std::size_t i = 1; i < size; ++i) {
        if ((byte(i) & 0xC0U) != 0x80)
            return {notACharacter, 1};
        code = code << 6 | (byte(i) & 0x3FU);
    }
    static constexpr std::array<char32_t, 5> smallest{0, 0, 0x80, 0x800, 0x10000};
    const bool surrogate = code >= 0xD800 && code <= 0xDFFF;
    return code < smallest.at(size) || surrogate || code > 0x10FFFF ? Character{notACharacter, 1}
                                                                    : Character{code, size};
}

struct Range {
    char32_t first, last;
};

template <std::size_t N>
bool isIn(const Range (&ranges)[N], char32_t code)
{
    const Range* range = std::lower_bound(
        std::begin(ranges), std::end(ranges), code, [](const Range& r, char32_t c) { return r.last < c; });
    return range != std::end(ranges) && range->first <= code;
}

/** Controls, marks and overrides of direction, joiners and other letters without a shape, tags. */
constexpr Range harmful[] = {{0x00, 0x1F}, {0x7F, 0x9F}, {0xAD, 0xAD}, {0x061C, 0x061C}, {0x180E, 0x180E},
    {0x200B, 0x200F}, {0x2028, 0x202E}, {0x2060, 0x206F}, {0xFEFF, 0xFEFF}, {0xFFF9, 0xFFFB}, {0xE0000, 0xE0FFF}};

/** Letters of two columns (UAX 11, classes W and F). */
constexpr Range wide[] = {{0x1100, 0x115F}, {0x231A, 0x231B}, {0x2329, 0x232A}, {0x23E9, 0x23EC}, {0x2E80, 0x303E},
    {0x3041, 0x33FF}, {0x3400, 0x4DBF}, {0x4E00, 0xA4CF}, {0xA960, 0xA97F}, {0xAC00, 0xD7A3}, {0xF900, 0xFAFF},
    {0xFE10, 0xFE19}, {0xFE30, 0xFE6F}, {0xFF00, 0xFF60}, {0xFFE0, 0xFFE6}, {0x1F300, 0x1F64F}, {0x1F680, 0x1F6FF},
    {0x1F900, 0x1F9FF}, {0x20000, 0x3FFFD}};

/** Letters that are drawn over the one before. */
constexpr Range combining[] = {{0x0300, 0x036F}, {0x1160, 0x11FF}, {0x20D0, 0x20F0}, {0x302A, 0x302F},
    {0x3099, 0x309A}, {0xD7B0, 0xD7FF}, {0xFE00, 0xFE0F}, {0xFE20, 0xFE2F}};

/** Hands each character of @p text, with its bytes, to @p use. */
template <class Use>
void forEach(std::string_view text, Use use)
{
    while (!text.empty()) {
        const Character character = firstOf(text);
        use(character.code, text.substr(0, character.size));
        text.remove_prefix(character.size);
    }
}

bool isHarmful(char32_t code) { return code == notACharacter || isIn(harmful, code); }

/** "\u202e", with two units for a character beyond the first plane. */
std::string jsonEscape(char32_t code)
{
    std::array<char, 16> text{};
    if (code < 0x10000)
        static_cast<void>(std::snprintf(text.data(), text.size(), "\\u%04x", static_cast<unsigned>(code)));
    else
        static_cast<void>(std::snprintf(text.data(), text.size(), "\\u%04x\\u%04x",
            static_cast<unsigned>(0xD7C0 + (code >> 10)), static_cast<unsigned>(0xDC00 + (code & 0x3FF))));
    return text.data();
}

} // namespace

std::string harmless(std::string_view text)
{
    std::string result;
    forEach(text, [&](char32_t code, std::string_view bytes) { result += isHarmful(code) ? "?" : bytes; });
    return result;
}

std::string harmlessJson(std::string_view document)
{
    std::string result;
    forEach(document, [&](char32_t code, std::string_view bytes) {
        if (isHarmful(code) && code != '\n') // between the members; those within strings are written as \n
            result += code == notACharacter ? "?" : jsonEscape(code);
        else
            result += bytes;
    });
    return result;
}

std::size_t columns(std::string_view text)
{
    std::size_t count = 0;
    forEach(text, [&](char32_t code, std::string_view) {
        count += isIn(wide, code) ? 2 : isIn(combining, code) ? 0 : 1;
    });
    return count;
}

Charset::Charset()
    : m_name(nl_langinfo(CODESET))
    , m_utf8(m_name == "UTF-8")
{
}

std::string Charset::encode(std::string_view text) const
{
    return m_utf8 ? std::string(text) : Converter(m_name.c_str(), "UTF-8").convert(text, [](std::string_view rest) {
        return firstOf(rest).size;
    });
}

std::string Charset::visible(std::string_view text) const
{
    if (m_utf8)
        return std::string(text);
    return Converter("UTF-8", m_name.c_str()).convert(encode(text), [](std::string_view) { return 1; });
}

} // namespace host
