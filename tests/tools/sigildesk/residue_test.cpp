// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// What the command leaves in its memory and its registers of the passwords, keys and numbers that it was handed: nothing. Each run
// is stopped when it is about to end, and all that a core would hold is searched.

#include "tests/support/traced.h"
#include "tests/tools/secret_store.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include <sys/ptrace.h>

namespace fs = std::filesystem;

namespace {

/** With functions bound when they are called first, and when the program starts. */
class Residue : public testing::TestWithParam<const char*> {
protected:
    static void SetUpTestSuite() { store = std::make_unique<SecretStore>(); }
    static void TearDownTestSuite() { store.reset(); }

    Residue()
    {
        fs::copy(store->home(), work.path("home"), fs::copy_options::recursive);
        for (const auto& file : fs::recursive_directory_iterator(work.path("home"))) {
            if (file.path().filename() == "signCert.der")
                certificate = file.path();
            if (file.path().extension() == ".pfx")
                pfx = file.path();
        }
        work.write("text", "a text");
        fs::create_directory(work.path("disk"));
    }

    /** Runs the command and looks for everything that is secret. */
    void expectNothingAfter(std::vector<std::string> arguments, int code = 0)
    {
        std::string words;
        for (const std::string& word : arguments)
            words += word + " ";
        SCOPED_TRACE(words);
        arguments.insert(arguments.begin(), {SIGILDESK_PROGRAM, "--folder", SIGILDESK_LIBRARY_FOLDER});
        Traced process(
            [&] {
                setenv("LD_BIND_NOW", GetParam(), 1);
                become(arguments);
            },
            PTRACE_O_TRACEEXIT);
        ASSERT_TRUE(process.goOnTo(PTRACE_EVENT_EXIT));
        const std::string found = hunt.foundIn(process.id());
        SecretHunt known{{"what it was called with", arguments.at(2)}};
        EXPECT_NE(known.foundIn(process.id()), "") << "the hunt does not look everywhere";
        process.finish();
        EXPECT_EQ(process.exitCode(), code);
        EXPECT_EQ(found, "");
    }
    std::vector<std::string> with(std::vector<std::string> command, std::vector<std::string> more = {}) const
    {
        command.insert(command.end(), {"--password-file", store->path("password")});
        command.insert(command.end(), more.begin(), more.end());
        return command;
    }

    static std::unique_ptr<SecretStore> store;
    TemporaryFolder work;
    std::string certificate;
    std::string pfx;

private:
    SecretHunt hunt = store->hunt();
};
std::unique_ptr<SecretStore> Residue::store;

std::string bindingOf(const testing::TestParamInfo<const char*>& info)
{
    return *info.param ? "BoundAtOnce" : "BoundLazily";
}

} // namespace

INSTANTIATE_TEST_SUITE_P(Bindings, Residue, testing::Values("", "1"), bindingOf);

TEST_P(Residue, OfCommandsThatOpenKeys)
{
    const std::vector<std::string> fresh{"--new-password-file", store->path("new")};
    expectNothingAfter(with({"unlock", certificate}));
    expectNothingAfter({"unlock", certificate, "--password-file", store->path("wrong")}, 1);
    expectNothingAfter(with({"unlock", certificate, "--out", work.path("key.pem")}, fresh));
    expectNothingAfter(with({"unlock", certificate, "--out", work.path("plain.pem"), "--plain"}));
    expectNothingAfter(with({"sign", certificate, work.path("text")}));
    expectNothingAfter(with({"sign", certificate, work.path("text"), "--raw"}));
    expectNothingAfter({"encrypt", work.path("text"), "--to", certificate});
    expectNothingAfter(with({"decrypt", certificate, work.path("text.p7e"), "--out", work.path("again")}));
    expectNothingAfter(with({"identity", certificate, "--identity-file", store->path("identity")}));
    expectNothingAfter(with({"export", certificate, "--out", work.path("mine.pfx")}, fresh));
    expectNothingAfter(with({"import", pfx, "--to", work.path("disk")}));
    expectNothingAfter({"copy", certificate, "--to", work.path("disk"), "--force"});
    expectNothingAfter(with({"passwd", certificate}, fresh));
}
