// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Reader of profile files: sectioned `key=value` texts such as the language files and the settings.
 *
 *  Rules of the format:
 *  - "#" as the first character that is not white space makes a line a comment. There is no other comment mark.
 *  - A section begins after the first line that contains "[section]" (anywhere in it) and ends at the next line that
 *    contains a "[" anywhere, also inside a value. Only the first section of a name is read.
 *  - A key line contains "="; what stands before the first one is the key, what follows is the value, both without
 *    the white space around them. Names are compared exactly, case included.
 *  - Lines longer than 4094 bytes count as several lines. Bytes are taken as they are: no encoding is assumed. A
 *    zero byte hides the rest of its line.
 *
 *  Every lookup reads the file anew, as far as the key, and takes no memory but 32 KiB of the stack, however large the
 *  file is. Only regular files are read. White space is blank, tab, CR, LF, vertical tab and
 *  form feed, whatever the locale.
 */
#ifndef SIGILDESK_PROFILE_H
#define SIGILDESK_PROFILE_H

#include <sigildesk/export.h>

/** Looks a value up.
 *  @param section       name of the section, without brackets
 *  @param key           name of the key
 *  @param defaultValue  used only when the key is there with an empty value; null counts as empty
 *  @param out           receives the zero-terminated value; @p outSize bytes, all cleared first
 *  @param outSize       bytes in @p out; a longer value is cut to @p outSize - 1
 *  @param path          the file
 *  @return length of the text in @p out; 0 with an empty text when file, section or key is missing (the default is
 *          not used then), or when a null pointer or an @p outSize below 1 was given */
SIGIL_EXPORT int FileGetPrivateProfileString(
    char* section, char* key, char* defaultValue, char* out, int outSize, char* path);

/** Looks a decimal number up: the digits at the start of the value, 0 when there are none.
 *  @param section, key  as for FileGetPrivateProfileString
 *  @param defaultValue  deliberately ignored: whoever needs a default other than 0 tests for it himself
 *  @param path          the file
 *  @return the number; 0 for a missing file, section or key */
SIGIL_EXPORT int FileGetPrivateProfileInt(char* section, char* key, int defaultValue, char* path);

/** Removes white space at both ends of a zero-terminated text, in place. A text of nothing else becomes empty and its
 *  bytes are cleared. Null is left alone.
 *  @return 1, always */
SIGIL_EXPORT int StrTrimString(char* text);

#endif
