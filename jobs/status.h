// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Whether a certificate is revoked: asks its responder, else looks into the revocation list.
 */
#pragma once

#include "jobs/certificate.h"
#include "jobs/steps.h"

#include <ctime>
#include <string>
#include <vector>

namespace host {

struct StatusQuestion {
    std::vector<std::string> trusted; ///< certificates; none for the roots of the settings file
    std::string responder;            ///< address; empty for the one in the certificate
};

enum class State { Unknown, Good, Revoked };

struct Status {
    State state = State::Unknown;
    bool byList = false;       ///< said by a revocation list, not by a responder
    std::time_t revokedAt = 0; ///< 0 when that is not told
};

/** Asks, and adds who was asked to @p steps. Throws Failure. */
Status askStatus(const Setting& setting, const Crypto& crypto, const Certificate& certificate,
    const StatusQuestion& question, Steps& steps);

} // namespace host
