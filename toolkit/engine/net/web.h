/** @file
 *  One exchange with a web server: GET or POST.
 */
#pragma once

#include "toolkit/engine/base/bytes.h"

#include <string>

namespace toolkit {

/** Body of an http address, at most maximumFileSize bytes. Follows three redirections, http only. Throws SIGIL_TK_FETCH and,
 *  when the server answers 404 or 410, SIGIL_TK_NOT_FOUND. */
Bytes getFromWeb(const std::string& url);

/** Answer to bytes that are posted to an http address, at most @p maximumSize bytes. Anything but 200 is a failure, a
 *  redirection too. Throws as above. */
Bytes postToWeb(const std::string& url, const std::string& contentType, View body, std::size_t maximumSize);

} // namespace toolkit
