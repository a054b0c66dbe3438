// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Files that somebody names: read whole, or said why not.

#include "jobs/read_file.h"

#include "foundation/file.h"
#include "jobs/failure.h"
#include "tests/jobs/failing_calls.h"
#include "tests/support/files.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <cstdint>
#include <filesystem>
#include <string>

namespace fs = std::filesystem;

namespace {

/** "NAME: the system's words" of the failure, "" when there is none. */
std::string failureOf(const std::string& path)
{
    try {
        host::readContent(path);
        return {};
    } catch (const host::Failure& failure) {
        const std::string message = failure.message(host::Language::English);
        return failure.name() + message.substr(std::min(message.rfind(": "), message.size()));
    }
}

} // namespace

TEST(AFile, IsReadWhole)
{
    const TemporaryFolder folder;
    const std::string large(200'000, 'x');
    EXPECT_EQ(host::readFile(folder.write("large", large)), large);
    EXPECT_EQ(host::readFile(folder.write("empty", "")), "");
}

TEST(AFile, ThatCannotBeReadIsToldWithTheReason)
{
    const TemporaryFolder folder;
    EXPECT_EQ(failureOf(folder.path("none")), "not_found");
    EXPECT_EQ(failureOf(folder.write("file", "x") + "/below"), "not_found");
    EXPECT_EQ(failureOf(folder.write("empty", "")), "empty_file");
    EXPECT_EQ(failureOf(folder.path()), "file_not_read: " + host::reason(EISDIR));
    ASSERT_EQ(mkfifo(folder.path("pipe").c_str(), 0600), 0);
    EXPECT_EQ(failureOf(folder.path("pipe")), "file_not_read: " + host::reason(EINVAL));
    fs::create_symlink("circle", folder.path("circle"));
    EXPECT_EQ(failureOf(folder.path("circle")), "file_not_read: " + host::reason(ELOOP));
    EXPECT_EQ(failureOf("/proc/self/mem"), "file_not_read: " + host::reason(EIO)) << "nothing is mapped at 0";
}

TEST(AFile, OfTwoGigabytesIsNotRead)
{
    const TemporaryFolder folder;
    const std::string file = folder.write("large", "");
    fs::resize_file(file, std::uintmax_t{1} << 31);
    EXPECT_EQ(failureOf(file).substr(0, 14), "file_too_large");
}

TEST(AFile, IsReadAsFarAsIsAllowed)
{
    const TemporaryFolder folder;
    const sigil::Descriptor file(open(folder.write("file", "1234").c_str(), O_RDONLY | O_CLOEXEC));
    std::string content;
    EXPECT_EQ(host::readAll(file.get(), content, 3), EFBIG);
    content.clear();
    ASSERT_EQ(lseek(file.get(), 0, SEEK_SET), 0);
    EXPECT_EQ(host::readAll(file.get(), content, 4), 0);
    EXPECT_EQ(content, "1234");
    content.clear();
    ASSERT_EQ(lseek(file.get(), 0, SEEK_SET), 0);
    const FailingCall call("read", EINTR, 2);
    EXPECT_EQ(host::readAll(file.get(), content, 4), 0) << "whatever interrupts it";
    EXPECT_TRUE(call.haveFailed());
    EXPECT_EQ(content, "1234");
}
