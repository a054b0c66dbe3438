// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  A profile file that is read once, for callers who ask for many of its values at the same moment.
 */
#pragma once

#include <string>
#include <string_view>

namespace sigil {

class ProfileFile {
public:
    /** Reads the file at @p path (see sigildesk/profile.h for the format); a missing one is as one without sections. */
    explicit ProfileFile(const char* path);

    /** The value that FileGetPrivateProfileString() would find, a view into the file's lines; empty for none. */
    std::string_view value(const std::string& section, std::string_view key) const;

private:
    std::string m_lines;
};

} // namespace sigil
