// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// What is noted of pairs before they change, and what is believed of such notes that somebody left.

#include "certlist/undoable_files.h"

#include "tests/support/files.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

#include <cerrno>
#include <chrono>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <utility>

namespace fs = std::filesystem;

// The linker sends every such call of the test program here.
extern "C" int __real_flock(int file, int how);
extern "C" int __wrap_flock(int file, int how);
extern "C" int __real_fsync(int file);
extern "C" int __wrap_fsync(int file);
extern "C" ssize_t __real_pread(int file, void* bytes, std::size_t size, off_t from);
extern "C" ssize_t __wrap_pread(int file, void* bytes, std::size_t size, off_t from);

using sigil::PairPaths;
using sigil::UndoableFiles;

namespace {

/** One content as notes hold it. */
std::string noted(const std::string& content)
{
    const auto length = static_cast<std::int64_t>(content.size());
    return std::string(reinterpret_cast<const char*>(&length), sizeof length) + content;
}

std::string notedLength(std::int64_t length) { return {reinterpret_cast<const char*>(&length), sizeof length}; }

const std::string notesBegin = "changed pairs\n";
const std::string nothingNoted = notedLength(-1);

class UndoableFilesTest : public testing::Test {
protected:
    /** A certificate and its key, in the middle of a change. */
    void SetUp() override
    {
        writeFile(pair.certificate, "new certificate");
        writeFile(pair.key, "new key");
    }
    void leaveNotes(const std::string& notes) const { writeFile(this->notes, notes); }
    bool undone() const { return UndoableFiles::undoInterrupted({pair}); }
    std::string state() const { return readFile(pair.certificate) + ", " + readFile(pair.key); }

    const TemporaryFolder folder;
    const PairPaths pair{folder.path("a.der"), folder.path("a.key")};
    const std::string notes = folder.path("a.key.undo");
};

using Pairs = UndoableFilesTest;

// What another process or a failing disk does just before a call.
std::function<void()> beforeLocking; ///< the next file
std::function<int()> beforeFlushing; ///< each folder. @return what the call fails with, 0 for nothing
std::function<int()> beforeReading;  ///< each piece of a file, likewise

/** Takes what was to happen back. */
class Interference {
public:
    Interference() = default;
    ~Interference()
    {
        beforeLocking = nullptr;
        beforeFlushing = nullptr;
        beforeReading = nullptr;
    }
    Interference(const Interference&) = delete;
    Interference& operator=(const Interference&) = delete;
};

bool fails(const std::function<int()>& before)
{
    const int error = before ? before() : 0;
    if (error != 0)
        errno = error;
    return error != 0;
}

bool isFolder(int file)
{
    struct stat status { };
    fstat(file, &status);
    return S_ISDIR(status.st_mode);
}

/** Fails with @p error at the call of this number alone, from 1. */
std::function<int()> failingAt(int number, int error)
{
    return [=, calls = 0]() mutable { return ++calls == number ? error : 0; };
}

} // namespace

extern "C" int __wrap_flock(int file, int how)
{
    if (beforeLocking)
        std::exchange(beforeLocking, nullptr)();
    return __real_flock(file, how);
}

extern "C" int __wrap_fsync(int file) { return isFolder(file) && fails(beforeFlushing) ? -1 : __real_fsync(file); }

extern "C" ssize_t __wrap_pread(int file, void* bytes, std::size_t size, off_t from)
{
    return fails(beforeReading) ? -1 : __real_pread(file, bytes, size, from);
}

TEST_F(Pairs, AreAsTheyWereWhenNotesAreWhole)
{
    leaveNotes(notesBegin + noted("old certificate") + noted("old key"));
    EXPECT_TRUE(undone());
    EXPECT_EQ(state(), "old certificate, old key");
    EXPECT_FALSE(fs::exists(notes));
    EXPECT_FALSE(undone()) << "once";
}

TEST_F(Pairs, AreGoneWhenThereWereNone)
{
    leaveNotes(notesBegin + nothingNoted + nothingNoted);
    EXPECT_TRUE(undone());
    EXPECT_FALSE(fs::exists(pair.certificate));
    EXPECT_FALSE(fs::exists(pair.key));
}

TEST_F(Pairs, StayWhenNotesAreDamaged)
{
    const std::string damaged[] = {
        "", "changed pair", "changed files\n" + noted("c") + noted("k"),
        notesBegin + "abc",                                                    // no whole length
        notesBegin + noted("c"),                                               // half a pair
        notesBegin + noted("c") + notedLength(9),                              // more than there is
        notesBegin + noted("c") + notedLength(-2),                             // no length
        notesBegin + notedLength(1L << 40) + noted("k"),                       // likewise
        notesBegin + nothingNoted + nothingNoted + nothingNoted + nothingNoted // more pairs than are asked for
    };
    for (const std::string& text : damaged) {
        leaveNotes(text);
        EXPECT_FALSE(undone()) << text;
        EXPECT_EQ(state(), "new certificate, new key") << text;
        EXPECT_EQ(readFile(notes), text);
    }
}

TEST_F(Pairs, StayWhenNotesAreNoFileOfTheirOwn)
{
    const std::string whole = notesBegin + nothingNoted + nothingNoted;
    const std::string other = folder.write("other", whole);
    fs::create_hard_link(other, notes);
    EXPECT_FALSE(undone()) << "a second name";
    fs::remove(notes);
    fs::create_symlink(other, notes);
    EXPECT_FALSE(undone()) << "a link";
    fs::remove(notes);
    ASSERT_EQ(mkfifo(notes.c_str(), 0600), 0);
    EXPECT_FALSE(undone()) << "a pipe";
    fs::remove(notes);
    fs::create_directory(notes);
    EXPECT_FALSE(undone()) << "a folder";
    EXPECT_EQ(state(), "new certificate, new key");
}

TEST_F(Pairs, StayWhenNotesAreTooLong)
{
    leaveNotes(notesBegin + nothingNoted + nothingNoted);
    fs::resize_file(notes, (8 << 20) + 1);
    EXPECT_FALSE(undone());
    EXPECT_EQ(state(), "new certificate, new key");
}

TEST_F(Pairs, StayWhileSomebodyIsAtWork)
{
    leaveNotes(notesBegin + nothingNoted + nothingNoted);
    const sigil::Descriptor other(open(notes.c_str(), O_RDWR | O_CLOEXEC));
    ASSERT_EQ(flock(other.get(), LOCK_EX), 0);
    EXPECT_FALSE(undone());
    UndoableFiles change({pair});
    EXPECT_FALSE(change.begin());
    EXPECT_EQ(state(), "new certificate, new key");
}

TEST_F(Pairs, StayInNotesWhenTheyCannotBePutBack)
{
    leaveNotes(notesBegin + nothingNoted + noted("old key"));
    fs::remove(pair.certificate);
    fs::create_directories(pair.certificate + "/in the way");
    EXPECT_FALSE(undone());
    EXPECT_TRUE(fs::exists(notes));
    fs::remove_all(pair.certificate);
    EXPECT_TRUE(undone());
    EXPECT_EQ(readFile(pair.key), "old key");
}

TEST_F(Pairs, LoseNoOtherKeyThanTheOneThatCannotBeDeleted)
{
    const PairPaths other{folder.path("b.der"), folder.path("b.key")};
    leaveNotes(notesBegin + nothingNoted + noted("old key") + nothingNoted + noted("other old key"));
    fs::remove(pair.key);
    fs::create_directories(pair.key + "/in the way");
    writeFile(other.key, "other new key");
    EXPECT_FALSE(UndoableFiles::undoInterrupted({pair, other}));
    EXPECT_FALSE(fs::exists(other.key)) << "it may not stand beside another's certificate";
    EXPECT_TRUE(fs::exists(notes));
    fs::remove_all(pair.key);
    EXPECT_TRUE(UndoableFiles::undoInterrupted({pair, other}));
    EXPECT_EQ(readFile(pair.key), "old key");
    EXPECT_EQ(readFile(other.key), "other old key");
}

TEST_F(Pairs, StayWhenAnotherProcessFinishesWithTheirNotesInBetween)
{
    const Interference between;
    const std::string whole = notesBegin + nothingNoted + nothingNoted;
    leaveNotes(whole);
    beforeLocking = [this] { fs::remove(notes); };
    EXPECT_FALSE(undone()) << "gone";
    leaveNotes(whole);
    beforeLocking = [&] {
        fs::rename(notes, notes + ".before");
        leaveNotes(whole);
    };
    EXPECT_FALSE(undone()) << "made anew";
    EXPECT_EQ(state(), "new certificate, new key");
    EXPECT_TRUE(undone());
}

TEST_F(Pairs, AreReadAgainWhenASignalComes)
{
    const Interference between;
    leaveNotes(notesBegin + noted("old certificate") + noted("old key"));
    beforeReading = failingAt(1, EINTR);
    EXPECT_TRUE(undone());
    EXPECT_EQ(state(), "old certificate, old key");
}

TEST_F(Pairs, StayWhenTheirNotesCannotBeRead)
{
    const Interference between;
    leaveNotes(notesBegin + nothingNoted + nothingNoted);
    beforeReading = failingAt(1, EIO);
    EXPECT_FALSE(undone()) << "a broken disk";
    beforeReading = [this] {
        fs::resize_file(notes, 0);
        return 0;
    };
    EXPECT_FALSE(undone()) << "shorter than it was";
    EXPECT_EQ(state(), "new certificate, new key");
}

TEST_F(Pairs, AreChangedWhereFoldersAreNotFlushed)
{
    const Interference between;
    beforeFlushing = [] { return EINVAL; };
    UndoableFiles change({pair});
    EXPECT_TRUE(change.begin());
    EXPECT_TRUE(change.removeKeys());
    EXPECT_TRUE(change.keep());
    EXPECT_FALSE(fs::exists(notes));
}

TEST_F(Pairs, AreSaidToBePutBackWhenTheDiskHasThem)
{
    const Interference between;
    leaveNotes(notesBegin + noted("old certificate") + noted("old key"));
    beforeFlushing = failingAt(1, EIO);
    EXPECT_FALSE(undone());
    EXPECT_TRUE(fs::exists(notes)) << "for the next who works on them";
    beforeFlushing = failingAt(2, EIO);
    EXPECT_FALSE(undone());
    EXPECT_FALSE(fs::exists(notes));
    EXPECT_EQ(state(), "old certificate, old key");
}

TEST_F(Pairs, AreNotSaidToBePutBackWhenTheirNotesStay)
{
    const Interference between;
    leaveNotes(notesBegin + noted("old certificate") + noted("old key"));
    beforeFlushing = [this] {
        fs::remove(notes);
        fs::create_directories(notes + "/in the way");
        return 0;
    };
    EXPECT_FALSE(undone());
    EXPECT_EQ(state(), "old certificate, old key");
}

TEST_F(Pairs, LoseTheTemporariesOfTheKilledAlone)
{
    const std::string kept[] = {"a.key.abc", "a.key-abcdef", "a.key.abc-ef", "a.key.abcdefg", "b.key.abcdef"};
    for (const std::string& name : kept)
        folder.write(name, "kept");
    const std::string older = folder.write("a.der.OLDER1", "kept");
    fs::last_write_time(older, fs::file_time_type::clock::now() - std::chrono::hours(1));
    fs::create_directory(folder.path("a.der.FOLDER"));
    leaveNotes(notesBegin + noted("old certificate") + noted("old key"));
    const std::string dropped[] = {"a.key.aB3dEf", "a.key.part~", "a.der.XYZ123", "a.der.part~"};
    for (const std::string& name : dropped)
        folder.write(name, "temporary");
    const std::string later = folder.write("a.der.LATER1", "temporary");
    fs::last_write_time(later, fs::file_time_type::clock::now() + std::chrono::hours(1));

    EXPECT_TRUE(undone());
    for (const std::string& name : kept)
        EXPECT_TRUE(fs::exists(folder.path(name))) << name;
    EXPECT_TRUE(fs::exists(older));
    EXPECT_TRUE(fs::exists(folder.path("a.der.FOLDER")));
    for (const std::string& name : dropped)
        EXPECT_FALSE(fs::exists(folder.path(name))) << name;
    EXPECT_FALSE(fs::exists(later));
}

TEST_F(Pairs, OfAFolderThatIsGoneHaveNoTemporaries)
{
    const PairPaths elsewhere{folder.path("none/a.der"), pair.key};
    leaveNotes(notesBegin + nothingNoted + noted("old key"));
    EXPECT_FALSE(UndoableFiles::undoInterrupted({PairPaths{"", ""}})) << "no file, no notes";
    EXPECT_TRUE(UndoableFiles::undoInterrupted({elsewhere}));
    EXPECT_EQ(readFile(pair.key), "old key");
}

TEST_F(Pairs, OfTheCurrentFolderNeedNoPath)
{
    const fs::path before = fs::current_path();
    fs::current_path(folder.path());
    {
        UndoableFiles change({PairPaths{"a.der", "a.key"}});
        EXPECT_TRUE(change.begin());
        EXPECT_TRUE(change.removeKeys());
        EXPECT_FALSE(fs::exists("a.key"));
    }
    EXPECT_EQ(state(), "new certificate, new key") << "nobody kept the change";
    fs::current_path(before);
}

TEST_F(Pairs, AreNotChangedWhenTheyCannotBeNoted)
{
    for (const std::string& path : {pair.certificate, pair.key}) {
        const std::string content = readFile(path);
        fs::resize_file(path, (1 << 20) + 1);
        EXPECT_FALSE(UndoableFiles({pair}).begin()) << path << " is no certificate and no key";
        fs::remove(path);
        fs::create_directory(path);
        EXPECT_FALSE(UndoableFiles({pair}).begin()) << path << " is a folder";
        fs::remove(path);
        ASSERT_EQ(mknod(path.c_str(), S_IFSOCK | 0600, 0), 0);
        EXPECT_FALSE(UndoableFiles({pair}).begin()) << path << " is a socket, which nobody opens";
        fs::remove(path);
        fs::create_symlink(fs::path(path).filename(), path);
        EXPECT_FALSE(UndoableFiles({pair}).begin()) << path << " leads to itself";
        fs::remove(path);
        writeFile(path, content);
    }
    EXPECT_FALSE(UndoableFiles({PairPaths{pair.certificate, folder.path("none/a.key")}}).begin())
        << "no folder for notes";
    EXPECT_FALSE(fs::exists(notes));
    EXPECT_EQ(state(), "new certificate, new key");
}

TEST_F(Pairs, AreNotChangedWhenSomethingElseHasTheNameOfTheirDraft)
{
    const std::string draft = folder.path("a.key.und~");
    fs::create_hard_link(folder.write("other", "other"), draft);
    EXPECT_FALSE(UndoableFiles({pair}).begin()) << "a second name";
    fs::remove(draft);
    fs::create_symlink("other", draft);
    EXPECT_FALSE(UndoableFiles({pair}).begin()) << "a link";
    EXPECT_EQ(readFile(folder.path("other")), "other");
    fs::remove(draft);
    EXPECT_TRUE(UndoableFiles({pair}).begin());
}

TEST_F(Pairs, WithoutANameAreChangedWithoutNotes)
{
    UndoableFiles change({PairPaths{"", ""}});
    EXPECT_TRUE(change.begin());
    EXPECT_TRUE(change.removeKeys());
    EXPECT_TRUE(change.keep());
}
