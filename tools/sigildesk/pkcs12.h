/** @file
 *  PKCS#12 files: what is in them, and how they are made.
 */
#pragma once

#include "certificate.h"
#include "secrets.h"

#include <optional>
#include <string>
#include <vector>

namespace host {

/** A certificate and its private key, not encrypted. */
struct OpenPair {
    std::string certificate;
    sigil::SecretBytes key;
};

/** The pairs of a file, and the password that opened it. */
struct Pkcs12 {
    std::vector<OpenPair> pairs;
    Secret password;
};

/** Reads a file. Asks for its password; throws Failure when it does not open, or when there is no pair in it. */
Pkcs12 readPkcs12(const Session& session, const std::string& path);

/** Makes a file of pairs, the signing pair first.
 *  @param protection  SigilToolkitPfxOption */
sigil::SecretBytes makePkcs12(
    const Session& session, const std::vector<OpenPair>& pairs, int protection, Secret& password);

} // namespace host
