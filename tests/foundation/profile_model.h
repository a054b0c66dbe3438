// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  The rules of profile files, line by line and without any haste: what the reader must agree with.
 */
#pragma once

#include "foundation/ascii.h"

#include <algorithm>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace profile_model {

/** The lines of a file as C strings: at most 4094 bytes are one line, and a zero byte hides the rest. */
inline std::vector<std::string> linesOf(std::string_view content)
{
    std::vector<std::string> lines;
    while (!content.empty()) {
        const std::size_t end = std::min(content.find('\n'), content.size() - 1) + 1;
        const std::string_view line = content.substr(0, std::min<std::size_t>(end, 4094));
        lines.emplace_back(line.substr(0, line.find('\0')));
        content.remove_prefix(line.size());
    }
    return lines;
}

inline bool contains(std::string_view line, std::string_view text) { return line.find(text) != line.npos; }

inline bool isComment(std::string_view line) { return sigil::trimmed(line).substr(0, 1) == "#"; }

/** The value of @p key in @p section, nothing when it is not there. */
inline std::optional<std::string> lookUp(
    std::string_view content, const std::string& section, const std::string& key)
{
    const std::vector<std::string> lines = linesOf(content);
    const std::string header = ("[" + section + "]").substr(0, 1023);
    auto line = std::find_if(lines.begin(), lines.end(),
        [&](const std::string& text) { return contains(text, header) && !isComment(text); });
    for (line += line != lines.end(); line != lines.end(); ++line) {
        if (isComment(*line))
            continue;
        if (contains(*line, "["))
            return std::nullopt;
        const std::size_t equals = line->find('=');
        if (equals != line->npos && sigil::trimmed(std::string_view(*line).substr(0, equals)) == key)
            return std::string(sigil::trimmed(std::string_view(*line).substr(equals + 1)));
    }
    return std::nullopt;
}

} // namespace profile_model
