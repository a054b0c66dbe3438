// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Which certificates the caller wants listed.
 */
#pragma once

namespace sigil {

/** What CLP_SetType chose. */
struct LoadOptions {
    int pkiTypes = 0;
    int keyPairType = 0;
    bool excludeExpired = false;
    char policyIds[2048] = {};
    char serialNum[1024] = {};
    char subjectDn[1024] = {}; ///< UTF-8
};

} // namespace sigil
