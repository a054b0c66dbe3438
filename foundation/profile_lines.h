/** @file
 *  The lines of a profile file as a list, and the steps of a lookup on it (see sigildesk/profile.h for the format).
 */
#pragma once

#include <cstdio>
#include <string_view>

namespace sigil {

/** A line of the file. The list always has a first node; its line is null when the file is empty. */
struct _ConfigProfile {
    char* line;           /**< as read, zero-terminated, with its line end */
    _ConfigProfile* next; /**< following line, or null */
};

/** Most bytes taken as one line; what is longer continues in a line of its own. */
constexpr int longestProfileLine = 4094;

/** Reads the lines of @p file from its current position.
 *  @param list  receives the list, also after a failure the part read so far; null only when not even the first
 *               node could be had. Release it with _ReleaseConfigProfile()
 *  @return 0 at the end of the file; -1 out of memory */
int _DecodeConfigProfile(_ConfigProfile** list, std::FILE* file);

/** Releases a list made by _DecodeConfigProfile(), also a null one. */
void _ReleaseConfigProfile(_ConfigProfile* list);

/** Finds the header line of a section: the first line with "[section]" that is no comment.
 *  @param found  receives the header's node; the last node when there is no such section, so that no key follows
 *  @return 0; -1 for a null list */
int _FindConfigProfileSection(_ConfigProfile** found, _ConfigProfile* list, char* section);

/** @return 1 when the first character of @p line that is not white space is "#"; else 0 */
int _IsCommentLine(char* line);

} // namespace sigil
