// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  How PKCS#12 files are made.
 */
#pragma once

#include "certificate.h"
#include "secrets.h"

#include <string>
#include <vector>

namespace host {

/** A certificate and its private key, not encrypted. */
struct OpenPair {
    std::string certificate;
    sigil::SecretBytes key;
};

/** Makes a file of pairs, the signing pair first.
 *  @param protection  SigilToolkitPfxOption */
sigil::SecretBytes makePkcs12(
    const Session& session, const std::vector<OpenPair>& pairs, int protection, Secret& password);

} // namespace host
