// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Certificates from an authority, renewed and revoked, with keys in memory.
 */
#pragma once

#include "toolkit/engine/enrolment/requests.h"

#include <optional>
#include <string>
#include <string_view>

namespace toolkit {

/** A certificate with its private key. */
struct EnrolledPair {
    Bytes certificate;
    Secret key; ///< PrivateKeyInfo
};

/** What a user enrols with. */
struct Enrolment {
    SharedSecret secret;
    std::string_view subject; ///< as nameFromText(); empty: the authority chooses it
    bool withKeyManagement;   ///< asks for a second pair too
};

struct Enrolled {
    EnrolledPair signing;
    std::optional<EnrolledPair> keyManagement; ///< nothing when the authority did not grant it
    Bytes issuer;                              ///< certificate of who issued it; empty when it did not come along
};

/** Asks for a certificate for a fresh RSA key of 2048 bits, with the secret; then, signed with that certificate, for one for
 *  key management. Throws as introduce(); once the first certificate is confirmed, only lack of memory fails. */
Enrolled enrol(const EnrolmentTerms& terms, const Enrolment& enrolment);

/** Asks for another certificate of the same subject.
 *  @param keyInfo key of @p certificate; SIGIL_TK_KEY_MISMATCH for another
 *  @param freshKey of the same kind, which inherits the identity random value; else the same key */
EnrolledPair renew(const EnrolmentTerms& terms, const Certificate& certificate, View keyInfo, bool freshKey);

/** Revokes a certificate. @param reason CRLReason of RFC 5280; SIGIL_TK_ARGUMENT for one that does not exist
 *  @return what the authority says of it */
std::string revoke(const EnrolmentTerms& terms, const Certificate& certificate, View keyInfo, int reason);

} // namespace toolkit
