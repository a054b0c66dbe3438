// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Runs a program and keeps what it printed.
 */
#pragma once

#include <string>
#include <vector>

struct Outcome {
    int status; ///< exit status; -1 when the program did not exit by itself
    std::string out;
    std::string err;
};

/** @param arguments the program (looked up in PATH unless it holds a "/") and its arguments, taken as they are
 *  @param input what the program reads from its standard input */
Outcome run(const std::vector<std::string>& arguments, const std::string& input = {});
