// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Child processes that are followed: stopped at what they do, looked into, killed.
 */
#pragma once

#include <sys/types.h>
#include <sys/user.h>

#include <functional>
#include <string>
#include <vector>

/** Ends with the process that follows it. */
class Traced {
public:
    /** Starts @p work in a child of its own, which waits before it begins. Throws std::runtime_error where processes cannot
     *  be traced.
     *  @param events  PTRACE_O_TRACE…, at which it stops */
    Traced(const std::function<void()>& work, int events);

    /** Goes on to the next stop at @p event, PTRACE_EVENT_…. @return false when the process has ended */
    bool goOnTo(int event);
    /** Goes on to its end. */
    void finish();
    void kill();

    pid_t id() const { return m_process; }
    user_regs_struct registers() const;
    void setRegisters(user_regs_struct& registers) const;
    /** What it has exited with; -1 when a signal ended it. */
    int exitCode() const;

private:
    void wait();

    pid_t m_process;
    int m_status = 0;
};

/** What a program exits with that could not be started. */
constexpr int notStarted = 127;

/** Turns the process into a program, without a terminal, with its output lost. */
[[noreturn]] void become(const std::vector<std::string>& command);
