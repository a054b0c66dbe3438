// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  What is asked of an authority, wherever the keys are.
 */
#pragma once

#include "toolkit/engine/enrolment/transaction.h"

#include <string>
#include <string_view>

namespace toolkit {

/** Who answers, whom that must lead to, and with what requests are signed. */
struct EnrolmentTerms {
    const Library& library;
    const Authority& authority;
    const TrustStore* trust; ///< null: the shared secret vouches
    int hash;                ///< SigilToolkitHash, not the default one
};

/** The first certificate of a user. */
struct Introduction {
    Certificate certificate;
    Bytes issuer; ///< certificate of who issued it; empty when it did not come along
};

/** Asks with a secret for a certificate for signing, for @p key.
 *  @param subject as nameFromText(); empty: the authority chooses it
 *  Throws as Transaction::request(). */
Introduction introduce(
    const EnrolmentTerms& terms, const SharedSecret& secret, std::string_view subject, EVP_PKEY* key);
/** Asks for a certificate for key management, for @p key; its subject is that of the certificate that asks. */
Certificate requestKeyManagement(const EnrolmentTerms& terms, const KeyOwner& owner, EVP_PKEY* key);
/** Asks for another certificate of the same subject, for @p key. */
Certificate requestRenewal(const EnrolmentTerms& terms, const KeyOwner& owner, EVP_PKEY* key);
/** Asks for the revocation of the certificate that asks.
 *  @param reason CRLReason of RFC 5280; SIGIL_TK_ARGUMENT for one that does not exist
 *  @return what the authority says of it */
std::string requestRevocation(const EnrolmentTerms& terms, const KeyOwner& owner, int reason);

} // namespace toolkit
