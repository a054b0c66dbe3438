// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Programs beside the engine that answer, and those that do not.

#include "tests/support/files.h"
#include "toolkit/engine/base/helper_program.h"

#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <filesystem>

namespace {

using namespace std::chrono_literals;
using toolkit::HelperEnd;

class Helpers : public testing::Test {
protected:
    /** Asks a shell script, which stands elsewhere: a program is named by its way from the engine. */
    toolkit::HelperAnswer ask(const std::string& script, const std::string& request = "request",
        std::chrono::seconds patience = 60s) const
    {
        folder.write("helper", "#!/bin/sh\n" + script + "\n");
        std::filesystem::permissions(folder.path("helper"), std::filesystem::perms::owner_all);
        const auto engine = std::filesystem::read_symlink("/proc/self/exe").parent_path();
        const auto name = std::filesystem::canonical(folder.path("helper")).lexically_relative(engine);
        return toolkit::askHelper(name, {"first", "second"}, toolkit::view(request), patience);
    }
    static std::string text(const toolkit::HelperAnswer& answer)
    {
        return {toolkit::chars(answer.bytes), answer.bytes.size()};
    }

    TemporaryFolder folder;
};

} // namespace

TEST_F(Helpers, GetTheirArgumentsAndTheRequestAndAnswer)
{
    const auto answer = ask("echo $2 $1; cat");
    EXPECT_EQ(answer.end, HelperEnd::Answered);
    EXPECT_EQ(text(answer), "second first\nrequest");
}

TEST_F(Helpers, WhoTakesLittleGetsLittleAndMayAnswer)
{
    const auto answer = ask("exec <&-; echo enough", std::string(8UL << 20, 'x'));
    EXPECT_EQ(answer.end, HelperEnd::Answered);
    EXPECT_EQ(text(answer), "enough\n");
}

TEST_F(Helpers, WhoDiesHasCrashed)
{
    const auto answer = ask("echo half; kill -SEGV $$");
    EXPECT_EQ(answer.end, HelperEnd::Crashed);
    EXPECT_EQ(text(answer), "half\n");
}

TEST_F(Helpers, WhoFailsHasAnsweredNothing)
{
    const auto answer = ask("exit 3");
    EXPECT_EQ(answer.end, HelperEnd::Answered);
    EXPECT_TRUE(answer.bytes.empty());
}

TEST_F(Helpers, WhoNeitherReadsNorAnswersIsEndedWhenTheTimeIsOver)
{
    EXPECT_EQ(ask("exec sleep 1000", "request", 0s).end, HelperEnd::Silent);
    EXPECT_EQ(ask("exec sleep 1000", "request", 1s).end, HelperEnd::Silent);
    EXPECT_EQ(ask("exec sleep 1000", std::string(8UL << 20, 'x'), 1s).end, HelperEnd::Silent);
}

TEST_F(Helpers, WhoNeverEndsIsEndedAfterSomeMegabytes)
{
    const auto answer = ask("exec yes", "");
    EXPECT_EQ(answer.end, HelperEnd::Silent);
}

TEST_F(Helpers, WhoIsNotThereIsAbsent)
{
    EXPECT_EQ(toolkit::askHelper("no-such-program", {}, {}, 60s).end, HelperEnd::Absent);
}

TEST_F(Helpers, AreDoneWhenTheHostTakesTheirEndItself)
{
    const auto before = std::signal(SIGCHLD, SIG_IGN);
    const auto answer = ask("echo text");
    std::signal(SIGCHLD, before);
    EXPECT_EQ(answer.end, HelperEnd::Answered);
    EXPECT_EQ(text(answer), "text\n");
}
