// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Whether a certificate is to be trusted: path, validity, policies, purpose and revocation, each a step.
 */
#pragma once

#include "jobs/certificate.h"
#include "jobs/steps.h"

#include <ctime>
#include <optional>
#include <string>
#include <vector>

namespace host {

struct JudgementQuestion {
    std::vector<std::string> trusted; ///< certificates; none for the roots of the settings file
    std::optional<int> usage;         ///< SigilToolkitUsage; none when the purpose is not asked for
    bool revocation = true;
    std::time_t when = 0;
};

/** Judges a certificate. Throws Failure for what is no question. */
Steps judge(const Setting& setting, const Crypto& crypto, const Certificate& certificate,
    const JudgementQuestion& question);

} // namespace host
