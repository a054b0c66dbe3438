/** @file
 *  One GET from a web server.
 */
#pragma once

#include "toolkit/engine/bytes.h"

#include <string>

namespace toolkit {

/** Body of an http address, at most maximumFileSize bytes. Follows three redirections, http only. Throws SIGIL_TK_FETCH and,
 *  when the server answers 404 or 410, SIGIL_TK_NOT_FOUND. */
Bytes getFromWeb(const std::string& url);

} // namespace toolkit
