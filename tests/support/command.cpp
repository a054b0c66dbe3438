// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "tests/support/command.h"

#include <cstdio>
#include <memory>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using File = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

File temporaryFile(const std::string& content = {})
{
    File file(std::tmpfile(), std::fclose);
    std::fwrite(content.data(), 1, content.size(), file.get());
    std::rewind(file.get());
    return file;
}

std::string contentOf(std::FILE* file)
{
    std::string content;
    std::rewind(file);
    char block[4096];
    for (std::size_t n; (n = std::fread(block, 1, sizeof block, file)) > 0;)
        content.append(block, n);
    return content;
}

[[noreturn]] void become(const std::vector<std::string>& arguments, std::FILE* in, std::FILE* out, std::FILE* err)
{
    std::vector<char*> argv;
    for (const std::string& argument : arguments)
        argv.push_back(const_cast<char*>(argument.c_str()));
    argv.push_back(nullptr);
    dup2(fileno(in), STDIN_FILENO);
    dup2(fileno(out), STDOUT_FILENO);
    dup2(fileno(err), STDERR_FILENO);
    execvp(argv[0], argv.data());
    _exit(127);
}

} // namespace

Outcome run(const std::vector<std::string>& arguments, const std::string& input)
{
    const File in = temporaryFile(input);
    const File out = temporaryFile();
    const File err = temporaryFile();
    const pid_t child = fork();
    if (child == 0)
        become(arguments, in.get(), out.get(), err.get());
    int status = 0;
    waitpid(child, &status, 0);
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, contentOf(out.get()), contentOf(err.get())};
}
