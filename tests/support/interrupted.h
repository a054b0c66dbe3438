// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Runs an operation or a program in a process of its own whose calls that change files are counted, and that is killed
 *  before one of them or has them fail.
 */
#pragma once

#include <functional>
#include <string>
#include <vector>

/** A sanitizer makes a run of a program ten times as long: there each misfortune befalls every third call, beginning with
 *  another one each time. */
#ifdef __SANITIZE_ADDRESS__
constexpr int stride = 3;
#else
constexpr int stride = 1;
#endif

/** What befalls the process. */
struct Misfortune {
    int call = 0;             ///< number of the call, from 1; 0 for none
    int error = 0;            ///< errno that the call fails with; 0 kills the process before it
    bool fromThereOn = false; ///< all later calls fail too
};

struct Ending {
    bool finished; ///< false for a process that was killed
    int code;      ///< what the operation returned or the program exited with, when it finished
    int calls;     ///< that change files
};

/** Throws std::runtime_error where processes cannot be traced. */
Ending runWith(const Misfortune& misfortune, const std::function<int()>& operation);

/** The same for a program: its path and its arguments. What it prints is lost, and it has no terminal. */
Ending runWith(const Misfortune& misfortune, const std::vector<std::string>& command);
