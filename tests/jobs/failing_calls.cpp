// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "tests/jobs/failing_calls.h"

#include <spawn.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <cstddef>

// The linker sends every call of these functions in the test program here.
using Spawn = int(pid_t* process, const char* program, const posix_spawn_file_actions_t* actions,
    const posix_spawnattr_t* attributes, char* const* words, char* const* environment);
extern "C" int __real_fsync(int file);
extern "C" int __wrap_fsync(int file);
extern "C" Spawn __real_posix_spawn;
extern "C" Spawn __wrap_posix_spawn;
extern "C" ssize_t __real_read(int file, void* to, std::size_t size);
extern "C" ssize_t __wrap_read(int file, void* to, std::size_t size);
extern "C" ssize_t __real_send(int socket, const void* from, std::size_t size, int flags);
extern "C" ssize_t __wrap_send(int socket, const void* from, std::size_t size, int flags);

namespace {

std::string failing;
int errorOfIt = 0;
int timesLeft = 0;

bool fails(const char* name)
{
    if (timesLeft == 0 || failing != name)
        return false;
    --timesLeft;
    errno = errorOfIt;
    return true;
}

} // namespace

FailingCall::FailingCall(const std::string& name, int error, int times)
{
    failing = name;
    errorOfIt = error;
    timesLeft = times;
}

FailingCall::~FailingCall() { timesLeft = 0; }

bool FailingCall::haveFailed() const { return timesLeft == 0; }

extern "C" int __wrap_fsync(int file) { return fails("fsync") ? -1 : __real_fsync(file); }

extern "C" int __wrap_posix_spawn(pid_t* process, const char* program, const posix_spawn_file_actions_t* actions,
    const posix_spawnattr_t* attributes, char* const* words, char* const* environment)
{
    return fails("posix_spawn") ? errorOfIt
                                : __real_posix_spawn(process, program, actions, attributes, words, environment);
}

extern "C" ssize_t __wrap_read(int file, void* to, std::size_t size)
{
    return fails("read") ? -1 : __real_read(file, to, size);
}

extern "C" ssize_t __wrap_send(int socket, const void* from, std::size_t size, int flags)
{
    return fails("send") ? -1 : __real_send(socket, from, size, flags);
}
