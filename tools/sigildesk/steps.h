// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  A judgement in steps as it is printed: each on a line, or in {"valid", "steps": [{"step", "ok", "detail"}]}.
 */
#pragma once

#include "jobs/failure.h"
#include "jobs/steps.h"
#include "session.h"

namespace host {

Json jsonOf(const Steps& steps);
void print(const Session& session, const Steps& steps);

} // namespace host
