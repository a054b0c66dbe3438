// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  What is imported, exported and copied.
 */
#pragma once

#include "certlist/bytes.h"

namespace sigil {

/** A certificate with its key, and optionally a key-management pair. Keys are not encrypted unless said otherwise;
 *  CBinary overwrites its bytes when it lets go of them. */
struct CertNKey {
    CBinary signCert;
    CBinary signKey;
    CBinary kmCert;
    CBinary kmKey;

    bool hasSignPair() const { return !bytesOf(signCert).empty() && !bytesOf(signKey).empty(); }
    bool hasKmPair() const { return !bytesOf(kmCert).empty() && !bytesOf(kmKey).empty(); }
};

} // namespace sigil
