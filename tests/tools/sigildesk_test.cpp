// The command as a shell meets it: names in every Korean letter, a full disk, no display.
#include "tests/support/command.h"
#include "tests/support/sample_store.h"
#include "tools/sigildesk/text.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::HasSubstr;

enum ExitCode { done = 0, wrongUse = 2, failed = 3 };

class SigilDeskCommand : public testing::Test {
protected:
    std::string certificateOf(const std::string& subject)
    {
        const std::string file = m_folder.path("certificate.der");
        const Outcome made = run({"openssl", "req", "-x509", "-newkey", "rsa:2048", "-nodes", "-keyout",
            "/dev/null", "-utf8", "-subj", subject, "-outform", "DER", "-out", file});
        EXPECT_EQ(made.status, 0) << made.err;
        return file;
    }

    /** The command with these words before it: "env …" or a shell's line. */
    static Outcome command(std::vector<std::string> before, const std::vector<std::string>& arguments)
    {
        before.emplace_back(SIGILDESK_PROGRAM);
        before.insert(before.end(), arguments.begin(), arguments.end());
        return run(before);
    }

    static Outcome ontoFullDisk(const std::vector<std::string>& arguments)
    {
        return command({"sh", "-c", R"(exec "$0" "$@" >/dev/full)"}, arguments);
    }

    static Outcome withoutDisplay(const std::vector<std::string>& environment)
    {
        std::vector<std::string> before{"env", "-u", "DISPLAY", "-u", "WAYLAND_DISPLAY", "-u", "QT_QPA_PLATFORM"};
        before.insert(before.end(), environment.begin(), environment.end());
        return command(before, {"select"});
    }

private:
    TemporaryFolder m_folder;
};

TEST_F(SigilDeskCommand, ShowsAHanjaBesideHangul)
{
    const Outcome shown = command({}, {"show", certificateOf("/C=KR/O=시험/CN=홍吉동")});
    EXPECT_EQ(shown.status, done) << shown.err;
    EXPECT_THAT(shown.out, HasSubstr("cn=홍吉동,o=시험,c=KR"));
}

TEST_F(SigilDeskCommand, ShowsAQuestionMarkForTheUnknownCharacterAlone)
{
    EXPECT_EQ(host::utf8("\xC8\xAB\xD1\xCE\xB5\xBF"), "홍吉동");
    EXPECT_EQ(host::utf8("\xC8\xAB\xFF\xFF\xB5\xBF"), "홍?동") << "no such code";
    EXPECT_EQ(host::utf8("a\xFF"
                         "b\xC8\xAB"),
        "a?b홍")
        << "a lead byte before ASCII";
    EXPECT_EQ(host::utf8("\xC8\xAB\xB5"), "홍?") << "cut in the middle";
    EXPECT_EQ(host::utf8("\xFF\xFF\xFF"), "??");
    EXPECT_EQ(host::utf8(""), "");
}

TEST_F(SigilDeskCommand, FailsWhenStandardOutputIsFull)
{
    const std::string certificate = certificateOf("/CN=one");
    for (const std::vector<std::string>& arguments :
        {std::vector<std::string>{"show", certificate}, {"--version"}, {"--help"}}) {
        const Outcome outcome = ontoFullDisk(arguments);
        EXPECT_EQ(outcome.status, failed) << arguments.front();
        EXPECT_THAT(outcome.err, HasSubstr("cannot write to standard output"));
    }
}

TEST_F(SigilDeskCommand, SaysThatThereIsNoDisplay)
{
    for (const std::vector<std::string>& environment :
        {std::vector<std::string>{}, {"QT_QPA_PLATFORM=xcb"}, {"DISPLAY=:64999"}, {"QT_QPA_PLATFORM=none-such"}}) {
        const Outcome outcome = withoutDisplay(environment);
        EXPECT_EQ(outcome.status, failed) << (environment.empty() ? "" : environment.front());
        EXPECT_THAT(outcome.err, HasSubstr("The dialog needs a display"));
        EXPECT_EQ(outcome.out, "");
    }
}

TEST_F(SigilDeskCommand, TellsWrongUseFromFailure)
{
    EXPECT_EQ(command({}, {"no-such-command"}).status, wrongUse);
    EXPECT_EQ(command({}, {"list", "--no-such-option"}).status, wrongUse);
    EXPECT_EQ(command({}, {"list", "--types"}).status, wrongUse);
    EXPECT_EQ(command({}, {"show", SIGILDESK_PROGRAM}).status, failed) << "not a certificate";
    const Outcome help = command({}, {"--help"});
    EXPECT_EQ(help.status, done);
    EXPECT_THAT(help.out, HasSubstr("select"));
}

} // namespace
