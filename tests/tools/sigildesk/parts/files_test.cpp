// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Files that are written where the system does not do everything, or another process comes in between.

#include "calls.h"
#include "own_process.h"
#include "tests/support/files.h"
#include "tools/sigildesk/files.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <iterator>
#include <string>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

class WrittenFiles : public testing::Test {
protected:
    void SetUp() override { fs::create_directory(folder()); }
    void TearDown() override { calls = {}; }

    std::string folder() const { return work.path("folder"); }
    std::string place() const { return folder() + "/file"; }
    std::string drafts() const { return place() + ".part~"; }
    /** Why a file is not written; empty when it is there. */
    std::string write() const
    {
        return failureOf([&] {
            const Typed typed({"encrypt", "FILE"});
            host::WrittenFile file(typed.session, place());
            file.write("content");
            file.commit();
        });
    }
    std::string refused(const std::string& reason) const
    {
        return "file_not_written: cannot write " + place() + ": " + reason;
    }
    /** How many files and folders there are where it is to be. */
    auto left() const { return std::distance(fs::directory_iterator(folder()), fs::directory_iterator()); }

    TemporaryFolder work;
};

TEST_F(WrittenFiles, AreLinkedWhereNothingCanBeRenamedWithCare)
{
    for (const auto call : {fails<EINVAL, int, const char*, int, const char*, unsigned>,
             fails<ENOSYS, int, const char*, int, const char*, unsigned>}) {
        calls.renameat2 = call;
        EXPECT_EQ(write(), "");
        EXPECT_EQ(readFile(place()), "content");
        EXPECT_EQ(left(), 1);
        fs::remove(place());
    }
}

TEST_F(WrittenFiles, ThatCanNeitherBeRenamedNorLinkedAreNotThere)
{
    calls.renameat2 = fails<EINVAL>;
    calls.link = fails<EPERM>;
    EXPECT_EQ(write(), refused("Operation not permitted"));
    EXPECT_EQ(left(), 0);
    calls.link = nullptr;
    calls.unlink = fails<EIO>;
    EXPECT_EQ(write(), refused("Input/output error"));
}

TEST_F(WrittenFiles, DoNotReplaceWhatCameInBetween)
{
    for (const bool careful : {true, false}) {
        calls.renameat2 = careful ? nullptr : &fails<EINVAL, int, const char*, int, const char*, unsigned>;
        fs::remove(place());
        EXPECT_EQ(failureOf([&] {
            const Typed typed({"encrypt", "FILE"});
            host::WrittenFile file(typed.session, place());
            file.write("content");
            writeFile(place(), "another's");
            file.commit();
        }),
            "file_exists: " + place() + " is there already; --force replaces it");
        EXPECT_EQ(readFile(place()), "another's");
        EXPECT_EQ(left(), 1);
    }
}

TEST_F(WrittenFiles, AreNotBegunWhereTheirFolderIsNone)
{
    writeFile(drafts(), "");
    EXPECT_EQ(write(), refused("Not a directory"));
    fs::remove(drafts());
    fs::create_directory(folder() + "/other");
    fs::create_symlink("other", drafts());
    EXPECT_NE(write(), "") << "of a link nobody knows the owner";
    EXPECT_FALSE(fs::exists(place()));
}

TEST_F(WrittenFiles, AreNotBegunInTheFolderOfAnotherUser)
{
    calls.fstat = [](int descriptor, struct stat* status) {
        const int result = systemCalls.fstat(descriptor, status);
        ++status->st_uid;
        return result;
    };
    EXPECT_EQ(write(), refused("Device or resource busy"));
    calls.fstat = fails<EIO>;
    EXPECT_EQ(write(), refused("Device or resource busy"));
    EXPECT_FALSE(fs::exists(place()));
}

TEST_F(WrittenFiles, AreNotBegunInAFolderThatIsGone)
{
    static std::string gone;
    gone = drafts();
    calls.flock = [](int descriptor, int operation) {
        fs::remove(gone); // by the one who had it
        return systemCalls.flock(descriptor, operation);
    };
    EXPECT_EQ(write(), refused("Device or resource busy"));
    calls.flock = nullptr;
    EXPECT_EQ(write(), "");
}

TEST_F(WrittenFiles, NeedNoLockWhereThereAreNone)
{
    calls.flock = fails<ENOLCK>;
    EXPECT_EQ(write(), "");
    EXPECT_EQ(readFile(place()), "content");
}

TEST_F(WrittenFiles, AreNotThereWhenTheyCannotBeFlushed)
{
    const Ended ended = inOwnProcess([&] {
        const std::string failure = failureOf([&] {
            const Typed typed({"encrypt", "FILE"});
            host::WrittenFile file(typed.session, place());
            file.write("content");
            const int next = ::open("/dev/null", O_RDONLY | O_CLOEXEC);
            const rlimit full{static_cast<rlim_t>(next), static_cast<rlim_t>(next)};
            setrlimit(RLIMIT_NOFILE, &full);
            close(next);
            file.commit();
        });
        return failure == refused("Too many open files") ? 0 : 1;
    });
    EXPECT_EQ(ended.code, 0);
    EXPECT_EQ(left(), 0);
}

} // namespace
