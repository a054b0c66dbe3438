// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  What a benchmark asks about its own process and its figures.
 */
#pragma once

#include <unistd.h>

#include <algorithm>
#include <fstream>
#include <vector>

/** What the process keeps in the machine's memory, in millions of bytes. */
inline double residentMegabytes()
{
    std::ifstream file("/proc/self/statm");
    long pages = 0;
    file >> pages >> pages;
    return static_cast<double>(pages) * static_cast<double>(sysconf(_SC_PAGESIZE)) / 1e6;
}

/** The value that @p share (0 to 1) of the others do not exceed; 0.5 is the median. */
inline double percentile(std::vector<double> values, double share)
{
    std::sort(values.begin(), values.end());
    return values[static_cast<std::size_t>(share * static_cast<double>(values.size() - 1))];
}
