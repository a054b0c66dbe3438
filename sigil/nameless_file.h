// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Files for functions that read and write files, which the caller of the library never sees.
 */
#pragma once

#include "foundation/file.h"

#include <string>
#include <string_view>

namespace host {

/** A file in memory with bytes in it; it has a path and no name, so that nobody else finds it. */
class NamelessFile {
public:
    /** Throws Failure. */
    explicit NamelessFile(std::string_view content);

    std::string path() const;

private:
    sigil::Descriptor m_file;
};

/** A folder for its owner alone, which goes with the object. For what is no secret. */
class WorkFolder {
public:
    /** Throws Failure. */
    WorkFolder();
    ~WorkFolder();
    WorkFolder(const WorkFolder&) = delete;
    WorkFolder& operator=(const WorkFolder&) = delete;

    std::string path(const char* name) const { return m_path + "/" + name; }

private:
    std::string m_path;
};

} // namespace host
