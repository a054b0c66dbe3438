// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Time stamps (RFC 3161).
 */
#pragma once

#include "jobs/certificate.h"

#include <ctime>
#include <string>
#include <string_view>

namespace host {

/** A token for @p data from the authority at @p url. Throws Failure. */
std::string stampToken(const Crypto& crypto, const std::string& url, std::string_view data);

/** A signed message with a time stamp of its first signature in it. Throws Failure.
 *  @param content  of a detached message; else empty */
std::string stamped(
    const Setting& setting, const std::string& message, const std::string& content, const std::string& url);

struct Stamp {
    std::time_t time;
    std::string policy; ///< dotted
    std::string serial; ///< hexadecimal
};

/** What a token says. It is not verified. */
Stamp stampOf(const Crypto& crypto, Bytes& token);

} // namespace host
