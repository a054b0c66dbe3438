// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "calls.h"

#include <sys/file.h>
#include <sys/wait.h>

#include <cstdio>

Calls calls{};

namespace {

template <class Function>
void find(Function*& function, const char* name)
{
    function = reinterpret_cast<Function*>(::dlsym(RTLD_NEXT, name));
}

Calls found()
{
    Calls all{};
    find(all.dlinfo, "dlinfo");
    find(all.dlopen, "dlopen");
    find(all.flock, "flock");
    find(all.fstat, "fstat");
    find(all.geteuid, "geteuid");
    find(all.link, "link");
    find(all.pipe2, "pipe2");
    find(all.renameat2, "renameat2");
    find(all.unlink, "unlink");
    find(all.waitpid, "waitpid");
    return all;
}

/** Found at the first call, which may come before this program's own objects are made. */
const Calls& systems()
{
    static const Calls all = found();
    return all;
}

template <class Function, class... Arguments>
auto call(Function* Calls::*function, Arguments... arguments)
{
    return (calls.*function ? calls.*function : systems().*function)(arguments...);
}

} // namespace

const Calls& systemCalls = systems();

extern "C" {

int dlinfo(void* handle, int request, void* answer) noexcept
{
    return call(&Calls::dlinfo, handle, request, answer);
}
void* dlopen(const char* file, int mode) noexcept { return call(&Calls::dlopen, file, mode); }
int flock(int descriptor, int operation) noexcept { return call(&Calls::flock, descriptor, operation); }
int fstat(int descriptor, struct stat* status) noexcept { return call(&Calls::fstat, descriptor, status); }
uid_t geteuid() noexcept { return call(&Calls::geteuid); }
int link(const char* from, const char* to) noexcept { return call(&Calls::link, from, to); }
int pipe2(int* ends, int flags) noexcept { return call(&Calls::pipe2, ends, flags); }
int renameat2(int from, const char* old, int to, const char* name, unsigned flags) noexcept
{
    return call(&Calls::renameat2, from, old, to, name, flags);
}
int unlink(const char* path) noexcept { return call(&Calls::unlink, path); }
pid_t waitpid(pid_t process, int* status, int options) { return call(&Calls::waitpid, process, status, options); }
}
