// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// What the command does to its process, and what it finds around itself.

#include "calls.h"
#include "own_process.h"
#include "tests/support/files.h"
#include "tools/sigildesk/command_line.h"
#include "tools/sigildesk/library_folder.h"
#include "tools/sigildesk/output.h"

#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <cstdio>
#include <exception>
#include <fcntl.h>
#include <filesystem>
#include <functional>
#include <new>
#include <pty.h>
#include <regex>
#include <stdexcept>
#include <string>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace {

bool leadsNowhere(int descriptor)
{
    struct stat found { };
    struct stat nowhere { };
    return fstat(descriptor, &found) == 0 && stat("/dev/null", &nowhere) == 0 && found.st_rdev == nowhere.st_rdev &&
        (fcntl(descriptor, F_GETFL) & O_ACCMODE) == O_RDONLY;
}

TEST(Process, HasAllThreeStandardDescriptors)
{
    for (const int closed : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        const Ended ended = inOwnProcess([&] {
            close(closed);
            host::prepareProcess();
            return leadsNowhere(closed) ? 0 : 2;
        });
        EXPECT_EQ(ended.code, 0) << closed;
    }
}

void throwThrough(const std::function<void()>& thrower) noexcept { thrower(); }

TEST(Process, IsAbortedByWhatNobodyForesawButNotByAShortage)
{
    const auto endOf = [](const std::function<void()>& thrower) {
        return inOwnProcess([&] {
            host::prepareProcess();
            throwThrough(thrower);
            return 0;
        });
    };
    EXPECT_EQ(endOf([] { throw std::runtime_error("unforeseen"); }).signal, SIGABRT);
    EXPECT_EQ(endOf([] { std::terminate(); }).signal, SIGABRT);
    const Ended shortage = endOf([] { throw std::bad_alloc(); });
    EXPECT_EQ(shortage.code, 3);
    EXPECT_EQ(shortage.err, "sigildesk: out of memory\n");
}

TEST(Process, FindsTheLibraryFolderAsTheLoaderDoes)
{
    EXPECT_EQ(host::installedFolder(), std::filesystem::canonical(SIGILDESK_LIBRARY_FOLDER));
}

TEST(Process, TakesTheUsualLibraryFolderWhenTheLoaderTellsNone)
{
    constexpr char usual[] = "/usr/local/lib/sigildesk";
    const auto none = [](const char* file, int mode) { return file ? systemCalls.dlopen(file, mode) : nullptr; };
    const auto noList = [](void* handle, int request, void* answer) {
        return request == RTLD_DI_SERINFO ? -1 : systemCalls.dlinfo(handle, request, answer);
    };
    calls.dlopen = none;
    EXPECT_EQ(host::installedFolder(), usual);
    calls = {};
    calls.dlinfo = fails<EINVAL>;
    EXPECT_EQ(host::installedFolder(), usual);
    calls.dlinfo = noList;
    EXPECT_EQ(host::installedFolder(), usual);
    calls = {};
}

TEST(Process, TellsNoProgressOfWhatIsSoonOver)
{
    int control = -1;
    int terminal = -1;
    ASSERT_EQ(openpty(&control, &terminal, nullptr, nullptr, nullptr), 0);
    const auto before = std::chrono::steady_clock::now();
    const Ended ended = inOwnProcess([&] {
        dup2(terminal, STDERR_FILENO);
        const host::Output output({});
        const host::Progress progress(output, {"Working ...", "Working ..."});
        return isatty(STDERR_FILENO) != 0 ? 0 : 1;
    });
    const bool soon = std::chrono::steady_clock::now() - before < std::chrono::milliseconds(500);
    EXPECT_EQ(ended.code, 0);
    ASSERT_EQ(write(terminal, "|", 1), 1); // the end of what there is to read
    std::string shown;
    for (char letter = 0; letter != '|'; shown += letter)
        ASSERT_EQ(read(control, &letter, 1), 1);
    EXPECT_TRUE(std::regex_match(shown, std::regex("(Working \\.\\.\\.\r +\r)?\\|"))) << shown;
    EXPECT_TRUE(!soon || shown == "|") << shown;
    close(control);
    close(terminal);
}

/** p11-kit has it for tests and declares it in none of its headers. */
using OverrideFiles = void(const char* systemConfig, const char* userConfig, const char* packageModules,
    const char* systemModules, const char* userModules);

TEST(Process, SaysThatThereIsNoToken)
{
    const TemporaryFolder work;
    const std::string config = work.write("pkcs11.conf", "user-config: none\n");
    const std::string nowhere = work.path("nowhere");
    for (const std::string json : {"", "--json"}) {
        const Ended ended = inOwnProcess([&] {
            void* kit = dlopen("libp11-kit.so.0", RTLD_LAZY);
            reinterpret_cast<OverrideFiles*>(dlsym(kit, "p11_kit_override_system_files"))(
                config.c_str(), nowhere.c_str(), nowhere.c_str(), nowhere.c_str(), nowhere.c_str());
            std::vector<std::string> words{"--folder", SIGILDESK_LIBRARY_FOLDER, "--language", "en", "tokens"};
            if (!json.empty())
                words.push_back(json);
            const Ended tokens = runOwn(words);
            std::fputs((tokens.out + tokens.err).c_str(), stdout);
            return tokens.code;
        });
        EXPECT_EQ(ended.code, 1);
        EXPECT_EQ(ended.out, json.empty() ? "No token found.\n" : "{\n  \"tokens\": []\n}\n");
    }
}

} // namespace
