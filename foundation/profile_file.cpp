// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "foundation/profile_file.h"

#include "foundation/file.h"
#include "foundation/profile_lines.h"

namespace sigil {

ProfileFile::ProfileFile(const char* path)
{
    RegularFile file(path);
    if (!file.isOpen())
        return;
    char part[16 * 1024];
    for (std::size_t length = sizeof part; length == sizeof part;) {
        length = file.read(part, sizeof part);
        m_lines.append(part, length);
    }
}

std::string_view ProfileFile::value(const std::string& section, std::string_view key) const
{
    std::string_view found;
    if (const auto lines = _FindConfigProfileSection(m_lines, "[" + section + "]"))
        findProfileKey(*lines, key, found);
    return found;
}

} // namespace sigil
