// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Files named by settings and hosts: opened so that nothing but a regular file is ever read or written. A folder, a
 *  device or a pipe in place of a file counts as missing instead of failing late or hanging the host program.
 */
#pragma once

#include <cerrno>
#include <cstdio>
#include <exception>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

namespace sigil {

/** An open file; closed at the end of its life. */
class Descriptor {
public:
    Descriptor() = default;
    explicit Descriptor(int number)
        : m_number(number)
    {
    }
    ~Descriptor();
    Descriptor(Descriptor&& other) noexcept
        : m_number(other.release())
    {
    }
    Descriptor& operator=(Descriptor&& other) noexcept
    {
        std::swap(m_number, other.m_number);
        return *this;
    }

    bool isOpen() const { return m_number >= 0; }
    int get() const { return m_number; }
    int release() { return std::exchange(m_number, -1); }

private:
    int m_number = -1;
};

/** Writes @p bytes at the file's position. @return how many were written; fewer when the system refuses the rest */
std::size_t writeAll(const Descriptor& file, std::string_view bytes);

/** A regular file open for reading. */
class RegularFile {
public:
    /** Opens the file at @p path; null and any other kind of file open nothing. */
    explicit RegularFile(const char* path);

    bool isOpen() const { return m_file.isOpen(); }
    /** Reads on. @return number of bytes in @p buffer; less than @p size only at the end of the file */
    std::size_t read(char* buffer, std::size_t size);
    int descriptor() const { return m_file.get(); }
    /** Leaves the descriptor to the caller. */
    void release() { m_file.release(); }

private:
    Descriptor m_file;
    std::size_t m_left; // bytes until the end, where the file says so: the system's own files have no size
};

struct FileCloser {
    void operator()(std::FILE* file) const { static_cast<void>(std::fclose(file)); }
};
using File = std::unique_ptr<std::FILE, FileCloser>;

/** Opens a regular file for reading, unbuffered; null when there is none at @p path or @p path is null. Throws std::bad_alloc:
 *  a file that is there is not to be taken for a missing one. */
File openForReading(const char* path);

/** Whose log files are written. */
enum class LogOwner {
    anyone,   /**< any regular file, also through a link */
    userAlone /**< no link, and only a file of the user the process runs as: for folders that all users share */
};

/** Appends @p record in one piece to the log file @p path, which is created (mode 0600) when missing.
 *  @return number of bytes written; -1 when the file cannot be opened or must not be written */
long appendToLog(const std::string& path, LogOwner owner, std::string_view record);

/** Runs @p write, which makes a record and appends it. A log disturbs nobody: running out of memory drops the record,
 *  and errno stays what it was.
 *  @return what @p write returns; -1 for a dropped record */
template <class Write>
int logQuietly(Write write)
{
    const int errorOfCaller = errno;
    int result = -1;
    try {
        result = write();
    } catch (const std::exception&) {
        // There is nobody to tell.
    }
    errno = errorOfCaller;
    return result;
}

} // namespace sigil
