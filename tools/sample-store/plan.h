// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  What a store will hold, decided before a key is made or a file is written. The same options give the same plan.
 */
#pragma once

#include "toolkit/engine/base/bytes.h"
#include "tools/sample-store/distinguished_name.h"
#include "tools/sample-store/kinds.h"
#include "tools/sample-store/options.h"

#include <ctime>
#include <string>
#include <vector>

namespace sample {

/** One certificate folder: a signing certificate and, mostly, its key-management sister. */
struct PlannedCertificate {
    const Kind* kind;
    DistinguishedName subject;
    std::string realName;       ///< the holder's registered name, UTF-8
    std::string identityNumber; ///< 13 digits for people, 10 for companies; empty for servers
    toolkit::Bytes serial;      ///< big-endian, of the signing certificate; its sister has the next number
    State state;
    std::time_t notBefore;
    std::time_t notAfter;
    int keyBits;
    char variant; ///< encryption of the key files, 'A' to 'E'
    Pairs pairs;
};

std::vector<PlannedCertificate> planStore(const Options& options);

} // namespace sample
