// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "tests/support/traced.h"

#include <fcntl.h>
#include <sys/ptrace.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <stdexcept>

#ifndef __x86_64__
#error "the registers of a traced process are those of x86-64"
#endif

Traced::Traced(const std::function<void()>& work, int events)
    : m_process(fork())
{
    if (m_process == 0) {
        if (ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) != 0)
            _exit(1);
        static_cast<void>(raise(SIGSTOP));
        work();
        _exit(0);
    }
    wait();
    if (!WIFSTOPPED(m_status) ||
        ptrace(PTRACE_SETOPTIONS, m_process, nullptr, events | PTRACE_O_TRACEEXEC | PTRACE_O_EXITKILL) != 0)
        throw std::runtime_error("processes cannot be traced");
}

bool Traced::goOnTo(int event)
{
    int signal = 0;
    do {
        ptrace(PTRACE_CONT, m_process, nullptr, signal);
        wait();
        const bool isEvent = WIFSTOPPED(m_status) && m_status >> 16 != 0;
        signal = WIFSTOPPED(m_status) && !isEvent ? WSTOPSIG(m_status) : 0;
    } while (WIFSTOPPED(m_status) && m_status >> 8 != (SIGTRAP | event << 8));
    return WIFSTOPPED(m_status);
}

void Traced::finish()
{
    while (goOnTo(PTRACE_EVENT_STOP)) // which no process does that was not seized
        ;
}

void Traced::kill()
{
    ::kill(m_process, SIGKILL);
    wait();
}

user_regs_struct Traced::registers() const
{
    user_regs_struct found{};
    ptrace(PTRACE_GETREGS, m_process, nullptr, &found);
    return found;
}

void Traced::setRegisters(user_regs_struct& registers) const
{
    ptrace(PTRACE_SETREGS, m_process, nullptr, &registers);
}

int Traced::exitCode() const { return WIFEXITED(m_status) ? WEXITSTATUS(m_status) : -1; }

void Traced::wait() { waitpid(m_process, &m_status, 0); }

void become(const std::vector<std::string>& command)
{
    const int nothing = open("/dev/null", O_RDWR);
    for (int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        dup2(nothing, descriptor);
    setsid();
    std::vector<char*> words;
    words.reserve(command.size() + 1);
    for (const std::string& word : command)
        words.push_back(const_cast<char*>(word.c_str())); // the system only reads them
    words.push_back(nullptr);
    execv(words.front(), words.data());
    _exit(notStarted);
}
