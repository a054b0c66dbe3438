// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  The steps of a lookup in a profile file (see sigildesk/profile.h for the format). The file is searched while it is
 *  read: what is in memory is a part of it that consists of whole lines.
 */
#pragma once

#include "foundation/file.h"

#include <cstddef>
#include <optional>
#include <string_view>

namespace sigil {

/** Most bytes taken as one line; what is longer continues in a line of its own. */
constexpr std::size_t longestProfileLine = 4094;

/** The part of a profile file that is in memory. */
struct _ConfigProfile {
    std::string_view lines; /**< whole lines with their line ends */

    char buffer[8 * (longestProfileLine + 2)];
    std::size_t held =
        0; /**< bytes in the buffer, which begins with the lines and goes on with the next one's start */
};

/** Replaces the lines by those that follow them in @p file.
 *  @return 0; -1 when there are none */
int _DecodeConfigProfile(_ConfigProfile& part, RegularFile& file);

/** Finds the header of a section, the first line with @p header ("[section]") that is no comment.
 *  @return the lines behind it; nothing when it is not among @p lines */
std::optional<std::string_view> _FindConfigProfileSection(std::string_view lines, std::string_view header);

/** @return 1 when the first character of @p line that is not white space is "#"; else 0 */
int _IsCommentLine(std::string_view line);

/** What the search for a key has come to. */
enum class KeySearch {
    goesOn, /**< the section has not ended with these lines */
    ended,  /**< it has, without the key */
    found
};

/** Searches the lines of a section for the first one of @p key.
 *  @param value  receives the text behind the "=", without the white space around it */
KeySearch findProfileKey(std::string_view lines, std::string_view key, std::string_view& value);

} // namespace sigil
