// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "foundation/profile_lines.h"

#include "foundation/ascii.h"

#include <algorithm>
#include <cstring>

namespace sigil {

namespace {

/** Position of @p wanted at or behind @p from, by the C library's search, which is many times faster than that of
 *  string_view; the size of @p text when it is not there. */
std::size_t positionOf(std::string_view text, std::string_view wanted, std::size_t from)
{
    const void* hit = memmem(text.data() + from, text.size() - from, wanted.data(), wanted.size());
    return hit ? static_cast<std::size_t>(static_cast<const char*>(hit) - text.data()) : text.size();
}

/** Start of the line that begins behind the last line end of @p text. What has no line end is cut into lines of the
 *  longest length. */
std::size_t startOfLastLine(std::string_view text)
{
    const void* end = text.empty() ? nullptr : memrchr(text.data(), '\n', text.size());
    const std::size_t start = end ? static_cast<std::size_t>(static_cast<const char*>(end) - text.data()) + 1 : 0;
    return start + (text.size() - start) / longestProfileLine * longestProfileLine;
}

/** The line that a position of a part lies in. */
struct Line {
    Line(std::string_view lines, std::size_t at)
        : start(startOfLastLine(lines.substr(0, at)))
        , end(std::min({positionOf(lines, "\n", at) + 1, start + longestProfileLine, lines.size()}))
        , text(lines.substr(start, end - start))
    {
        text = text.substr(0, text.find('\0')); // a zero byte hides the rest of its line
    }

    std::size_t start;
    std::size_t end;
    std::string_view text;
};

/** True when a "[" ends the section within the lines, wherever it stands, also inside a value: the files in use rely on
 *  it. */
bool endsSection(std::string_view lines)
{
    for (std::size_t at = positionOf(lines, "[", 0); at < lines.size();) {
        const Line line(lines, at);
        if (line.text.find('[') != std::string_view::npos && !_IsCommentLine(line.text))
            return true;
        at = positionOf(lines, "[", line.end);
    }
    return false;
}

/** The value in @p line when it is one of @p key. */
std::optional<std::string_view> valueOf(std::string_view line, std::string_view key)
{
    const std::size_t equals = line.find('=');
    if (equals == std::string_view::npos || _IsCommentLine(line) || trimmed(line.substr(0, equals)) != key)
        return std::nullopt;
    return trimmed(line.substr(equals + 1));
}

} // namespace

int _DecodeConfigProfile(_ConfigProfile& part, RegularFile& file)
{
    part.held -= part.lines.size();
    std::memmove(part.buffer, part.buffer + part.lines.size(), part.held);
    part.held += file.read(part.buffer + part.held, sizeof part.buffer - part.held);
    const std::string_view content(part.buffer, part.held);
    const bool atEnd = part.held < sizeof part.buffer;
    part.lines = content.substr(0, atEnd ? content.size() : startOfLastLine(content));
    return part.lines.empty() ? -1 : 0;
}

std::optional<std::string_view> _FindConfigProfileSection(std::string_view lines, std::string_view header)
{
    for (std::size_t at = positionOf(lines, header, 0); at < lines.size();) {
        const Line line(lines, at);
        if (line.text.find(header) != std::string_view::npos && !_IsCommentLine(line.text))
            return lines.substr(line.end);
        at = positionOf(lines, header, line.end);
    }
    return std::nullopt;
}

int _IsCommentLine(std::string_view line)
{
    const auto first = std::find_if_not(line.begin(), line.end(), isSpace);
    return first != line.end() && *first == '#' ? 1 : 0;
}

KeySearch findProfileKey(std::string_view lines, std::string_view key, std::string_view& value)
{
    while (!lines.empty()) {
        const std::size_t hit = positionOf(lines, key, 0);
        if (hit == lines.size())
            break;
        const Line line(lines, hit);
        if (endsSection(lines.substr(0, line.end)))
            return KeySearch::ended;
        if (const auto found = valueOf(line.text, key)) {
            value = *found;
            return KeySearch::found;
        }
        lines.remove_prefix(line.end);
    }
    return endsSection(lines) ? KeySearch::ended : KeySearch::goesOn;
}

} // namespace sigil
