// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "foundation/file.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <fcntl.h>
#include <new>
#include <optional>
#include <sys/stat.h>
#include <unistd.h>

namespace sigil {

namespace {

/** The status of an open regular file; nothing for any other kind of file. */
std::optional<struct stat> regularFile(const Descriptor& file)
{
    struct stat status { };
    if (fstat(file.get(), &status) != 0 || !S_ISREG(status.st_mode))
        return std::nullopt;
    return status;
}

} // namespace

Descriptor::~Descriptor()
{
    if (isOpen())
        close(m_number);
}

std::size_t writeAll(const Descriptor& file, std::string_view bytes)
{
    std::size_t written = 0;
    while (written < bytes.size()) {
        const ssize_t n = write(file.get(), bytes.data() + written, bytes.size() - written);
        if (n < 0 && errno == EINTR)
            continue;
        if (n <= 0)
            break;
        written += static_cast<std::size_t>(n);
    }
    return written;
}

// Without O_NONBLOCK, opening a pipe that nobody writes to would wait for ever.
RegularFile::RegularFile(const char* path)
    : m_file(path ? open(path, O_RDONLY | O_NONBLOCK | O_CLOEXEC) : -1)
{
    const auto status = regularFile(m_file);
    m_left = status && status->st_size > 0 ? static_cast<std::size_t>(status->st_size) : SIZE_MAX;
    if (!status)
        m_file = Descriptor();
}

std::size_t RegularFile::read(char* buffer, std::size_t size)
{
    std::size_t done = 0;
    while (done < size && m_left > 0) {
        const ssize_t n = ::read(m_file.get(), buffer + done, size - done);
        if (n < 0 && errno == EINTR)
            continue;
        if (n <= 0)
            break;
        done += static_cast<std::size_t>(n);
        m_left -= std::min(m_left, static_cast<std::size_t>(n));
    }
    return done;
}

File openForReading(const char* path)
{
    RegularFile file(path);
    File stream(file.isOpen() ? fdopen(file.descriptor(), "r") : nullptr);
    if (!stream) {
        if (file.isOpen()) // a stream takes nothing but memory
            throw std::bad_alloc();
        return stream;
    }
    file.release();
    static_cast<void>(std::setvbuf(stream.get(), nullptr, _IONBF, 0));
    return stream;
}

long appendToLog(const std::string& path, LogOwner owner, std::string_view record)
{
    const int links = owner == LogOwner::userAlone ? O_NOFOLLOW : 0;
    const Descriptor file(open(path.c_str(), O_WRONLY | O_APPEND | O_CREAT | O_NONBLOCK | O_CLOEXEC | links, 0600));
    const auto status = regularFile(file);
    if (!status)
        return -1;
    // A file that another user has put there, or a second name of some other file, is not ours to write.
    if (owner == LogOwner::userAlone && (status->st_uid != geteuid() || status->st_nlink != 1))
        return -1;
    return static_cast<long>(writeAll(file, record));
}

} // namespace sigil
