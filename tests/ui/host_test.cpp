// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// The entry points, called by a host in C in a process of its own.

#include "tests/support/files.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <filesystem>
#include <memory>

using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;

namespace {

constexpr char unchanged[] = "key=x subject=x\n";
constexpr char chosen[] = "chosen 0 key=signkey subject=cn=홍길동,ou=개인,o=예제,c=KR\n";

class HostTest : public testing::Test {
protected:
    /** What the host printed, ending with "exit CODE"; 124 is the code of a host that had to be stopped. */
    std::string run(const std::string& mode)
    {
        const std::string command = "TRACE_FOLDER=" + m_traceFolder.path() + " timeout 100 " UI_C_HOST " " + mode +
            " " SIGILDESK_LIBRARY_FOLDER " 2>/dev/null; echo exit $?";
        const std::unique_ptr<FILE, int (*)(FILE*)> pipe(popen(command.c_str(), "r"), pclose);
        std::string output;
        std::array<char, 512> part;
        while (std::fgets(part.data(), part.size(), pipe.get()))
            output += part.data();
        return output;
    }
    std::string trace() const
    {
        std::string text;
        for (const auto& entry : std::filesystem::directory_iterator(m_traceFolder.path()))
            text += readFile(entry.path());
        return text;
    }

private:
    TemporaryFolder m_traceFolder;
};

} // namespace

TEST_F(HostTest, RunsTheSharedDialogManyTimes)
{
    const std::string output = run("shared");
    EXPECT_THAT(output, HasSubstr(chosen));
    EXPECT_THAT(output, HasSubstr(std::string("cancelled -1 ") + unchanged));
    EXPECT_THAT(output, HasSubstr(std::string("closed -1 ") + unchanged));
    EXPECT_THAT(output, HasSubstr("list: CLP_SetMediaType 1\n"));
    EXPECT_THAT(output, EndsWith("exit 0\n"));
}

TEST_F(HostTest, TracesTheSharedDialogButNoPassword)
{
    run("shared");
    EXPECT_THAT(trace(), HasSubstr("[DEBUG][SigilDesk.cpp:"));
    EXPECT_THAT(trace(), HasSubstr("[ShowUserCert] Initalize : 0\n"));
    EXPECT_THAT(trace(), HasSubstr("[ShowUserCert] ShowUserCert end\n"));
    EXPECT_THAT(trace(), Not(HasSubstr("TopSecret")));
    EXPECT_THAT(trace(), Not(HasSubstr("signkey")));
}

TEST_F(HostTest, RunsADialogOfItsOwn)
{
    const std::string output = run("own");
    EXPECT_THAT(output, HasSubstr(chosen));
    EXPECT_THAT(output, HasSubstr("cancelled -1 key=signkey")) << "the result stays as it was";
    EXPECT_THAT(output, HasSubstr("closed -1 "));
    EXPECT_THAT(output, HasSubstr("no result 0\nno load 0\nno init 1001\n"));
    EXPECT_THAT(output, HasSubstr("refused 1007 "));
    EXPECT_THAT(output, EndsWith("exit 0\n"));
}

TEST_F(HostTest, HearsOfALackOfMemoryAndGoesOn)
{
    const std::string output = run("dry");
    EXPECT_THAT(output, HasSubstr(std::string("before 1000 ") + unchanged));
    EXPECT_THAT(output, HasSubstr(std::string("meanwhile 1000 ") + unchanged));
    EXPECT_THAT(output, HasSubstr(chosen));
    EXPECT_EQ(run("dry-init"), "init 1000\ninit 7\nexit 0\n");
}

TEST_F(HostTest, MayHaveMadeTheSharedObjectsBefore)
{
    EXPECT_EQ(run("given"), "the given dialog went\ninit 7\nleft 0\nexit 0\n");
}

TEST_F(HostTest, ReturnsWhatTheProcessorRefuses)
{
    const std::string output = run("refused");
    EXPECT_THAT(output, HasSubstr(std::string("refused 1010 ") + unchanged));
    EXPECT_THAT(output, HasSubstr("dialog '인증서 선택")) << "the texts were set before the processor was asked";
    EXPECT_THAT(trace(), HasSubstr("Initalize : 1010\n"));
    EXPECT_THAT(trace(), Not(HasSubstr("ShowUserCert end")));
}

TEST_F(HostTest, CountsACallWithoutInitOptionsAsNone)
{
    EXPECT_EQ(run("no-init"), "no init 1001\ninit 7\nexit 0\n") << "the loop may still end";
    EXPECT_THAT(trace(), Not(HasSubstr("Initalize"))) << "the processor was not asked";
}

TEST_F(HostTest, CountsADialogWhoseLoopEndedAsGivenUp)
{
    const std::string output = run("ended");
    EXPECT_THAT(output, HasSubstr(chosen));
    EXPECT_THAT(output, HasSubstr(std::string("ended -1 ") + unchanged)) << "not as the call before";
    EXPECT_THAT(output, HasSubstr("shown=0 password=''\n"));
}

TEST_F(HostTest, OpensOnTheCertificateInMemory)
{
    const std::string output = run("memory");
    EXPECT_THAT(output, HasSubstr(std::string("memory -1 ") + unchanged));
    EXPECT_THAT(output, HasSubstr("held 1\n")) << "otherwise this test would not look at the right place";
    EXPECT_THAT(output, HasSubstr("kept 0\n"));
    EXPECT_THAT(output, HasSubstr("refused 1010 "));
    EXPECT_THAT(output, HasSubstr("kept after refusal 0\n"));
}

TEST_F(HostTest, LeavesTheLoopWhenNoDialogWasEverShown) { EXPECT_EQ(run("quit"), "init 7\nexit 0\n"); }

TEST_F(HostTest, StaysInTheLoopOnceADialogWasShown)
{
    const std::string output = run("stays");
    EXPECT_THAT(output, HasSubstr("cancelled -1"));
    EXPECT_THAT(output, EndsWith("entered again\nexit 0\n")) << "so that the next call finds the loop";
}

TEST_F(HostTest, NeverComesBackFromTheSharedDialogBeforeItsInit)
{
    EXPECT_EQ(run("early"), "started\nexit 142\n") << "ended by the alarm";
}
