// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Tells what a store holds.
 */
#pragma once

#include "tools/sample-store/options.h"
#include "tools/sample-store/plan.h"

#include <iosfwd>
#include <vector>

namespace sample {

/** Prints one line or object for each certificate, in the format that the options name: path, subject, state, key
 *  file variant, identity number and what else a test wants to know. */
void printReport(std::ostream& out, const Options& options, const std::vector<PlannedCertificate>& plan);

} // namespace sample
