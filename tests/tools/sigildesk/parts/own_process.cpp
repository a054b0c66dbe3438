// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "own_process.h"

#include "calls.h"
#include "jobs/failure.h"
#include "tests/support/files.h"
#include "tools/sigildesk/command_line.h"

#include <nlohmann/json.hpp>

#include <cstdio>
#include <fcntl.h>
#include <iostream>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

std::vector<char*> pointers(std::vector<std::string>& words)
{
    words.insert(words.begin(), "sigildesk");
    std::vector<char*> all;
    for (std::string& word : words)
        all.push_back(word.data());
    return all;
}

host::Arguments parsed(std::vector<std::string> words)
{
    std::vector<char*> all = pointers(words);
    return host::parse(static_cast<int>(all.size()), all.data());
}

void lead(int descriptor, const std::string& file)
{
    const int opened = open(file.c_str(), O_WRONLY | O_CREAT | O_APPEND, 0600);
    dup2(opened, descriptor);
    close(opened);
}

} // namespace

Typed::Typed(std::vector<std::string> words)
    : arguments(parsed(std::move(words)))
    , output({})
    , session{{SIGILDESK_LIBRARY_FOLDER, SIGIL_TOOLKIT_MAKER, host::Language::English}, arguments, output}
{
}

Ended inOwnProcess(const std::function<int()>& piece)
{
    const TemporaryFolder folder;
    std::cout.flush();
    std::fflush(stdout);
    const pid_t process = fork();
    if (process == 0) {
        constexpr rlimit noCore{0, 0};
        setrlimit(RLIMIT_CORE, &noCore);
        lead(STDOUT_FILENO, folder.path("out"));
        lead(STDERR_FILENO, folder.path("err"));
        const int code = piece();
        std::fflush(stdout);
        _exit(code);
    }
    int status = 0;
    systemCalls.waitpid(process, &status, 0);
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, WIFSIGNALED(status) ? WTERMSIG(status) : 0,
        readFile(folder.path("out")), readFile(folder.path("err"))};
}

std::string failureOf(const std::function<void()>& piece)
{
    try {
        piece();
        return {};
    } catch (const host::Failure& failure) {
        return failure.json(host::Language::English).at("name").get<std::string>() + ": " +
            failure.message(host::Language::English);
    }
}

Ended runOwn(std::vector<std::string> words)
{
    return inOwnProcess([&] {
        std::vector<char*> all = pointers(words);
        host::prepareProcess();
        return host::runCommandLine(static_cast<int>(all.size()), all.data());
    });
}
