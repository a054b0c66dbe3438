// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  The pairs that a command changes or copies, as its options name them.
 */
#pragma once

#include "certificate.h"
#include "jobs/pairs.h"

namespace host {

/** The one that --to names, or the first of @p otherwise that is not empty: "disk" or a folder. Throws Failure. */
Disk diskOf(const Session& session, const std::string& otherwise = {});

/** The certificate that CERT names, which must be one whose pairs can be changed or copied: no key-management
 *  certificate. Throws Failure. */
Certificate chosenWithPairs(const Session& session);

/** As filePairs(), which replaces something when --force is given. */
PairFiles filePairs(const Session& session, const PairFiles& files, const PairContents& contents);

} // namespace host
