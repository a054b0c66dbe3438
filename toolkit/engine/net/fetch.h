// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Certificates and revocation lists from servers: directories (LDAP, RFC 4511, addresses of RFC 4516) and web servers
 *  (HTTP, HTTPS). Every exchange is bounded in time and size (visits.h, web.h), and never waits for a person.
 */
#pragma once

#include "toolkit/engine/base/bytes.h"
#include "toolkit/engine/net/visits.h"

#include <ctime>
#include <string>
#include <string_view>
#include <vector>

namespace toolkit {

/** Largest answer to a question about a certificate. */
constexpr std::size_t maximumAnswerSize = 256UL * 1024;
/** How far the clock of a server may be from ours, in seconds. */
constexpr std::time_t clockTolerance = 300;

/** Fetches an address.
 *
 *  ldap://host[:port]/DN[?attribute]: one entry, base scope, anonymous. Blanks in the DN may stand as they are or as %20,
 *  a DN that is not UTF-8 is taken as CP949, and a missing scheme means ldap. Without an attribute @p mode tells what is
 *  wanted. The first value of the first attribute that the entry has is the answer.
 *  http://..., https://...: the body.
 *  @param mode SigilToolkitFetch; throws SIGIL_TK_OPTION for another
 *  Throws SIGIL_TK_URL, SIGIL_TK_FETCH, SIGIL_TK_NOT_FOUND. */
Bytes fetch(std::string_view url, int mode);
/** The same as one of several addresses of a call. */
Bytes fetch(std::string_view url, int mode, Visits& visits);

/** Sends bytes to an http or https address (POST) and answers the body, at most @p maximumSize bytes. Redirections are refused.
 *  Throws SIGIL_TK_URL, SIGIL_TK_FETCH, SIGIL_TK_NOT_FOUND. */
Bytes post(std::string_view url, const std::string& contentType, View body, std::size_t maximumSize);
/** The same as one of several addresses of a call. */
Bytes post(
    std::string_view url, const std::string& contentType, View body, std::size_t maximumSize, Visits& visits);

/** The address of a server that is named by "http://host[:port]/path", or by a host alone and @p port (0: 80). Throws
 *  SIGIL_TK_ARGUMENT for none or for a port that is none, and SIGIL_TK_URL. */
std::string webAddress(std::string_view address, int port);

/** As fetch() for a directory address, with an attribute of the caller's. */
Bytes fetchAttribute(std::string_view url, std::string_view attribute);

/** Searches below @p base for the entry with a common name, and answers what @p mode tells.
 *  @param port 0 for 389 */
Bytes fetchByCommonName(
    std::string_view host, int port, std::string_view commonName, int mode, std::string_view base);

} // namespace toolkit
