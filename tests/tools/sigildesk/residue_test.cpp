// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// What the command leaves in its memory of the passwords, keys and numbers that it was handed: nothing. Each run is stopped
// when it is about to end, and all of its memory searched, what was released included.

#include "tests/support/sample_store.h"
#include "tests/tools/toolkit.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/ptrace.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <fstream>
#include <stdexcept>

namespace fs = std::filesystem;

namespace {

constexpr char password[] = "sample1234!";
constexpr char newPassword[] = "renewed-5678?-renewed";

/** A program that its parent follows. */
[[noreturn]] void runTraced(const std::vector<std::string>& command)
{
    const int nothing = open("/dev/null", O_RDWR);
    for (int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        dup2(nothing, descriptor);
    setsid();
    std::vector<char*> words;
    for (const std::string& word : command)
        words.push_back(const_cast<char*>(word.c_str())); // the system only reads them
    words.push_back(nullptr);
    ptrace(PTRACE_TRACEME, 0, nullptr, nullptr);
    execv(words.front(), words.data());
    _exit(127);
}

/** What its own memory holds that it may write to. */
std::string memoryOf(pid_t process)
{
    const std::string folder = "/proc/" + std::to_string(process);
    const int file = open((folder + "/mem").c_str(), O_RDONLY | O_CLOEXEC);
    std::ifstream mappings(folder + "/maps");
    std::string whole;
    for (std::string line; std::getline(mappings, line);) {
        unsigned long start = 0;
        unsigned long end = 0;
        if (line.find(" rw-p ") == std::string::npos || std::sscanf(line.c_str(), "%lx-%lx", &start, &end) != 2)
            continue;
        const std::size_t before = whole.size();
        whole.resize(before + (end - start));
        if (pread(file, &whole[before], end - start, static_cast<off_t>(start)) <= 0)
            throw std::runtime_error("cannot read " + line);
    }
    close(file);
    return whole;
}

/** The memory of a program that is about to end. Throws unless it ends with @p code. */
std::string memoryAtTheEnd(const std::vector<std::string>& command, int code)
{
    const pid_t child = fork();
    if (child == 0)
        runTraced(command);
    constexpr int ending = SIGTRAP | PTRACE_EVENT_EXIT << 8;
    int status = 0;
    waitpid(child, &status, 0);
    ptrace(PTRACE_SETOPTIONS, child, nullptr, PTRACE_O_TRACEEXIT | PTRACE_O_EXITKILL);
    for (int signal = 0; WIFSTOPPED(status) && status >> 8 != ending; signal = WSTOPSIG(status)) {
        ptrace(PTRACE_CONT, child, nullptr, signal);
        waitpid(child, &status, 0);
    }
    if (!WIFSTOPPED(status))
        throw std::runtime_error("the program cannot be followed");
    std::string memory = memoryOf(child);
    ptrace(PTRACE_CONT, child, nullptr, 0);
    waitpid(child, &status, 0);
    if (!WIFEXITED(status) || WEXITSTATUS(status) != code)
        throw std::runtime_error("the program ended with " + std::to_string(WEXITSTATUS(status)));
    return memory;
}

class Residue : public ::testing::Test {
protected:
    Residue()
        : m_sample({"--count", "1", "--families", "npki", "--pairs", "both", "--keys", "2", "--pfx"})
    {
        for (const auto& [name, content] : {std::pair<std::string, std::string>{"old", password},
                 {"new", newPassword}, {"wrong", "not-this-Pass9!"}, {"number", row().at("identity")}}) {
            work.write(name, content + "\n");
            fs::permissions(work.path(name), fs::perms::owner_read | fs::perms::owner_write);
        }
        work.write("text", "a text");
        fs::create_directory(work.path("disk"));
        const std::string plain = m_toolkit.decryptKey(readFile(row().at("signing_key")), password);
        hunt("key", plain);
        hunt("key-management key", m_toolkit.decryptKey(readFile(row().at("km_key")), password));
        m_hunted.push_back({"random value of the key", m_toolkit.randomOf(plain)});
        for (const char* secret : {"old", "new", "wrong", "number"})
            m_hunted.push_back(
                {secret, readFile(work.path(secret)).substr(0, readFile(work.path(secret)).size() - 1)});
    }

    const Certificate& row() const { return m_sample.certificates().front(); }

    /** Runs the command and looks for everything that is secret. */
    void expectNothingAfter(std::vector<std::string> arguments, int code = 0)
    {
        std::string words;
        for (const std::string& word : arguments)
            words += word + " ";
        SCOPED_TRACE(words);
        arguments.insert(arguments.begin(), {SIGILDESK_PROGRAM, "--folder", SIGILDESK_LIBRARY_FOLDER});
        const std::string memory = memoryAtTheEnd(arguments, code);
        EXPECT_NE(memory.find(arguments.at(3)), std::string::npos) << "the hunt does not look everywhere";
        for (const auto& [name, secret] : m_hunted) {
            ASSERT_FALSE(secret.empty()) << name;
            EXPECT_EQ(memory.find(secret), std::string::npos) << name;
        }
    }
    std::vector<std::string> with(std::vector<std::string> command, std::vector<std::string> more = {}) const
    {
        command.insert(command.end(), {"--password-file", work.path("old")});
        command.insert(command.end(), more.begin(), more.end());
        return command;
    }

    TemporaryFolder work;

private:
    /** The secret numbers of an RSA key stand in the last half of its bytes; those to be reckoned with lie backwards. */
    void hunt(const std::string& name, const std::string& key)
    {
        constexpr std::size_t length = 16;
        for (std::size_t at = key.size() / 2; at + length <= key.size(); at += length) {
            const std::string piece = key.substr(at, length);
            m_hunted.push_back({name + " at " + std::to_string(at), piece});
            m_hunted.push_back({name + " backwards at " + std::to_string(at), {piece.rbegin(), piece.rend()}});
        }
    }

    SampleStore m_sample;
    Toolkit m_toolkit;
    std::vector<std::pair<std::string, std::string>> m_hunted;
};

TEST_F(Residue, OfCommandsThatOpenKeys)
{
    const std::string certificate = row().at("signing_certificate");
    const std::vector<std::string> fresh{"--new-password-file", work.path("new")};
    expectNothingAfter(with({"unlock", certificate}));
    expectNothingAfter({"unlock", certificate, "--password-file", work.path("wrong")}, 1);
    expectNothingAfter(with({"unlock", certificate, "--out", work.path("key.pem")}, fresh));
    expectNothingAfter(with({"unlock", certificate, "--out", work.path("plain.pem"), "--plain"}));
    expectNothingAfter(with({"sign", certificate, work.path("text")}));
    expectNothingAfter(with({"sign", certificate, work.path("text"), "--raw"}));
    expectNothingAfter({"encrypt", work.path("text"), "--to", certificate});
    expectNothingAfter(with({"decrypt", certificate, work.path("text.p7e"), "--out", work.path("again")}));
    expectNothingAfter(with({"identity", certificate, "--identity-file", work.path("number")}));
    expectNothingAfter(with({"export", certificate, "--out", work.path("mine.pfx")}, fresh));
    expectNothingAfter(with({"import", row().at("pfx"), "--to", work.path("disk")}));
    expectNothingAfter({"copy", certificate, "--to", work.path("disk"), "--force"});
    expectNothingAfter(with({"passwd", certificate}, fresh));
}

} // namespace
