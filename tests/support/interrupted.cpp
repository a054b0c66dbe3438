// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "tests/support/interrupted.h"

#include "tests/support/traced.h"

#include <fcntl.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/ptrace.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

/** System calls that may change files; changesFiles() tells what some of them change. */
constexpr unsigned changing[] = {SYS_open, SYS_openat, SYS_creat, SYS_write, SYS_pwrite64, SYS_writev, SYS_fsync,
    SYS_fdatasync, SYS_rename, SYS_renameat, SYS_renameat2, SYS_unlink, SYS_unlinkat, SYS_mkdir, SYS_mkdirat,
    SYS_rmdir, SYS_truncate, SYS_ftruncate, SYS_chmod, SYS_fchmod, SYS_fchmodat, SYS_link, SYS_symlink};

/** Has the process stop at these calls alone: to stop at every call takes the system many times as long. */
bool stopAtChangingCalls()
{
    std::vector<sock_filter> program{BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr))};
    for (unsigned call : changing) {
        program.push_back(BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, call, 0, 1));
        program.push_back(BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_TRACE));
    }
    program.push_back(BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW));
    const sock_fprog filter{static_cast<unsigned short>(program.size()), program.data()};
    return prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 && prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &filter) == 0;
}

void requireStops()
{
    if (!stopAtChangingCalls())
        _exit(notStarted);
}

/** What the traced process tells of its end. */
struct Told {
    bool returned;
    int code;
};

bool hasOnDisk(const Traced& process, unsigned long long file)
{
    struct stat status { };
    const std::string path = "/proc/" + std::to_string(process.id()) + "/fd/" + std::to_string(file);
    if (stat(path.c_str(), &status) == 0)
        return S_ISREG(status.st_mode);
    return errno == EACCES && file > STDERR_FILENO; // a process that hides from others
}

/** Opening changes files when it may write, writing when it is not into a pipe or to a terminal: a sanitizer's runtime asks
 *  by a pipe which memory may be read. */
bool changesFiles(const Traced& process)
{
    constexpr unsigned long long writing = O_WRONLY | O_RDWR | O_CREAT | O_TRUNC;
    const user_regs_struct registers = process.registers();
    switch (registers.orig_rax) {
    case SYS_openat:
        return (registers.rdx & writing) != 0;
    case SYS_open:
        return (registers.rsi & writing) != 0;
    case SYS_write:
    case SYS_pwrite64:
    case SYS_writev:
        return hasOnDisk(process, registers.rdi);
    default:
        return true;
    }
}

/** Has the call that the process is about to make fail. */
void failCall(const Traced& process, int error)
{
    constexpr unsigned long long noCall = ~0ULL;
    user_regs_struct registers = process.registers();
    registers.orig_rax = noCall;
    registers.rax = static_cast<unsigned long long>(-static_cast<long long>(error));
    process.setRegisters(registers);
}

/** Follows the process to its end. @return how it ended, but for what it returned */
Ending follow(Traced& process, const Misfortune& misfortune)
{
    Ending ending{false, 0, 0};
    while (process.goOnTo(PTRACE_EVENT_SECCOMP)) {
        if (!changesFiles(process))
            continue;
        ++ending.calls;
        const bool due = misfortune.call > 0 &&
            (ending.calls == misfortune.call || (misfortune.fromThereOn && ending.calls > misfortune.call));
        if (due && misfortune.error == 0) {
            process.kill();
            return ending;
        }
        if (due)
            failCall(process, misfortune.error);
    }
    ending.finished = true;
    return ending;
}

} // namespace

Ending runWith(const Misfortune& misfortune, const std::function<int()>& operation)
{
    static Told* const told =
        static_cast<Told*>(mmap(nullptr, sizeof(Told), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0));
    *told = {};
    Traced process(
        [&] {
            requireStops();
            told->code = operation();
            told->returned = true;
        },
        PTRACE_O_TRACESECCOMP);
    Ending ending = follow(process, misfortune);
    if (ending.finished && !told->returned)
        throw std::runtime_error("the operation crashed");
    ending.code = told->code;
    return ending;
}

Ending runWith(const Misfortune& misfortune, const std::vector<std::string>& command)
{
    Traced process(
        [&] {
            requireStops();
            become(command);
        },
        PTRACE_O_TRACESECCOMP);
    Ending ending = follow(process, misfortune);
    if (ending.finished && (process.exitCode() < 0 || process.exitCode() == notStarted))
        throw std::runtime_error("the program crashed, or could not be started");
    ending.code = ending.finished ? process.exitCode() : 0;
    return ending;
}
