// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Programs of the toolkit's own, beside its libraries. They do what could crash or stop the host, and what would disturb a
 *  library that the host uses itself.
 */
#pragma once

#include "toolkit/engine/base/bytes.h"

#include <chrono>
#include <string>
#include <vector>

namespace toolkit {

enum class HelperEnd {
    Answered,
    Crashed,
    Silent, ///< it took too long, or never ended its answer, and was killed
    Absent  ///< it cannot be run
};

struct HelperAnswer {
    HelperEnd end;
    Secret bytes; ///< what it wrote
};

/** Runs a program with a request as its standard input. Its standard output is the answer, whole when the program closes it or shuts
 *  it down: a process that it leaves behind does not count.
 *  @param patience for all of it */
HelperAnswer askHelper(const std::string& program, const std::vector<std::string>& arguments, View request,
    std::chrono::seconds patience);

} // namespace toolkit
