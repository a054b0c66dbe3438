// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Tokens and the certificates on them.
 */
#pragma once

#include "jobs/certificate.h"

#include <string>
#include <vector>

namespace host {

struct Token {
    unsigned long slot;
    bool initialised;
    std::string label, maker, model, serial;
    std::vector<Certificate> certificates;
};

/** All tokens that can be reached. Nobody logs in. Throws Failure. */
std::vector<Token> tokens(const Setting& setting, const Crypto& crypto);

} // namespace host
