// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "certlist/undoable_files.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <memory>
#include <optional>
#include <string_view>
#include <utility>

namespace sigil {

namespace {

constexpr char draftEnding[] = ".und~"; // as long as that of the notes

constexpr std::string_view notesBegin = "changed pairs\n";
constexpr mode_t ownerOnly = S_IRUSR | S_IWUSR;
constexpr off_t longestFile = 1 << 20; ///< much longer than any certificate or key

/** What a file held; nothing for one that was not there. */
using Content = std::optional<std::string>;

/** What a pair held. */
struct PairContent {
    Content certificate;
    Content key;
};

std::string notesOf(const std::vector<PairPaths>& pairs)
{
    for (const PairPaths& pair : pairs)
        for (const std::string& path : {pair.key, pair.certificate})
            if (!path.empty())
                return path + UndoableFiles::notesEnding;
    return {};
}

std::string folderOf(const std::string& path)
{
    const std::size_t slash = path.rfind('/');
    return slash == path.npos ? "." : path.substr(0, std::max<std::size_t>(slash, 1));
}

std::string_view nameOf(std::string_view path) { return path.substr(path.rfind('/') + 1); }

Descriptor openFile(const std::string& path, int how)
{
    return Descriptor(open(path.c_str(), how | O_CLOEXEC, ownerOnly));
}

bool isGone(const std::string& path) { return path.empty() || unlink(path.c_str()) == 0 || errno == ENOENT; }

/** Some file systems do not flush folders, and say so with EINVAL. */
bool flushFolderOf(const std::string& path)
{
    const Descriptor folder = openFile(folderOf(path), O_RDONLY | O_DIRECTORY);
    return folder.isOpen() && (fsync(folder.get()) == 0 || errno == EINVAL);
}

/** Reads a regular file and its status. */
bool readAll(const Descriptor& file, std::string& bytes, struct stat& status)
{
    status = {}; // of no file when it cannot be told
    fstat(file.get(), &status);
    if (!S_ISREG(status.st_mode) || status.st_size > 8 * longestFile)
        return false;
    bytes.resize(static_cast<std::size_t>(status.st_size));
    std::size_t held = 0;
    while (held < bytes.size()) {
        const ssize_t n = pread(file.get(), bytes.data() + held, bytes.size() - held, static_cast<off_t>(held));
        if (n == 0 || (n < 0 && errno != EINTR))
            return false;
        held += n < 0 ? 0 : static_cast<std::size_t>(n);
    }
    return true;
}

/** @return false when there is something that cannot be read, or that is no file of a certificate or key */
bool readContent(const std::string& path, Content& content)
{
    if (path.empty())
        return true;
    struct stat status;
    if (stat(path.c_str(), &status) != 0)
        return errno == ENOENT;
    errno = 0; // no call fails for what is no file, or too long a one
    const Descriptor file = openFile(path, O_RDONLY | O_NONBLOCK);
    return file.isOpen() && status.st_size <= longestFile && readAll(file, content.emplace(), status);
}

/** True when @p path, and no other, still leads to the open file: another process may have finished with it in between. */
bool leadsTo(const std::string& path, const Descriptor& file)
{
    struct stat named { };
    struct stat opened { };
    lstat(path.c_str(), &named); // what is gone has no status
    fstat(file.get(), &opened);
    return S_ISREG(opened.st_mode) && opened.st_nlink == 1 &&
        std::pair(named.st_dev, named.st_ino) == std::pair(opened.st_dev, opened.st_ino);
}

/** Locks the open file @p path. @return false when another process holds it, or has done something else with it */
bool isOurs(const std::string& path, const Descriptor& file)
{
    return file.isOpen() && flock(file.get(), LOCK_EX | LOCK_NB) == 0 && leadsTo(path, file);
}

/** Makes a file as a whole: a reader finds what was there before or all of @p bytes.
 *  @return the file, locked; none when it cannot be written or another process holds it */
Descriptor makeWhole(const std::string& path, const std::string& draft, std::string_view bytes)
{
    Descriptor file = openFile(draft, O_RDWR | O_CREAT | O_NOFOLLOW);
    if (!isOurs(draft, file))
        return {};
    if (ftruncate(file.get(), 0) == 0 && writeAll(file, bytes) == bytes.size() && fsync(file.get()) == 0 &&
        rename(draft.c_str(), path.c_str()) == 0)
        return file;
    unlink(draft.c_str());
    return {};
}

bool putBack(const std::string& path, const Content& content)
{
    if (path.empty())
        return true;
    return content ? makeWhole(path, path + draftEnding, *content).isOpen() : isGone(path);
}

/** Keys go first and come last, so that none stands beside another's certificate. */
bool putBack(const std::vector<PairPaths>& pairs, const std::vector<PairContent>& contents)
{
    bool done = true;
    for (std::size_t i = 0; i < contents.size(); ++i)
        done = isGone(pairs[i].key) && done;
    for (std::size_t i = 0; done && i < contents.size(); ++i)
        done = putBack(pairs[i].certificate, contents[i].certificate);
    for (std::size_t i = 0; done && i < contents.size(); ++i)
        done = putBack(pairs[i].key, contents[i].key);
    return done;
}

void note(std::string& notes, const Content& content)
{
    const std::int64_t length = content ? static_cast<std::int64_t>(content->size()) : -1;
    notes.append(reinterpret_cast<const char*>(&length), sizeof length).append(content.value_or(""));
}

/** Takes one content off the front of @p notes. */
bool takeNote(std::string_view& notes, Content& content)
{
    std::int64_t length = 0;
    if (notes.size() < sizeof length)
        return false;
    std::memcpy(&length, notes.data(), sizeof length);
    notes.remove_prefix(sizeof length);
    if (length < 0)
        return length == -1;
    if (static_cast<std::uint64_t>(length) > notes.size())
        return false;
    content = notes.substr(0, static_cast<std::size_t>(length));
    notes.remove_prefix(static_cast<std::size_t>(length));
    return true;
}

/** Nothing for notes that are none, or of more pairs than are known. */
std::optional<std::vector<PairContent>> readNotes(std::string_view notes, std::size_t most)
{
    if (notes.substr(0, notesBegin.size()) != notesBegin)
        return std::nullopt;
    notes.remove_prefix(notesBegin.size());
    std::vector<PairContent> contents;
    while (!notes.empty()) {
        PairContent& pair = contents.emplace_back();
        if (contents.size() > most || !takeNote(notes, pair.certificate) || !takeNote(notes, pair.key))
            return std::nullopt;
    }
    return contents;
}

/** "NAME.XXXXXX", as mkstemp forms it, or "NAME.part~": what toolkits write before they put it in place of the file NAME. */
bool isTemporaryOf(std::string_view file, std::string_view name)
{
    constexpr std::size_t letters = 6;
    if (!name.starts_with(file))
        return false;
    const std::string_view ending = name.substr(file.size());
    return ending == ".part~" ||
        (ending.size() == 1 + letters && ending[0] == '.' &&
            std::all_of(ending.begin() + 1, ending.end(), [](unsigned char c) { return std::isalnum(c) != 0; }));
}

/** Deletes what a killed operation had not put in place yet. What is older than its notes is not its own. */
void deleteTemporaries(const std::string& path, const timespec& since)
{
    const std::unique_ptr<DIR, int (*)(DIR*)> folder(
        path.empty() ? nullptr : opendir(folderOf(path).c_str()), closedir);
    if (!folder)
        return;
    while (const dirent* item = readdir(folder.get())) {
        if (!isTemporaryOf(nameOf(path), item->d_name))
            continue;
        struct stat status { }; // what is gone is no file
        fstatat(dirfd(folder.get()), item->d_name, &status, AT_SYMLINK_NOFOLLOW);
        const bool later = status.st_mtim.tv_sec > since.tv_sec ||
            (status.st_mtim.tv_sec == since.tv_sec && status.st_mtim.tv_nsec >= since.tv_nsec);
        if (S_ISREG(status.st_mode) && later)
            unlinkat(dirfd(folder.get()), item->d_name, 0);
    }
}

} // namespace

UndoableFiles::UndoableFiles(std::vector<PairPaths> pairs)
    : m_pairs(std::move(pairs))
{
}

UndoableFiles::~UndoableFiles()
{
    if (!m_lock.isOpen())
        return;
    m_lock = Descriptor();
    try {
        undoInterrupted(m_pairs);
    } catch (const std::bad_alloc&) { // the notes stay for the next operation
    }
}

bool UndoableFiles::begin()
{
    m_notes = notesOf(m_pairs);
    if (m_notes.empty())
        return true;
    undoInterrupted(m_pairs);
    std::string notes(notesBegin);
    for (const PairPaths& pair : m_pairs) {
        PairContent content;
        if (!readContent(pair.certificate, content.certificate) || !readContent(pair.key, content.key))
            return false;
        note(notes, content.certificate);
        note(notes, content.key);
    }
    struct stat status;
    if (lstat(m_notes.c_str(), &status) == 0) { // of another process, or what could not be put back
        errno = 0;
        return false;
    }
    const std::string draft = m_notes.substr(0, m_notes.size() - std::strlen(notesEnding)) + draftEnding;
    m_lock = makeWhole(m_notes, draft, notes);
    return m_lock.isOpen() && flushFolderOf(m_notes);
}

bool UndoableFiles::removeKeys()
{
    const auto removed = [](const PairPaths& pair) { return isGone(pair.key); };
    return std::all_of(m_pairs.begin(), m_pairs.end(), removed) && (m_notes.empty() || flushFolderOf(m_notes));
}

bool UndoableFiles::keep()
{
    for (const PairPaths& pair : m_pairs)
        for (const std::string& path : {pair.certificate, pair.key}) {
            const Descriptor file =
                path.empty() ? Descriptor() : openFile(path, O_RDONLY | O_NONBLOCK | O_NOFOLLOW);
            if (!file.isOpen())
                continue;
            fchmod(file.get(), ownerOnly); // not every file system knows owners
            if (fsync(file.get()) != 0)
                return false;
        }
    return std::all_of(m_pairs.begin(), m_pairs.end(),
               [](const PairPaths& pair) { return pair.certificate.empty() || flushFolderOf(pair.certificate); }) &&
        letGo();
}

bool UndoableFiles::letGo()
{
    if (!m_lock.isOpen())
        return true;
    if (!isGone(m_notes))
        return false;
    m_lock = Descriptor();
    return flushFolderOf(m_notes);
}

bool UndoableFiles::undoInterrupted(const std::vector<PairPaths>& pairs)
{
    const std::string path = notesOf(pairs);
    const Descriptor file = path.empty() ? Descriptor() : openFile(path, O_RDWR | O_NOFOLLOW | O_NONBLOCK);
    if (!isOurs(path, file))
        return false;
    std::string notes;
    struct stat status;
    if (!readAll(file, notes, status))
        return false;
    const auto contents = readNotes(notes, pairs.size());
    if (!contents || !putBack(pairs, *contents))
        return false;
    for (const PairPaths& pair : pairs)
        for (const std::string& changed : {pair.certificate, pair.key})
            deleteTemporaries(changed, status.st_mtim);
    return flushFolderOf(path) && isGone(path) && flushFolderOf(path);
}

} // namespace sigil
