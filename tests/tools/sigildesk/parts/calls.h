// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Calls of the system that the command makes: this program has functions of their names, which do what a test wants. Without
 *  a wish they do what the system's do.
 */
#pragma once

#include <cerrno>
#include <dlfcn.h>
#include <sys/stat.h>
#include <unistd.h>

struct Calls {
    int (*dlinfo)(void*, int, void*);
    void* (*dlopen)(const char*, int);
    int (*flock)(int, int);
    int (*fstat)(int, struct stat*);
    uid_t (*geteuid)();
    int (*link)(const char*, const char*);
    int (*pipe2)(int*, int);
    int (*renameat2)(int, const char*, int, const char*, unsigned);
    int (*unlink)(const char*);
    pid_t (*waitpid)(pid_t, int*, int);
};

/** What a test wants. */
extern Calls calls;
/** What the system has. */
extern const Calls& systemCalls;

/** A call that fails in this way. */
template <int error, class... Arguments>
int fails(Arguments...)
{
    errno = error;
    return -1;
}
