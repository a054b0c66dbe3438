// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  A folder whose items are looked through.
 */
#pragma once

#include <dirent.h>
#include <sys/stat.h>

#include <cerrno>
#include <memory>
#include <new>
#include <string>

namespace sigil {

/** A folder and the files below it. Files are asked about by the rest of their path: walking down the whole path for each
 *  of thousands of files takes the system half as long again. */
class SearchedFolder {
public:
    /** No folder: it has no items, and paths are taken from the root. */
    SearchedFolder() = default;
    /** @param path  ends in "/"; a folder that cannot be opened has no items, but one that memory does not suffice for is
     *               not to be taken for that: throws std::bad_alloc */
    explicit SearchedFolder(const std::string& path)
        : m_path(path)
        , m_folder(opendir(path.c_str()))
        , m_openError(m_folder ? 0 : errno)
    {
        if (m_openError == ENOMEM)
            throw std::bad_alloc();
    }

    const std::string& path() const { return m_path; }
    /** Why it could not be opened, as errno has it; 0 for an open folder and for none. */
    int openError() const { return m_openError; }
    /** The next item, valid until the one after it is asked for; null after the last, or when reading fails. */
    const dirent* next();
    /** Why next() ended before the last item, as errno has it; 0 when it did not. */
    int error() const { return m_error; }
    /** File type bits of an item, 0 when it is gone. Links are not followed. */
    mode_t kindOf(const dirent& item) const;

    /** @name Files by their whole path, in or below this folder. Links are followed.
     *  @{ */
    /** @return false, and @p status untouched, when the path leads nowhere */
    bool statusOf(const char* path, struct stat& status) const;
    /** Asks instead of opening: a pipe of this name would hold the caller up, and a device could do anything. */
    bool canBeOpened(const char* path) const;
    /** @} */

private:
    struct Close {
        void operator()(DIR* folder) const { closedir(folder); }
    };

    int handle() const;
    const char* fromHere(const char* path) const;

    std::string m_path;
    std::unique_ptr<DIR, Close> m_folder;
    int m_openError = 0;
    int m_error = 0;
};

} // namespace sigil
