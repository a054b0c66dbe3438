// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "unfinished.h"

#include <array>
#include <atomic>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <filesystem>
#include <string_view>
#include <unistd.h>

namespace host {

namespace {

/** For a handler, which may neither allocate nor lock. */
std::array<char, PATH_MAX> folder{};
std::array<char, NAME_MAX + 1> beginning{};
volatile std::sig_atomic_t there = 0;

constexpr std::array<int, 4> endings{SIGINT, SIGTERM, SIGHUP, SIGQUIT};

/** Removes the files with calls that a handler may make: readdir() is none. */
void removeAll()
{
    alignas(dirent64) std::array<char, 4096> names{};
    const int directory = open(folder.data(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    for (ssize_t size = 0; (size = getdents64(directory, names.data(), names.size())) > 0;)
        for (ssize_t at = 0; at < size;) {
            const auto* entry = reinterpret_cast<const dirent64*>(names.data() + at);
            if (std::strncmp(entry->d_name, beginning.data(), std::strlen(beginning.data())) == 0)
                unlinkat(directory, entry->d_name, 0);
            at += entry->d_reclen;
        }
    close(directory);
}

extern "C" void removeAndEnd(int number)
{
    if (there != 0)
        removeAll();
    static_cast<void>(raise(number)); // it has its usual effect now, when the handler has returned
}

template <std::size_t N>
void store(std::array<char, N>& text, std::string_view value)
{
    text[value.copy(text.data(), N - 1)] = '\0';
}

/** Where nobody else has a say in a signal: one that is ignored stays so. */
void handleEndings()
{
    struct sigaction action { };
    action.sa_handler = removeAndEnd;
    action.sa_flags = static_cast<int>(SA_RESETHAND);
    for (const int number : endings) {
        struct sigaction before { };
        if (sigaction(number, nullptr, &before) == 0 && before.sa_handler == SIG_DFL)
            sigaction(number, &action, nullptr);
    }
}

} // namespace

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
    const std::filesystem::path whole = path;
    store(folder, whole.has_parent_path() ? whole.parent_path().string() : ".");
    store(beginning, whole.filename().string());
    std::atomic_signal_fence(std::memory_order_release);
    there = 1;
    handleEndings();
}

Unfinished::~Unfinished() { there = 0; }

} // namespace host
