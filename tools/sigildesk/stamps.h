// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Time-stamp tokens.
 */
#pragma once

#include "certificate.h"

namespace host {

struct Stamp {
    std::string time;   ///< ISO 8601
    std::string policy; ///< dotted
    std::string serial; ///< hexadecimal
};

/** What a token says. It is not verified. */
Stamp stampOf(const Crypto& crypto, Bytes& token);

} // namespace host
