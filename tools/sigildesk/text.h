// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Texts on their way to a terminal: without what could steer it, within the letters that it has, and how many columns
 *  they take.
 */
#pragma once

#include "jobs/text_conversion.h"

#include <string>
#include <string_view>

namespace host {

/** @p text with a "?" for each control character, each character that changes the direction of others or has no width
 *  of its own, and each byte that is not UTF-8. */
std::string harmless(std::string_view text);

/** A JSON document whose strings name such characters by their number instead of holding them. */
std::string harmlessJson(std::string_view document);

/** Columns that a text takes: letters of East Asia take two. */
std::size_t columns(std::string_view text);

/** The terminal's letters, by the locale. */
class Charset {
public:
    /** That of LC_CTYPE as it is set now. */
    Charset();
    /** Whether it has every letter. */
    bool isUtf8() const { return m_utf8; }
    /** @p text in this charset; a "?" for each character that it lacks. */
    std::string encode(std::string_view text) const;
    /** The same, still in UTF-8: what will be seen of @p text. */
    std::string visible(std::string_view text) const;

private:
    std::string m_name;
    bool m_utf8;
};

} // namespace host
