// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  A directory server, as far as fetching one value goes.
 */
#pragma once

#include "toolkit/engine/base/bytes.h"
#include "toolkit/engine/net/visits.h"

#include <string>
#include <vector>

namespace toolkit {

struct DirectoryQuery {
    std::string server;                  ///< "host:port"
    std::string base;                    ///< UTF-8
    std::string filter;                  ///< RFC 4515; empty: the base entry itself
    std::vector<std::string> attributes; ///< wanted ones, the dearest first
};

/** First value of the first wanted attribute that one of the found entries has, at most maximumFetchSize bytes. Throws
 *  SIGIL_TK_FETCH and SIGIL_TK_NOT_FOUND. */
Bytes queryDirectory(const DirectoryQuery& query, const Visits& visits);

/** @p text inside a filter, RFC 4515. */
std::string escapedFilterValue(const std::string& text);

} // namespace toolkit
