// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Failures of OpenSSL as exceptions that say what was being done.
 */
#pragma once

#include <openssl/err.h>

#include <stdexcept>
#include <string>

namespace sample {

/** Throws std::runtime_error "cannot WHAT: OpenSSL's reason" unless @p success is true (or positive, or not null). */
template <class T>
T check(T success, const char* what)
{
    if (success && !(std::is_signed_v<T> && success < T()))
        return success;
    char reason[256];
    ERR_error_string_n(ERR_get_error(), reason, sizeof reason);
    throw std::runtime_error(std::string("cannot ") + what + ": " + reason);
}

} // namespace sample
