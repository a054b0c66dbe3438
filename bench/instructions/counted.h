// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Counts instructions under callgrind: every piece of work becomes one dump that bears its name. Without callgrind the
 *  work is done and nothing is counted.
 */
#pragma once

#include <valgrind/callgrind.h>

#include <string>

/** @p work does @p times what is counted. It runs once before, so that what happens once (bound symbols, first memory) is
 *  left out. */
template <class Work>
void counted(int times, const std::string& name, Work work)
{
    const std::string label = std::to_string(times) + " " + name;
    work();
    CALLGRIND_ZERO_STATS;
    work();
    CALLGRIND_DUMP_STATS_AT(label.c_str());
}
