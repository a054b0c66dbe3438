// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "tests/support/symbols.h"

#include "tests/support/command.h"

#include <sstream>

std::set<std::string> functionsOf(const std::string& library)
{
    const std::string function = " T "; // "00000000000012ab T CertLoad(void*, BINSTR*)"
    std::istringstream lines(run({"nm", "-DC", "--defined-only", library}).out);
    std::set<std::string> names;
    for (std::string line; std::getline(lines, line);)
        if (const auto at = line.find(function); at != line.npos)
            names.insert(line.substr(at + function.size()));
    return names;
}
