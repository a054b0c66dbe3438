// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "certlist/searched_folder.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

namespace sigil {

const dirent* SearchedFolder::next()
{
    if (!m_folder)
        return nullptr;
    errno = 0; // readdir says only there whether it met the end or an error
    const dirent* item = readdir(m_folder.get());
    m_error = item ? 0 : errno;
    return item;
}

mode_t SearchedFolder::kindOf(const dirent& item) const
{
    if (item.d_type != DT_UNKNOWN) // most file systems tell it with the name
        return DTTOIF(item.d_type);
    struct stat status;
    return fstatat(handle(), item.d_name, &status, AT_SYMLINK_NOFOLLOW) == 0 ? status.st_mode & S_IFMT : 0;
}

bool SearchedFolder::statusOf(const char* path, struct stat& status) const
{
    return fstatat(handle(), fromHere(path), &status, 0) == 0;
}

bool SearchedFolder::canBeOpened(const char* path) const
{
    return faccessat(handle(), fromHere(path), R_OK, AT_EACCESS) == 0;
}

int SearchedFolder::handle() const { return m_folder ? dirfd(m_folder.get()) : AT_FDCWD; }

const char* SearchedFolder::fromHere(const char* path) const
{
    if (!m_folder || std::strncmp(path, m_path.c_str(), m_path.size()) != 0)
        return path;
    const char* rest = path + m_path.size();
    while (*rest == '/') // some families' paths double the separator, and a "/" would lead to the root
        ++rest;
    return *rest ? rest : ".";
}

} // namespace sigil
