// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  A file in memory, for what reads files by their paths.
 */
#pragma once

#include "fuzz/target.h"

#include <string>
#include <string_view>

#include <sys/mman.h>
#include <unistd.h>

namespace fuzz {

class MemoryFile {
public:
    explicit MemoryFile(std::string_view content)
        : m_descriptor(memfd_create("fuzz", MFD_CLOEXEC))
        , m_path("/proc/self/fd/" + std::to_string(m_descriptor))
    {
        require(
            write(m_descriptor, content.data(), content.size()) == std::ssize(content), "the file can be written");
    }
    ~MemoryFile() { close(m_descriptor); }
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;

    const std::string& path() const { return m_path; }
    /** The path, as the exported functions take it. */
    char* chars() { return m_path.data(); }

private:
    int m_descriptor;
    std::string m_path;
};

} // namespace fuzz
