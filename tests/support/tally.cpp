// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "tests/support/tally.h"

#include <iostream>
#include <map>

namespace {

/** Tells what was counted when the program ends. */
struct Counts {
    ~Counts()
    {
        for (const auto& [what, times] : all)
            std::cout << "tally: " << what << " " << times << "\n";
    }
    std::map<std::string, std::size_t> all{};
};

} // namespace

void tally(const std::string& what, std::size_t times)
{
    static Counts counts;
    counts.all[what] += times;
}
