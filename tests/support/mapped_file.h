// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  The secrets that a test itself has, where no hunt looks.
 */
#pragma once

#include <sigildesk/binstr.h>

#include <cstddef>
#include <string>
#include <string_view>

/** A file's bytes in memory that can only be read. Zero bytes follow them. */
class MappedFile {
public:
    explicit MappedFile(const std::string& path);
    ~MappedFile();
    MappedFile(const MappedFile&) = delete;
    MappedFile& operator=(const MappedFile&) = delete;

    std::string_view bytes() const { return {chars(), m_length}; }
    /** For functions that take what they read as writable. */
    char* chars() const { return static_cast<char*>(m_bytes); }
    BINSTR* get() { return &m_record; }

private:
    void* m_bytes;
    std::size_t m_length = 0;
    BINSTR m_record{};
};
