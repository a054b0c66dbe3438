// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  One certificate as the commands show and use it.
 */
#pragma once

#include "jobs/certificate.h"
#include "session.h"

namespace host {

/** Its members in `list --json`. */
Json jsonOf(const Certificate& certificate);

} // namespace host
