// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Verification of certificates: paths to certificates that the host trusts, time, usage, policies and revocation lists
 *  (RFC 5280). What is looked up on the network is bounded for each call (visits.h).
 */
#pragma once

#include "toolkit/engine/base/bytes.h"
#include "toolkit/engine/base/error.h"
#include "toolkit/engine/base/library.h"
#include "toolkit/engine/x509/certificate.h"

#include <ctime>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace toolkit {

/** What a context trusts and how it verifies. */
struct TrustStore {
    std::vector<Certificate> trusted;
    std::vector<Certificate> authorities; ///< CaPubs: between the user and the trusted ones
    std::vector<Bytes> crls;              ///< DER
    int pathSource = SIGIL_TK_PATH_GIVEN;
    int revocation = SIGIL_TK_REVOCATION_NONE;
    bool toleratesMissingCrl = false;
    std::optional<std::time_t> time; ///< nothing: now
};

/** One verification. */
struct VerifyRequest {
    int usage = SIGIL_TK_USAGE_ANY;
    std::vector<std::string> policies; ///< dotted; one of them must hold. Empty: any
    bool checksRevocation = false;     ///< of the whole path, also when the store says none
    std::optional<std::time_t> time;   ///< in place of the store's
    std::vector<Certificate> authorities;
};

/** Throws a SIGIL_TK_VERIFY_ code. @return the path, the certificate first, the trusted one last */
std::vector<Bytes> verifyCertificate(
    const Library& library, const TrustStore& store, const Certificate& certificate, const VerifyRequest& request);

/** Policies in a text: dotted or with blanks, separated by "|" or ",". */
std::vector<std::string> policiesOf(std::string_view text);
/** A time text; nothing for an empty one. Throws SIGIL_TK_ENCODING. */
std::optional<std::time_t> optionalTime(std::string_view text);

/** Throws SIGIL_TK_OPTION for unknown numbers. */
void setEnvironment(
    TrustStore& store, int pathSource, int revocation, bool toleratesMissingCrl, std::string_view time);

/** Replaces time, trusted certificates and revocation lists. @p trusted and @p crls: a list or a single one. Throws
 *  SIGIL_TK_CERT_MALFORMED and SIGIL_TK_CRL_MALFORMED, and leaves the store alone then. */
void setTrust(const Library& library, TrustStore& store, std::string_view time, View trusted, View crls);

/** The revocation list for a certificate, from its distribution points. Throws SIGIL_TK_VERIFY_NO_CRL, and
 *  SIGIL_TK_VERIFY_SIGNATURE when the store holds its issuer, who did not sign it. */
Bytes fetchCrl(const TrustStore& store, const Certificate& certificate);
/** Whether a certificate is on a revocation list that its issuer signed and that is current.
 *  @param url where the list is; empty: the distribution points of the certificate, after the lists of the store
 *  @return SigilToolkitCertStatus
 *  Throws SIGIL_TK_VERIFY_NO_ISSUER when the store does not hold the issuer, SIGIL_TK_VERIFY_NO_CRL, _SIGNATURE. */
int revocationStatus(
    const Library& library, const TrustStore& store, const Certificate& certificate, std::string_view url);

} // namespace toolkit
