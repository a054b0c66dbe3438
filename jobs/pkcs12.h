// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  PKCS#12 files.
 */
#pragma once

#include "jobs/keys.h"
#include "jobs/pairs.h"

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
    const Setting& setting, const std::vector<OpenPair>& pairs, int protection, Secret& password);

/** Reads the pairs of a file; their keys are under its password then, as the list's copy would put them.
 *  @return a result of the library */
int readPkcs12(const Crypto& crypto, const std::string& path, Secret& password, PairContents& contents);

} // namespace host
