// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Times that people type.
 */
#pragma once

#include "session.h"

#include <ctime>

namespace host {

/** The value of an option: a day or a time as in ISO 8601, with a zone or in the machine's. Now when it is not given.
 *  Throws Failure (wrongUse). */
std::time_t timeArgument(const Session& session, const char* option);

} // namespace host
