// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "files.h"

#include "foundation/file.h"
#include "jobs/failure.h"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <filesystem>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace host {

namespace {

constexpr Words cannotRead{"cannot read {}: {}", "{} 파일을 읽을 수 없습니다: {}"};
constexpr Words cannotWrite{"cannot write {}: {}", "{} 파일을 쓸 수 없습니다: {}"};
constexpr Words alreadyThere{
    "{} is there already; --force replaces it", "{} 파일이 이미 있습니다. --force로 바꿀 수 있습니다"};
constexpr Words inputTooLarge{"standard input holds more than a certificate", "표준 입력이 인증서보다 큽니다"};

mode_t usualMode()
{
    const mode_t mask = umask(0);
    umask(mask);
    return 0666 & ~mask;
}

/** Renames without replacing anything. @return errno; 0 */
int renameToFreeName(const std::string& from, const std::string& to)
{
    if (renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0)
        return 0;
    if (errno != EINVAL && errno != ENOSYS)
        return errno;
    if (link(from.c_str(), to.c_str()) != 0) // a file system without that: a link is as careful
        return errno;
    return unlink(from.c_str()) == 0 ? 0 : errno;
}

/** Brings a file's content, or a folder's names, to the disk. @return errno; 0 */
int flush(const std::string& path, int flags)
{
    const sigil::Descriptor file(::open(path.c_str(), flags | O_CLOEXEC));
    return file.get() >= 0 && fsync(file.get()) == 0 ? 0 : errno;
}

std::string folderOf(const std::string& path)
{
    const std::string folder = std::filesystem::path(path).parent_path().string();
    return folder.empty() ? "." : folder;
}

/** The folder for what is not whole yet, which is one process's at a time: one that a killed process left is free.
 *  @return the folder, locked; none, and errno */
sigil::Descriptor openDrafts(const std::string& path)
{
    if (mkdir(path.c_str(), S_IRWXU) != 0 && errno != EEXIST)
        return {};
    sigil::Descriptor folder(::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
    if (!folder.isOpen())
        return {};
    const bool isLocked = flock(folder.get(), LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK;
    struct stat status { }; // of a folder that cannot be asked: without links
    static_cast<void>(fstat(folder.get(), &status));
    if (!isLocked && status.st_uid == geteuid() && status.st_nlink > 0)
        return folder;
    errno = EBUSY;
    return {};
}

} // namespace

std::string readStandardInput()
{
    constexpr std::size_t most = 1 << 20;
    std::string content;
    const int error = readAll(STDIN_FILENO, content, most);
    if (error == EFBIG)
        throw Failure(failed, "file_not_read", inputTooLarge);
    if (error != 0)
        throw Failure(failed, "file_not_read", cannotRead, {"-", reason(error)});
    mustHoldSomething(content, "-");
    return content;
}

WrittenFile::WrittenFile(const Session& session, std::string path, Content content)
    : m_path(std::move(path))
    , m_drafts(m_path + ".part~")
    , m_temporary((std::filesystem::path(m_drafts) / std::filesystem::path(m_path).filename()).string())
    , m_force(session.arguments.has("--force"))
    , m_mode(content == Content::PrivateKey ? 0600 : usualMode())
{
    struct stat status { };
    const bool exists = lstat(m_path.c_str(), &status) == 0;
    if (exists && S_ISDIR(status.st_mode))
        throw Failure(failed, "file_not_written", cannotWrite, {m_path, reason(EISDIR)});
    if (exists && !m_force)
        throw Failure(failed, "file_exists", alreadyThere, {m_path});
    const EndingsWait wait; // until it is known what is to go
    m_lock = openDrafts(m_drafts);
    if (!m_lock.isOpen())
        fail(errno);
    m_unfinished.emplace(m_drafts);
    removeFilesIn(m_lock.get());
}

WrittenFile::~WrittenFile()
{
    removeFilesIn(m_lock.get());
    static_cast<void>(rmdir(m_drafts.c_str()));
}

void WrittenFile::fail(int error) const
{
    throw Failure(failed, "file_not_written", cannotWrite, {m_path, reason(error)});
}

void WrittenFile::write(std::string_view bytes)
{
    const sigil::Descriptor file(::open(m_temporary.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600));
    if (file.get() < 0)
        fail(errno);
    if (sigil::writeAll(file, bytes) < bytes.size())
        fail(errno);
}

void WrittenFile::commit()
{
    int error = chmod(m_temporary.c_str(), m_mode) == 0 ? flush(m_temporary, O_RDONLY) : errno;
    if (error == 0 && m_force)
        error = rename(m_temporary.c_str(), m_path.c_str()) == 0 ? 0 : errno;
    else if (error == 0)
        error = renameToFreeName(m_temporary, m_path);
    if (error == EEXIST)
        throw Failure(failed, "file_exists", alreadyThere, {m_path});
    if (error != 0)
        fail(error);
    flush(folderOf(m_path), O_RDONLY | O_DIRECTORY);
}

void writeFile(const Session& session, const std::string& path, std::string_view bytes, Content content)
{
    WrittenFile file(session, path, content);
    file.write(bytes);
    file.commit();
}

std::string outputPath(const Session& session, const std::string& otherwise)
{
    return session.arguments.has("--out") ? session.arguments.text("--out") : otherwise;
}

} // namespace host
