// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "tests/doctor/refusal.h"

#include "doctor/file_facts.h"

#include <dirent.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <string>

// The linker sends every such call of the test program here.
extern "C" DIR* __real_opendir(const char* path);
extern "C" DIR* __wrap_opendir(const char* path);
extern "C" int __real_lstat(const char* path, struct stat* status);
extern "C" int __wrap_lstat(const char* path, struct stat* status);
extern "C" int __real_faccessat(int folder, const char* path, int mode, int how);
extern "C" int __wrap_faccessat(int folder, const char* path, int mode, int how);

namespace {

struct Refused {
    RefusedCall call = RefusedCall::None;
    std::string path; ///< with a "/" at its end
    int error = 0;
};

Refused refused;

/** Sets errno when the call is to fail. */
bool isRefused(RefusedCall call, const char* path)
{
    if (call != refused.call || sigil::plainPath(std::string(path) + "/") != refused.path)
        return false;
    errno = refused.error;
    return true;
}

} // namespace

Refusal::Refusal(RefusedCall call, const std::string& path, int error)
{
    refused = {call, sigil::plainPath(path + "/"), error};
}

Refusal::~Refusal() { refused = {}; }

extern "C" DIR* __wrap_opendir(const char* path)
{
    return isRefused(RefusedCall::OpenFolder, path) ? nullptr : __real_opendir(path);
}

extern "C" int __wrap_lstat(const char* path, struct stat* status)
{
    return isRefused(RefusedCall::Status, path) ? -1 : __real_lstat(path, status);
}

extern "C" int __wrap_faccessat(int folder, const char* path, int mode, int how)
{
    return isRefused(RefusedCall::Access, path) ? -1 : __real_faccessat(folder, path, mode, how);
}
