// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "unfinished.h"

#include <array>
#include <atomic>
#include <cerrno>
#include <climits>
#include <csignal>
#include <dirent.h>
#include <fcntl.h>
#include <unistd.h>

namespace host {

namespace {

/** For a handler, which may neither allocate nor lock. */
std::array<char, PATH_MAX> folder{};
volatile std::sig_atomic_t there = 0;

constexpr std::array<int, 4> endings{SIGINT, SIGTERM, SIGHUP, SIGQUIT};

void removeFolder()
{
    const int directory = open(folder.data(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    removeFilesIn(directory);
    close(directory);
    rmdir(folder.data());
}

extern "C" void removeAndEnd(int number)
{
    removeUnfinished();
    static_cast<void>(raise(number)); // it has its usual effect now, when the handler has returned
}

/** Where nobody else has a say in a signal: one that is ignored stays so. */
void handleEndings()
{
    struct sigaction action { };
    action.sa_handler = removeAndEnd;
    action.sa_flags = static_cast<int>(SA_RESETHAND);
    for (const int number : endings) {
        struct sigaction before { };
        sigaction(number, nullptr, &before);
        if (before.sa_handler == SIG_DFL)
            sigaction(number, &action, nullptr);
    }
}

} // namespace

void removeUnfinished()
{
    if (there != 0)
        removeFolder();
}

// readdir() is no call that a handler may make.
void removeFilesIn(int directory)
{
    alignas(dirent64) std::array<char, 4096> names{};
    lseek(directory, 0, SEEK_SET);
    for (ssize_t size = 0; (size = getdents64(directory, names.data(), names.size())) > 0;)
        for (ssize_t at = 0; at < size;) {
            const auto* entry = reinterpret_cast<const dirent64*>(names.data() + at);
            unlinkat(directory, entry->d_name, 0); // refuses "." and ".."
            at += entry->d_reclen;
        }
}

EndingsWait::EndingsWait()
{
    sigset_t all;
    sigemptyset(&all);
    for (const int number : endings)
        sigaddset(&all, number);
    sigprocmask(SIG_BLOCK, &all, &m_before);
}

EndingsWait::~EndingsWait() { sigprocmask(SIG_SETMASK, &m_before, nullptr); }

Unfinished::Unfinished(const std::string& path)
{
    folder[path.copy(folder.data(), folder.size() - 1)] = '\0';
    std::atomic_signal_fence(std::memory_order_release);
    there = 1;
    handleEndings();
}

Unfinished::~Unfinished() { there = 0; }

} // namespace host
