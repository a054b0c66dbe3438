// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// The command without memory from some allocation on: it ends with the code of a failure, also where a library
// takes memory in what promises not to throw.

#include "tools/sigildesk/command_line.h"

#include <gtest/gtest.h>

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <new>

namespace {

long allocationsLeft = std::numeric_limits<long>::max();

/** Runs a command in a process of its own, which has memory for so many allocations.
 *  @return its status, as waitpid() tells it */
int statusWith(long allocations)
{
    const pid_t process = fork();
    if (process == 0) {
        constexpr rlimit noCore{0, 0};
        setrlimit(RLIMIT_CORE, &noCore);
        const bool isSilent = std::freopen("/dev/null", "w", stdout) && std::freopen("/dev/null", "w", stderr);
        char program[] = "sigildesk", json[] = "--json", folder[] = "--folder", command[] = "codes",
             code[] = "1113";
        char longName[] = "/a word that is copied when it is compared";
        std::array<char*, 7> words{program, json, folder, longName, command, code, nullptr};
        host::prepareProcess();
        allocationsLeft = allocations;
        _exit(isSilent ? host::runCommandLine(static_cast<int>(words.size()) - 1, words.data()) : -1);
    }
    int status = 0;
    return waitpid(process, &status, 0) == process ? status : -1;
}

TEST(Shortage, EndsTheCommandWithTheCodeOfAFailure)
{
    constexpr int failed = 3;
    constexpr long stride = 5; // a library's broken promises come in runs that are longer
    long allocations = 0;
    for (int status = 0; (status = statusWith(allocations)) != 0; allocations += stride) {
        ASSERT_TRUE(WIFEXITED(status)) << "signal " << WTERMSIG(status) << " after " << allocations;
        ASSERT_EQ(WEXITSTATUS(status), failed) << "after " << allocations;
    }
    EXPECT_GT(allocations, 100);
}

} // namespace

// All forms, because a checking runtime has forms of its own that would not mix with these.
void* operator new(std::size_t size, const std::nothrow_t&) noexcept
{
    return allocationsLeft-- > 0 ? std::malloc(size ? size : 1) : nullptr;
}
void* operator new(std::size_t size)
{
    void* const memory = operator new(size, std::nothrow);
    return memory ? memory : throw std::bad_alloc();
}
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept { return operator new(size, std::nothrow); }
void* operator new[](std::size_t size) { return operator new(size); }
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }
void operator delete[](void* memory) noexcept { std::free(memory); }
void operator delete[](void* memory, std::size_t) noexcept { std::free(memory); }
