// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Who is trusted, as the options of a command say it.
 */
#pragma once

#include "jobs/trust.h"
#include "session.h"

namespace host {

/** The certificates of --trust; none without that option. Throws Failure for a file that cannot be read. */
std::vector<std::string> trusted(const Session& session, const Crypto& crypto);

} // namespace host
