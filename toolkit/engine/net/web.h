// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  One exchange with a web server: GET or POST, over TLS (1.2 at least) when the address says https. The server must then
 *  prove its name with a certificate that leads to one of the system's authorities; the environment variable SSL_CERT_FILE
 *  names a file of others in their place. And connections for others, since this client looks names up and waits for
 *  servers within a bound.
 */
#pragma once

#include "toolkit/engine/base/bytes.h"
#include "toolkit/engine/net/visits.h"

#include <string>

namespace toolkit {

/** Largest answer of any server. While an answer grows and is handed on it is held up to four times, and no server may make
 *  the host grow by more than 64 MiB. */
constexpr std::size_t maximumFetchSize = 16UL * 1024 * 1024;

/** Body of an http or https address, at most maximumFetchSize bytes. Follows three redirections to addresses of the same
 *  scheme, as far as @p visits allows them. Throws SIGIL_TK_FETCH and, when the server answers 404 or 410, SIGIL_TK_NOT_FOUND. */
Bytes getFromWeb(const std::string& url, Visits& visits);

/** Answer to bytes that are posted to an http or https address, at most @p maximumSize bytes. Anything but 200 is a failure, a
 *  redirection too. Throws as above. */
Bytes postToWeb(
    const std::string& url, const std::string& contentType, View body, std::size_t maximumSize, Visits& visits);

/** A connection that never blocks, for the caller to close. Throws SIGIL_TK_FETCH. */
int connectTo(const std::string& hostAndPort, const Visits& visits);

} // namespace toolkit
