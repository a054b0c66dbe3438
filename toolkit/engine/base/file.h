// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Files as the toolkit reads and writes them. Paths are bytes as the caller gives them.
 */
#pragma once

#include "toolkit/engine/base/bytes.h"

#include <cstdint>
#include <functional>
#include <string>
#include <utility>

namespace toolkit {

/** Largest file that is read into memory. */
constexpr std::size_t maximumFileSize = 64UL * 1024 * 1024;

/** A regular file, whole. Throws SIGIL_TK_FILE_NOT_FOUND, and SIGIL_TK_FILE_READ for anything but a readable regular file
 *  of at most maximumFileSize bytes. Never waits for a pipe or a device. */
Secret readFile(const std::string& path);

/** Whatever has a name, open for reading without waiting. Codes as readFile. */
class OpenFile {
public:
    explicit OpenFile(const std::string& path);
    OpenFile(OpenFile&& other) noexcept
        : m_descriptor(std::exchange(other.m_descriptor, -1))
    {
    }
    OpenFile& operator=(OpenFile&&) = delete;
    ~OpenFile();

    int descriptor() const { return m_descriptor; }

private:
    int m_descriptor;
};

/** A regular file open for reading, of any size. Codes as readFile. */
class FileReader {
public:
    explicit FileReader(const std::string& path)
        : FileReader(OpenFile(path))
    {
    }
    explicit FileReader(OpenFile file);

    /** Its size when it was opened. */
    std::uint64_t size() const { return m_size; }
    /** Bytes read from @p offset on; fewer than there is room for at the end only. */
    std::size_t readAt(std::uint64_t offset, std::span<unsigned char> room) const;

private:
    OpenFile m_file;
    std::uint64_t m_size = 0;
};

/** Hands out a regular file of any size in pieces. Codes as readFile. */
void readPieces(const std::string& path, const std::function<void(View)>& take);

/** Replaces or makes a file in one step: readers see the old bytes or the new ones. Written as a temporary file that only
 *  the owner may read, flushed to the disk, then renamed: a link is replaced, not what it leads to. Throws
 *  SIGIL_TK_FILE_WRITE, also for anything but a file or a link of that name; no temporary file is left, but by a process
 *  that is killed: the next one that writes there removes it. */
void writeFile(const std::string& path, View bytes);

/** Removes a regular file or a link. Throws SIGIL_TK_FILE_NOT_FOUND and SIGIL_TK_FILE_DELETE. */
void deleteFile(const std::string& path);

/** Throws SIGIL_TK_ARGUMENT when writing @p written would replace the file @p other, which is read or written too. */
void requireApart(const std::string& written, const std::string& other);

/** A file being written: nothing appears under @p path before commit(). */
class FileWriter {
public:
    explicit FileWriter(const std::string& path);
    ~FileWriter();
    FileWriter(const FileWriter&) = delete;
    FileWriter& operator=(const FileWriter&) = delete;

    void write(View bytes);
    void commit();
    /** The same for a path where nothing may be yet: what is there stays, and SIGIL_TK_FILE_WRITE is thrown. */
    void commitNew();

private:
    void flush() const;
    void close();

    std::string m_path;
    std::string m_temporary;
    int m_descriptor;
};

} // namespace toolkit
