// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "toolkit/engine/base/file.h"

#include "toolkit/engine/base/der.h"
#include "toolkit/engine/base/error.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <system_error>
#include <utility>

namespace toolkit {
namespace {

[[noreturn]] void failWithErrno(int code) { fail(code, std::generic_category().message(errno)); }

/** A file makes way, or a link to something; a device, a pipe or a folder of that name is not the caller's to replace. */
const std::string& replaceable(const std::string& path)
{
    struct stat status { };
    require(lstat(path.c_str(), &status) != 0 || S_ISREG(status.st_mode) || S_ISLNK(status.st_mode),
        SIGIL_TK_FILE_WRITE, "not a regular file");
    return path;
}

/** Whether @p path is the name, the only one, of an open file of this user. */
bool leadsTo(const std::string& path, int descriptor)
{
    struct stat named { };
    struct stat opened { };
    return lstat(path.c_str(), &named) == 0 && fstat(descriptor, &opened) == 0 && S_ISREG(opened.st_mode) &&
        opened.st_uid == geteuid() && opened.st_nlink == 1 && named.st_ino == opened.st_ino &&
        named.st_dev == opened.st_dev;
}

/** @p path without links and detours, as far as it can be followed. */
std::filesystem::path resolved(const std::filesystem::path& path)
{
    std::error_code failure;
    std::filesystem::path straight = std::filesystem::weakly_canonical(path, failure);
    return failure ? path : straight;
}

/** The name that writing to @p path gives to something else: not what a link of that name leads to. */
std::filesystem::path placeOf(const std::filesystem::path& path)
{
    const std::filesystem::path folder = path.has_parent_path() ? path.parent_path() : ".";
    return resolved(folder) / path.filename();
}

/** Brings the name of a file to the disk. Some file systems do not flush folders, and say so with EINVAL. */
void flushFolderOf(const std::string& path)
{
    const std::string name = std::filesystem::path(path).parent_path().string();
    const int folder = open(name.empty() ? "." : name.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    const bool isFlushed = folder < 0 || fsync(folder) == 0 || errno == EINVAL;
    const int error = errno;
    if (folder >= 0)
        close(folder);
    errno = error;
    if (!isFlushed)
        failWithErrno(SIGIL_TK_FILE_WRITE);
}

/** Removes what a killed process left of a file. What another one is writing is locked. */
void removeLeftover(const std::string& path)
{
    const int leftover = open(path.c_str(), O_RDWR | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
    if (leftover < 0)
        return;
    if (flock(leftover, LOCK_EX | LOCK_NB) == 0 && leadsTo(path, leftover))
        unlink(path.c_str());
    close(leftover);
}

/** Makes a file that only the owner may read, locked. @return -1 when another process has one of that name */
int makeDraft(const std::string& path)
{
    removeLeftover(path);
    const int draft = open(path.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, S_IRUSR | S_IWUSR);
    if (draft < 0)
        return -1;
    const bool isTaken = flock(draft, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK;
    if (!isTaken && leadsTo(path, draft))
        return draft;
    close(draft);
    return -1;
}

} // namespace

OpenFile::OpenFile(const std::string& path)
    : m_descriptor(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY))
{
    if (m_descriptor < 0)
        failWithErrno(errno == ENOENT || errno == ENOTDIR ? SIGIL_TK_FILE_NOT_FOUND : SIGIL_TK_FILE_READ);
}

OpenFile::~OpenFile()
{
    if (m_descriptor >= 0)
        close(m_descriptor);
}

FileReader::FileReader(OpenFile file)
    : m_file(std::move(file))
{
    struct stat status { }; // of no kind when nothing can be told
    static_cast<void>(fstat(m_file.descriptor(), &status));
    require(S_ISREG(status.st_mode), SIGIL_TK_FILE_READ, "not a regular file");
    m_size = static_cast<std::uint64_t>(status.st_size);
}

std::size_t FileReader::readAt(std::uint64_t offset, std::span<unsigned char> room) const
{
    std::size_t total = 0;
    while (total < room.size()) {
        const ssize_t count = pread(
            m_file.descriptor(), room.data() + total, room.size() - total, static_cast<off_t>(offset + total));
        if (count < 0 && errno != EINTR)
            failWithErrno(SIGIL_TK_FILE_READ);
        total += count < 0 ? 0 : static_cast<std::size_t>(count);
        if (count == 0 ||
            offset + total == m_size) // there it ended when it was opened, and there was no more just now
            break;
    }
    return total;
}

void readPieces(const std::string& path, const std::function<void(View)>& take)
{
    const FileReader file(path);
    Secret piece(64UL * 1024);
    std::uint64_t offset = 0;
    while (const std::size_t count = file.readAt(offset, piece)) {
        take(View(piece).first(count));
        offset += count;
    }
}

namespace {

/** A file that is one DER element, as most of a store are: that shows by its first piece, so nobody asks for its size
 *  before. Empty when it is anything else. */
Secret readElement(const OpenFile& file)
{
    constexpr std::size_t piece = 2048;
    Secret bytes(piece);
    const ssize_t count = pread(file.descriptor(), bytes.data(), piece, 0);
    bytes.resize(count > 0 && count < static_cast<ssize_t>(piece) ? static_cast<std::size_t>(count) : 0);
    const auto element = der::shortest(bytes);
    if (!element || element->whole.size() != bytes.size())
        bytes.clear();
    return bytes;
}

Secret readWhole(const FileReader& file)
{
    require(file.size() <= maximumFileSize, SIGIL_TK_FILE_READ, "the file is too large");
    Secret bytes(file.size() + 1); // the byte more tells whether the file grows while it is read
    std::size_t length = 0;
    for (bool atEnd = false; !atEnd;) {
        const std::size_t count = file.readAt(length, std::span(bytes).subspan(length));
        length += count;
        require(length <= maximumFileSize, SIGIL_TK_FILE_READ, "the file is too large");
        atEnd = length < bytes.size();
        if (!atEnd)
            bytes.resize(2 * length);
    }
    bytes.resize(length);
    return bytes;
}

} // namespace

Secret readFile(const std::string& path)
{
    OpenFile file(path);
    if (Secret element = readElement(file); !element.empty())
        return element;
    return readWhole(FileReader(std::move(file)));
}

void writeFile(const std::string& path, View bytes)
{
    FileWriter file(path);
    file.write(bytes);
    file.commit();
}

void deleteFile(const std::string& path)
{
    if (unlink(path.c_str()) != 0)
        failWithErrno(errno == ENOENT || errno == ENOTDIR ? SIGIL_TK_FILE_NOT_FOUND : SIGIL_TK_FILE_DELETE);
}

void requireApart(const std::string& written, const std::string& other)
{
    const std::filesystem::path place = placeOf(written);
    require(place != placeOf(other) && place != resolved(other), SIGIL_TK_ARGUMENT, "two paths of one file");
}

FileWriter::FileWriter(const std::string& path)
    : m_path(replaceable(path))
    , m_temporary(path + ".part~")
    , m_descriptor(makeDraft(m_temporary))
{
    if (m_descriptor >= 0)
        return;
    m_temporary = path + ".XXXXXX";                         // while another process is at work
    m_descriptor = mkostemp(m_temporary.data(), O_CLOEXEC); // with mode 0600
    if (m_descriptor < 0)
        failWithErrno(SIGIL_TK_FILE_WRITE);
}

FileWriter::~FileWriter()
{
    if (m_descriptor < 0)
        return;
    ::close(m_descriptor);
    unlink(m_temporary.c_str());
}

void FileWriter::write(View bytes)
{
    while (!bytes.empty()) {
        const ssize_t count = ::write(m_descriptor, bytes.data(), bytes.size());
        if (count < 0 && errno != EINTR)
            failWithErrno(SIGIL_TK_FILE_WRITE);
        bytes = bytes.subspan(count < 0 ? 0 : static_cast<std::size_t>(count));
    }
}

void FileWriter::commit()
{
    flush();
    if (rename(m_temporary.c_str(), m_path.c_str()) != 0)
        failWithErrno(SIGIL_TK_FILE_WRITE);
    close();
    flushFolderOf(m_path);
}

void FileWriter::commitNew()
{
    flush();
    if (renameat2(AT_FDCWD, m_temporary.c_str(), AT_FDCWD, m_path.c_str(), RENAME_NOREPLACE) != 0)
        failWithErrno(SIGIL_TK_FILE_WRITE);
    close();
    flushFolderOf(m_path);
}

void FileWriter::flush() const
{
    if (fsync(m_descriptor) != 0)
        failWithErrno(SIGIL_TK_FILE_WRITE);
}

void FileWriter::close()
{
    ::close(m_descriptor);
    m_descriptor = -1;
}

} // namespace toolkit
