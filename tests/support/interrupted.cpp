// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "tests/support/interrupted.h"

#include <fcntl.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/ptrace.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/user.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstddef>
#include <stdexcept>
#include <string>
#include <vector>

#ifndef __x86_64__
#error "the registers of a traced process are those of x86-64"
#endif

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

/** What the traced process tells of its end. */
struct Told {
    bool returned;
    int code;
};

void letTrace()
{
    if (ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) != 0)
        _exit(1);
    raise(SIGSTOP);
    if (!stopAtChangingCalls())
        _exit(1);
}

[[noreturn]] void runTraced(const std::function<int()>& operation, Told* told)
{
    letTrace();
    told->code = operation();
    told->returned = true;
    _exit(0);
}

constexpr int notStarted = 127;

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
    letTrace();
    execv(words.front(), words.data());
    _exit(notStarted);
}

class Traced {
public:
    explicit Traced(pid_t process)
        : m_process(process)
    {
        wait();
        if (!WIFSTOPPED(m_status) ||
            ptrace(PTRACE_SETOPTIONS, process, nullptr,
                PTRACE_O_TRACESECCOMP | PTRACE_O_TRACEEXEC | PTRACE_O_EXITKILL) != 0)
            throw std::runtime_error("processes cannot be traced");
    }

    /** Goes on to the next call that may change files. @return false when the process has ended */
    bool goOn()
    {
        constexpr int atCall = SIGTRAP | PTRACE_EVENT_SECCOMP << 8;
        int signal = 0;
        do {
            ptrace(PTRACE_CONT, m_process, nullptr, signal);
            wait();
            const bool isEvent = WIFSTOPPED(m_status) && m_status >> 16 != 0;
            signal = WIFSTOPPED(m_status) && !isEvent ? WSTOPSIG(m_status) : 0;
        } while (WIFSTOPPED(m_status) && m_status >> 8 != atCall);
        return WIFSTOPPED(m_status);
    }
    user_regs_struct registers() const
    {
        user_regs_struct found{};
        ptrace(PTRACE_GETREGS, m_process, nullptr, &found);
        return found;
    }
    void setRegisters(user_regs_struct& registers) const { ptrace(PTRACE_SETREGS, m_process, nullptr, &registers); }
    void kill()
    {
        ::kill(m_process, SIGKILL);
        wait();
    }
    bool hasOnDisk(unsigned long long file) const
    {
        struct stat status { };
        const std::string path = "/proc/" + std::to_string(m_process) + "/fd/" + std::to_string(file);
        if (stat(path.c_str(), &status) == 0)
            return S_ISREG(status.st_mode);
        return errno == EACCES && file > STDERR_FILENO; // a process that hides from others
    }
    /** What it has exited with; -1 when a signal ended it. */
    int exitCode() const { return WIFEXITED(m_status) ? WEXITSTATUS(m_status) : -1; }

private:
    void wait() { waitpid(m_process, &m_status, 0); }

    pid_t m_process;
    int m_status = 0;
};

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
        return process.hasOnDisk(registers.rdi);
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
    while (process.goOn()) {
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
    const pid_t child = fork();
    if (child == 0)
        runTraced(operation, told);
    Traced process(child);
    Ending ending = follow(process, misfortune);
    if (ending.finished && !told->returned)
        throw std::runtime_error("the operation crashed");
    ending.code = told->code;
    return ending;
}

Ending runWith(const Misfortune& misfortune, const std::vector<std::string>& command)
{
    const pid_t child = fork();
    if (child == 0)
        runTraced(command);
    Traced process(child);
    Ending ending = follow(process, misfortune);
    if (ending.finished && (process.exitCode() < 0 || process.exitCode() == notStarted))
        throw std::runtime_error("the program crashed, or could not be started");
    ending.code = ending.finished ? process.exitCode() : 0;
    return ending;
}
