/** @file
 *  Runs an operation in a process of its own whose calls that change files are counted, and that is killed before one of
 *  them or has them fail.
 */
#pragma once

#include <functional>

/** What befalls the process. */
struct Misfortune {
    int call = 0;             ///< number of the call, from 1; 0 for none
    int error = 0;            ///< errno that the call fails with; 0 kills the process before it
    bool fromThereOn = false; ///< all later calls fail too
};

struct Ending {
    bool finished; ///< false for a process that was killed
    int code;      ///< what the operation returned, when it finished
    int calls;     ///< that change files
};

/** Throws std::runtime_error where processes cannot be traced. */
Ending runWith(const Misfortune& misfortune, const std::function<int()>& operation);
