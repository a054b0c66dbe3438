// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Files that are read whole.
 */
#pragma once

#include "jobs/words.h"

#include "foundation/secret.h"

#include <algorithm>
#include <cerrno>
#include <string>
#include <string_view>

#include <unistd.h>

namespace host {

/** The file's content. Throws Failure when it cannot be read, is no regular file, or is larger than the façade can tell. */
std::string readFile(const std::string& path);
/** The same for what the façade takes in one piece; throws Failure (empty_file) for an empty one, too. */
std::string readContent(const std::string& path);
/** The same for what may be a key; the bytes wipe themselves. */
sigil::SecretBytes readSecretFile(const std::string& path);
/** Throws Failure (not_found) when nothing is there. */
void mustExist(const std::string& path);

/** Throws Failure (empty_file) when @p content, read from @p path, is empty. */
void mustHoldSomething(const std::string& content, const std::string& path);

/** What the system says about an error number. */
std::string reason(int error);

/** Appends all of an open file to @p to. @return errno; 0 */
template <class Buffer>
int readAll(int descriptor, Buffer& to, std::size_t most)
{
    constexpr std::size_t step = 65536;
    for (;;) {
        const std::size_t size = to.size();
        to.resize(size + step);
        const ssize_t count = ::read(descriptor, to.data() + size, step);
        to.resize(size + static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
        if (count == 0)
            return 0;
        if (count < 0 && errno != EINTR)
            return errno;
        if (to.size() > most)
            return EFBIG;
    }
}

} // namespace host
