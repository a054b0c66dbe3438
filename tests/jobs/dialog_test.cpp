// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// The program that shows the dialog: how it is started and talked to, with scripts in its place.

#include "jobs/dialog.h"

#include "foundation/file.h"
#include "jobs/failure.h"
#include "jobs/read_file.h"
#include "tests/jobs/failing_calls.h"
#include "tests/support/files.h"

#include <gtest/gtest.h>

#include <sys/resource.h>
#include <sys/socket.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <memory>
#include <new>
#include <string>
#include <utility>

namespace fs = std::filesystem;

namespace {

class Dialog : public testing::Test {
protected:
    /** The program: executable, unless @p mode says otherwise. */
    void install(const std::string& content, fs::perms mode = fs::perms::owner_all) const
    {
        fs::permissions(folder.write(host::dialogProgram, content), mode);
    }
    /** "NAME: the system's words" of the failure, "" when there is none. */
    std::string failure() const
    {
        try {
            host::chooseInDialog(folder.path(), *request);
            return {};
        } catch (const host::Failure& failure) {
            const std::string message = failure.message(host::Language::English);
            return failure.name() + message.substr(message.rfind(": "));
        }
    }

    const TemporaryFolder folder;
    std::unique_ptr<host::DialogRequest> request = std::make_unique<host::DialogRequest>();
};

/** Two sockets that are joined. */
struct Sockets {
    Sockets()
    {
        std::array<int, 2> ends{};
        EXPECT_EQ(socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()), 0);
        one = sigil::Descriptor(ends[0]);
        other = sigil::Descriptor(ends[1]);
    }
    sigil::Descriptor one, other;
};

} // namespace

TEST_F(Dialog, OfAProgramThatMayNotRunIsToldWithTheReason)
{
    install("#!/bin/sh\n", fs::perms::owner_read);
    EXPECT_EQ(failure(), "dialog_failed: " + host::reason(EACCES));
    install("no program");
    EXPECT_EQ(failure(), "dialog_failed: " + host::reason(ENOEXEC));
}

TEST_F(Dialog, WithoutMemoryForAProcessIsAShortage)
{
    install("#!/bin/sh\n");
    const FailingCall call("posix_spawn", ENOMEM, 1);
    EXPECT_THROW(host::chooseInDialog(folder.path(), *request), std::bad_alloc);
}

TEST_F(Dialog, WithoutAFileToTalkThroughIsToldWithTheReason)
{
    install("#!/bin/sh\n");
    rlimit before{};
    ASSERT_EQ(getrlimit(RLIMIT_NOFILE, &before), 0);
    rlimit none = before;
    none.rlim_cur = 0;
    ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &none), 0);
    const std::string told = failure();
    setrlimit(RLIMIT_NOFILE, &before);
    EXPECT_EQ(told, "dialog_failed: " + host::reason(EMFILE));
}

TEST_F(Dialog, TakesNoLibraryFolderThatItsRecordCannotHold)
{
    host::Setting setting{std::string(259, 'f'), SIGIL_TOOLKIT_MAKER, host::Language::Korean};
    *request = host::dialogRequest(setting);
    EXPECT_EQ(request->init.szLibraryFolder, setting.folder);
    EXPECT_EQ(request->init.nLanguage, SIGIL_LANGUAGE_KOREAN);
    setting.folder += 'f';
    try {
        host::dialogRequest(setting);
        FAIL() << "it was taken";
    } catch (const host::Failure& failure) {
        EXPECT_EQ(failure.name(), "path_too_long");
    }
}

TEST(ARecord, ArrivesWholeAlsoWhenASignalInterruptsIt)
{
    Sockets sockets;
    const FailingCall call("send", EINTR, 2);
    const auto sent = std::make_unique<host::DialogRequest>();
    sent->init.nLanguage = 4711;
    ASSERT_TRUE(host::sendRecord(sockets.one.get(), *sent));
    EXPECT_TRUE(call.haveFailed());
    {
        const sigil::Descriptor closed(std::move(sockets.one));
    } // nobody waits for what did not come
    const auto received = std::make_unique<host::DialogRequest>();
    EXPECT_TRUE(host::receiveRecord(sockets.other.get(), *received));
    EXPECT_EQ(std::memcmp(sent.get(), received.get(), sizeof *sent), 0);
}

TEST(ARecord, IsNeitherSentNorReceivedWithoutAnotherEnd)
{
    Sockets sockets;
    {
        const sigil::Descriptor closed(std::move(sockets.other));
    }
    const auto request = std::make_unique<host::DialogRequest>();
    EXPECT_FALSE(host::sendRecord(sockets.one.get(), *request));
    host::DialogGreeting received{};
    EXPECT_FALSE(host::receiveRecord(sockets.one.get(), received)) << "the end";
    EXPECT_FALSE(host::receiveRecord(-1, received)) << "a failure";
}
