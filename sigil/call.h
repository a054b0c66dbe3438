// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  The way into the library from C: arguments are looked at, exceptions become codes.
 */
#pragma once

#include "foundation/secret.h"
#include "sigil/session.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <string_view>

namespace host {

/** The code of the exception that is being handled; what it says becomes the session's error text. */
int codeOfException(SigilSession* session) noexcept;

/** Runs a job that throws what goes wrong; nothing of the secrets that it copied is left in registers and on the stack.
 *  @return a result of the library */
template <class Job>
int run(SigilSession* session, Job job) noexcept
{
    if (!session)
        return SIGIL_NO_HANDLE;
    const sigil::TracesCleared cleared;
    try {
        session->error.clear();
        job(*session);
        return SIGIL_SUCCESS;
    } catch (...) {
        return codeOfException(session);
    }
}

/** Throws Failure with this code. */
[[noreturn]] void refuse(int code, const std::string& detail);

/** Throws Failure (1001) that names the argument when it is not as it has to be. */
inline void need(bool good, const char* argument)
{
    if (!good)
        refuse(SIGIL_BAD_ARGUMENT, argument);
}

/** Bytes of the caller, of which there must be some. Throws Failure (1001). */
std::string_view bytesOf(const void* data, std::size_t size, const char* argument);

/** A sum of enum SigilFamily, or 0. Throws Failure (1001). */
inline void needFamilies(int families)
{
    constexpr int all = SIGIL_FAMILY_GPKI | SIGIL_FAMILY_NPKI | SIGIL_FAMILY_MPKI | SIGIL_FAMILY_PPKI;
    need((families & ~all) == 0, "the families");
}

/** The folder of a disk; empty for null, the home folder. Throws Failure when there is none. */
std::string mediumOf(const char* medium);

/** A copy of @p bytes that the caller gives back. Throws std::bad_alloc. */
void give(std::string_view bytes, SigilBytes* to);

/** Throws Failure when a caller's struct of @p given bytes is none of this library or of a later one. */
void checkSize(std::size_t given, std::size_t own);
/** Throws Failure (1608) when an option that this library does not know is set. */
void checkUnknown(const void* options, std::size_t own, std::size_t given);

/** The caller's options in the size that this library knows; all zeros for null. */
template <class Options>
Options known(const Options* given)
{
    Options options{};
    if (!given)
        return options;
    checkSize(given->size, sizeof options);
    checkUnknown(given, sizeof options, given->size);
    std::memcpy(&options, given, sizeof options);
    return options;
}

/** Fills the caller's struct, whose size stays; what a later library would fill in is zero. */
template <class Record>
void fill(Record* to, const Record& from)
{
    need(to != nullptr, "the struct to fill");
    const std::size_t size = to->size;
    checkSize(size, sizeof from);
    std::memset(static_cast<void*>(to), 0, size);
    std::memcpy(to, &from, sizeof from);
    to->size = size;
}

} // namespace host
