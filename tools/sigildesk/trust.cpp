// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "trust.h"

#include "jobs/read_file.h"

namespace host {

std::vector<std::string> trusted(const Session& session, const Crypto& crypto)
{
    std::vector<std::string> certificates;
    for (const std::string& file : session.arguments.all("--trust"))
        for (std::string& der : allDer(crypto, readFile(file)))
            certificates.push_back(std::move(der));
    return certificates;
}

} // namespace host
