// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// All libraries of the process are to find what is defined here.
#pragma GCC visibility push(default)

#include "tests/torture/events.h"

#include "tests/torture/live_blocks.h"
#include "tests/torture/own_code.h"
#include "tests/torture/toolkit_calls.h"

#include <dirent.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <netdb.h>
#include <pthread.h>
#include <sys/mman.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <new>
#include <utility>

// glibc's own allocator goes on under these names.
extern "C" {
void* __libc_malloc(std::size_t); // NOLINT(bugprone-reserved-identifier)
void* __libc_calloc(std::size_t, std::size_t);
void* __libc_realloc(void*, std::size_t);
void* __libc_memalign(std::size_t, std::size_t);
void __libc_free(void*);
}

namespace torture {

void (*onFault)(const void* site) = nullptr;
void (*onEvent)(Kind kind, long number) = nullptr;

namespace {

bool watching = false;
pthread_t watchedThread;
Fault fault;
Counts seen{};
bool (*siteCounts)(const void* site) = nullptr;

using Find = void* (*)(void*, const char*);

/** The C library's dlsym(), which the one of this file stands before. */
Find finder()
{
    for (const char* version : {"GLIBC_2.34", "GLIBC_2.2.5"})
        if (void* const found = dlvsym(RTLD_NEXT, "dlsym", version))
            return reinterpret_cast<Find>(found);
    std::abort();
}

/** The definition that the one of this file stands before. */
void* next(const char* name)
{
    static const Find find = finder();
    return find(RTLD_NEXT, name);
}

int errorOf(Kind kind) { return kind == Kind::Memory ? ENOMEM : fault.error; }

bool isCounted(const void* site)
{
    if (!siteCounts || !site)
        return true;
    const Pause pause;
    return siteCounts(site);
}

/** Whether no event of a kind can fail any more, so that nobody needs their number. */
bool isOver(Kind kind)
{
    const bool met = seen[static_cast<std::size_t>(kind)] > fault.number;
    return fault.number >= 0 && (kind != fault.kind || (met && !fault.lasting));
}

bool isFile(int descriptor)
{
    struct stat status { };
    return fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode);
}

} // namespace

bool fails(Kind kind, const void* site)
{
    if (!watching || pthread_equal(watchedThread, pthread_self()) == 0 || isOver(kind) || !isCounted(site))
        return false;
    const long number = seen[static_cast<std::size_t>(kind)]++;
    if (onEvent && fault.number < 0) {
        const Pause pause;
        onEvent(kind, number);
    }
    const bool met = kind == fault.kind && number == fault.number;
    if (met && onFault) {
        const Pause pause;
        onFault(kind == Kind::Memory ? site : nullptr);
    }
    const bool failing = met || (kind == fault.kind && fault.lasting && fault.number >= 0 && number > fault.number);
    if (failing)
        errno = errorOf(kind);
    return failing;
}

void watch(const Fault& theFault)
{
    fault = theFault;
    seen = {};
    watchedThread = pthread_self();
    watching = true;
}

void countOnly(bool (*counts)(const void* site)) { siteCounts = counts; }

Counts stopWatching()
{
    watching = false;
    return seen;
}

Pause::Pause()
    : m_watching(std::exchange(watching, false))
{
}
Pause::~Pause() { watching = m_watching; }

namespace {

/** Memory for the code at @p site, as @p take gives it. */
template <class Take>
void* allocate(const void* site, Take take)
{
    return fails(Kind::Memory, site) ? nullptr : noted(take(), site);
}

void* allocateOrThrow(const void* site, std::size_t size)
{
    void* const memory = allocate(site, [=] { return __libc_malloc(size); });
    if (!memory)
        throw std::bad_alloc();
    return memory;
}

} // namespace
} // namespace torture

using namespace torture;

// Memory

extern "C" void* malloc(std::size_t size)
{
    return allocate(__builtin_return_address(0), [=] { return __libc_malloc(size); });
}
extern "C" void* calloc(std::size_t count, std::size_t size)
{
    return allocate(__builtin_return_address(0), [=] { return __libc_calloc(count, size); });
}
extern "C" void* realloc(void* memory, std::size_t size)
{
    return allocate(__builtin_return_address(0), [=] {
        forget(memory);
        return __libc_realloc(memory, size);
    });
}
extern "C" void* aligned_alloc(std::size_t alignment, std::size_t size)
{
    return allocate(__builtin_return_address(0), [=] { return __libc_memalign(alignment, size); });
}
extern "C" int posix_memalign(void** memory, std::size_t alignment, std::size_t size)
{
    void* const taken = allocate(__builtin_return_address(0), [=] { return __libc_memalign(alignment, size); });
    if (taken)
        *memory = taken;
    return taken ? 0 : ENOMEM;
}
extern "C" void free(void* memory)
{
    forget(memory);
    __libc_free(memory);
}

void* operator new(std::size_t size) { return allocateOrThrow(__builtin_return_address(0), size); }
void* operator new[](std::size_t size) { return allocateOrThrow(__builtin_return_address(0), size); }
void* operator new(std::size_t size, const std::nothrow_t&) noexcept
{
    return allocate(__builtin_return_address(0), [=] { return __libc_malloc(size); });
}
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept
{
    return allocate(__builtin_return_address(0), [=] { return __libc_malloc(size); });
}
void operator delete(void* memory) noexcept { free(memory); }
void operator delete(void* memory, std::size_t) noexcept { free(memory); }
void operator delete[](void* memory) noexcept { free(memory); }
void operator delete[](void* memory, std::size_t) noexcept { free(memory); }

// Calls that fail in the same way: an event of a kind, or what the C library makes of the call.

// NOLINTBEGIN(bugprone-macro-parentheses): these are types, names and lists of parameters
#define CAN_FAIL_IF(condition, kind, failure, result, name, parameters, arguments)                                 \
    extern "C" result name parameters                                                                              \
    {                                                                                                              \
        static const auto following = reinterpret_cast<result(*) parameters>(next(#name));                         \
        return (condition) && fails(kind, __builtin_return_address(0)) ? (failure) : following arguments;          \
    }
#define CAN_FAIL(kind, failure, result, name, parameters, arguments)                                               \
    CAN_FAIL_IF(true, kind, failure, result, name, parameters, arguments)
#define FILE_CALL(name, parameters, arguments) CAN_FAIL(Kind::File, -1, int, name, parameters, arguments)
// NOLINTEND(bugprone-macro-parentheses)

CAN_FAIL_IF((flags & MAP_ANONYMOUS) != 0, Kind::Memory, MAP_FAILED, void*, mmap,
    (void* at, std::size_t size, int protection, int flags, int descriptor, off_t offset),
    (at, size, protection, flags, descriptor, offset))

// Files. What is none (pipes, terminals, what wakes an event loop) does not fail.

namespace {

/** The mode that follows the flags of an opening call, when they say so. */
mode_t modeBehind(int flags, std::va_list list)
{
    return (flags & (O_CREAT | __O_TMPFILE)) != 0 ? va_arg(list, mode_t) : 0;
}

} // namespace

// NOLINTBEGIN(cert-dcl50-cpp): so they are declared
#define OPENING_CALL(name, parameters, arguments, last)                                                            \
    extern "C" int name parameters                                                                                 \
    {                                                                                                              \
        std::va_list list;                                                                                         \
        va_start(list, last);                                                                                      \
        const mode_t mode = modeBehind(last, list);                                                                \
        va_end(list);                                                                                              \
        static const auto following = reinterpret_cast<int(*) parameters>(next(#name));                            \
        return fails(Kind::File, __builtin_return_address(0)) ? -1 : following arguments;                          \
    }
OPENING_CALL(open, (const char* path, int flags, ...), (path, flags, mode), flags)
OPENING_CALL(open64, (const char* path, int flags, ...), (path, flags, mode), flags)
OPENING_CALL(openat, (int folder, const char* path, int flags, ...), (folder, path, flags, mode), flags)
OPENING_CALL(openat64, (int folder, const char* path, int flags, ...), (folder, path, flags, mode), flags)
// NOLINTEND(cert-dcl50-cpp)

FILE_CALL(mkostemp, (char* path, int flags), (path, flags))
FILE_CALL(memfd_create, (const char* name, unsigned flags) noexcept, (name, flags))
CAN_FAIL(Kind::File, nullptr, std::FILE*, fopen, (const char* path, const char* mode), (path, mode))
CAN_FAIL(Kind::File, nullptr, std::FILE*, fopen64, (const char* path, const char* mode), (path, mode))
CAN_FAIL(Kind::File, 0, std::size_t, fread, (void* room, std::size_t size, std::size_t count, std::FILE* file),
    (room, size, count, file))
CAN_FAIL_IF(isFile(fileno(file)), Kind::File, 0, std::size_t, fwrite,
    (const void* bytes, std::size_t size, std::size_t count, std::FILE* file), (bytes, size, count, file))
CAN_FAIL_IF(isFile(descriptor), Kind::File, -1, ssize_t, read, (int descriptor, void* room, std::size_t size),
    (descriptor, room, size))
CAN_FAIL_IF(isFile(descriptor), Kind::File, -1, ssize_t, write,
    (int descriptor, const void* bytes, std::size_t size), (descriptor, bytes, size))
CAN_FAIL(Kind::File, -1, ssize_t, pread, (int descriptor, void* room, std::size_t size, off_t at),
    (descriptor, room, size, at))
CAN_FAIL(Kind::File, -1, ssize_t, pread64, (int descriptor, void* room, std::size_t size, off64_t at),
    (descriptor, room, size, at))
FILE_CALL(fsync, (int descriptor), (descriptor))
FILE_CALL(ftruncate, (int descriptor, off_t size) noexcept, (descriptor, size))
FILE_CALL(stat, (const char* path, struct stat* status) noexcept, (path, status))
FILE_CALL(lstat, (const char* path, struct stat* status) noexcept, (path, status))
FILE_CALL(stat64, (const char* path, struct stat64* status) noexcept, (path, status))
FILE_CALL(lstat64, (const char* path, struct stat64* status) noexcept, (path, status))
FILE_CALL(
    fstatat, (int folder, const char* path, struct stat* status, int flags) noexcept, (folder, path, status, flags))
FILE_CALL(fstatat64, (int folder, const char* path, struct stat64* status, int flags) noexcept,
    (folder, path, status, flags))
FILE_CALL(access, (const char* path, int mode) noexcept, (path, mode))
FILE_CALL(rename, (const char* from, const char* to) noexcept, (from, to))
FILE_CALL(renameat2, (int fromFolder, const char* from, int toFolder, const char* to, unsigned flags) noexcept,
    (fromFolder, from, toFolder, to, flags))
FILE_CALL(link, (const char* from, const char* to) noexcept, (from, to))
FILE_CALL(unlink, (const char* path) noexcept, (path))
FILE_CALL(unlinkat, (int folder, const char* path, int flags) noexcept, (folder, path, flags))
FILE_CALL(remove, (const char* path) noexcept, (path))
FILE_CALL(mkdir, (const char* path, mode_t mode) noexcept, (path, mode))
FILE_CALL(rmdir, (const char* path) noexcept, (path))
FILE_CALL(chmod, (const char* path, mode_t mode) noexcept, (path, mode))
FILE_CALL(fchmod, (int descriptor, mode_t mode) noexcept, (descriptor, mode))
CAN_FAIL(Kind::File, nullptr, DIR*, opendir, (const char* path), (path))
CAN_FAIL(Kind::File, nullptr, DIR*, fdopendir, (int folder), (folder))
CAN_FAIL(Kind::File, nullptr, dirent*, readdir, (DIR * folder), (folder))
CAN_FAIL(Kind::File, nullptr, dirent64*, readdir64, (DIR * folder), (folder))
CAN_FAIL(Kind::File, nullptr, char*, realpath, (const char* path, char* room) noexcept, (path, room))
CAN_FAIL(Kind::File, -1, ssize_t, readlink, (const char* path, char* room, std::size_t size) noexcept,
    (path, room, size))

// Modules

extern "C" void* dlopen(const char* file, int flags) noexcept
{
    static const auto following = reinterpret_cast<decltype(&dlopen)>(next("dlopen"));
    void* const module = fails(Kind::Loader, __builtin_return_address(0)) ? nullptr : following(file, flags);
    findOwnCode();
    return module;
}
extern "C" void* dlsym(void* module, const char* name) noexcept
{
    static const Find following = finder();
    const bool isMissing = !givesBack(name) && fails(Kind::Loader, __builtin_return_address(0));
    return isMissing ? nullptr : watchedCall(name, following(module, name));
}

// The network

CAN_FAIL(Kind::Network, -1, int, socket, (int domain, int type, int protocol) noexcept, (domain, type, protocol))
CAN_FAIL(Kind::Network, -1, int, connect, (int socket, const sockaddr* address, socklen_t length),
    (socket, address, length))
CAN_FAIL(Kind::Network, -1, ssize_t, send, (int socket, const void* bytes, std::size_t size, int flags),
    (socket, bytes, size, flags))
CAN_FAIL(Kind::Network, -1, ssize_t, recv, (int socket, void* room, std::size_t size, int flags),
    (socket, room, size, flags))
CAN_FAIL(Kind::Network, EAI_FAIL, int, getaddrinfo,
    (const char* host, const char* service, const addrinfo* hints, addrinfo** found), (host, service, hints, found))
