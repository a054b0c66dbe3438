// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Characters and texts as the C locale sees them, whatever locale the host program has set.
 */
#pragma once

#include <algorithm>
#include <climits>
#include <cstdlib>
#include <string>
#include <string_view>

namespace sigil {

constexpr bool isSpace(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

constexpr char toLower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c; }
constexpr char toUpper(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - ('a' - 'A')) : c; }

inline bool equalsIgnoringCase(std::string_view left, std::string_view right)
{
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
        [](char a, char b) { return toLower(a) == toLower(b); });
}

/** Order of texts, for tables that are searched ignoring case. */
struct LessIgnoringCase {
    using is_transparent = void; // a view is looked up without a copy
    bool operator()(std::string_view left, std::string_view right) const
    {
        return std::lexicographical_compare(left.begin(), left.end(), right.begin(), right.end(),
            [](char a, char b) { return toLower(a) < toLower(b); });
    }
};

/** Position of @p wanted, which is in lower case and not empty, in @p text of either case; npos when it is not there. */
inline std::size_t findIgnoringCase(std::string_view text, std::string_view wanted)
{
    const auto hit = std::search(
        text.begin(), text.end(), wanted.begin(), wanted.end(), [](char a, char b) { return toLower(a) == b; });
    return hit == text.end() ? std::string_view::npos : static_cast<std::size_t>(hit - text.begin());
}

/** @p text without the white space at both ends. */
constexpr std::string_view trimmed(std::string_view text)
{
    while (!text.empty() && isSpace(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && isSpace(text.back()))
        text.remove_suffix(1);
    return text;
}

/** The text of a C string, an empty one for null. */
inline std::string_view textOf(const char* text) { return text ? std::string_view(text) : std::string_view(); }

/** The decimal number at the start of @p text, 0 when there is none, cut to the range of int. */
inline int toInt(const char* text)
{
    return static_cast<int>(std::clamp<long>(std::strtol(text, nullptr, 10), INT_MIN, INT_MAX));
}

} // namespace sigil
