// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Where secrets come from, when the system does not do everything.

#include "calls.h"
#include "own_process.h"
#include "tests/support/files.h"
#include "tools/sigildesk/secrets.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <sys/stat.h>
#include <sys/types.h>

namespace {

uid_t owner = 0;
uid_t user = 0;

class SecretSources : public testing::Test {
protected:
    void TearDown() override { calls = {}; }

    /** Why the password in the file is not taken; empty when it is. */
    std::string fromFile() const
    {
        const std::string file = work.write("password", "secret\n");
        std::filesystem::permissions(file, std::filesystem::perms::owner_read);
        return failureOf([&] {
            const Typed typed({"unlock", "0", "--password-file", file});
            host::Answer answer = host::askPassword(typed.session, "key");
            EXPECT_STREQ(answer.secret.chars(), "secret");
            EXPECT_FALSE(answer.fromTerminal);
        });
    }
    /** The same for that of a program. */
    std::string fromProgram() const
    {
        const std::string program = work.write("askpass", "#!/bin/sh\necho secret\n");
        std::filesystem::permissions(program, std::filesystem::perms::owner_all);
        setenv("SIGILDESK_ASKPASS", program.c_str(), 1);
        return failureOf([&] {
            const Typed typed({"unlock", "0"});
            EXPECT_STREQ(host::askPassword(typed.session, "key").secret.chars(), "secret");
        });
    }

    TemporaryFolder work;
};

TEST_F(SecretSources, AFileOfAnotherUserIsNone)
{
    const struct {
        uid_t owner, user;
        bool taken;
    } files[] = {{1000, 1000, true}, {0, 1000, true}, {1000, 0, true}, {0, 0, true}, {1001, 1000, false}};
    calls.fstat = [](int descriptor, struct stat* status) {
        const int result = systemCalls.fstat(descriptor, status);
        status->st_uid = owner;
        return result;
    };
    calls.geteuid = [] { return user; };
    for (const auto& file : files) {
        owner = file.owner;
        user = file.user;
        EXPECT_EQ(fromFile().starts_with("secret_file_open_to_others: "), !file.taken) << owner << ", " << user;
        EXPECT_EQ(fromFile().empty(), file.taken);
    }
}

TEST_F(SecretSources, AFileOfWhichNothingIsKnownIsNone)
{
    calls.fstat = fails<EIO>;
    EXPECT_EQ(fromFile(), "file_not_read: cannot read " + work.path("password") + ": Input/output error");
}

TEST_F(SecretSources, AProgramIsWaitedForWhateverComesInBetween)
{
    EXPECT_EQ(fromProgram(), "");
    static int interrupted;
    interrupted = 0;
    calls.waitpid = [](pid_t process, int* status, int options) {
        return interrupted++ == 0 ? fails<EINTR>() : systemCalls.waitpid(process, status, options);
    };
    EXPECT_EQ(fromProgram(), "");
    EXPECT_EQ(interrupted, 2);
}

TEST_F(SecretSources, NoProgramIsAskedWithoutAWayForItsAnswer)
{
    calls.pipe2 = fails<EMFILE>;
    EXPECT_EQ(fromProgram(), "askpass_failed: " + work.path("askpass") + " gave no password");
}

} // namespace
