// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Certificates from an authority for keys that are made on a token and stay there. What goes wrong leaves nothing there.
 */
#pragma once

#include "toolkit/engine/enrolment/requests.h"
#include "toolkit/engine/tokens/token_session.h"

#include <optional>
#include <string>

namespace toolkit {

/** A certificate that lies beside its key. */
struct TokenPair {
    Certificate certificate;
    Bytes id; ///< CKA_ID of both
};

struct EnrolledOnToken {
    TokenPair pair;
    Bytes issuer; ///< certificate of who issued it; empty when it did not come along
};

/** Asks with a secret for a certificate for a fresh RSA key of 2048 bits. The authority chooses the subject. Throws as
 *  introduce(), and what a token throws. */
EnrolledOnToken enrolOnToken(const EnrolmentTerms& terms, const TokenSession& session, const SharedSecret& secret);

/** What a renewal brings. */
struct TokenRenewal {
    bool freshKey;          ///< of the same kind, which inherits the identity random value; else the same key
    int bits;               ///< SigilToolkitKeyPair of the fresh key; 0: as the old one, RSA with 2048 at least
    bool withKeyManagement; ///< asks for a second pair too
};

struct RenewedOnToken {
    TokenPair signing;
    std::optional<TokenPair> keyManagement; ///< nothing when the authority did not grant it
};

/** Asks for another certificate of the same subject. The new one takes the place of those with its key; what belongs to another
 *  key stays. Throws SIGIL_TK_TOKEN_OBJECT when the token lacks the key, SIGIL_TK_KEY_MISMATCH for another one; once the
 *  signing pair is written, only lack of memory fails. */
RenewedOnToken renewOnToken(const EnrolmentTerms& terms, const TokenSession& session,
    const Certificate& certificate, const TokenRenewal& renewal);

/** Revokes a certificate; all stays on the token. Throws as above.
 *  @param id of its key; empty: it is looked for
 *  @param reason CRLReason of RFC 5280; SIGIL_TK_ARGUMENT for one that does not exist
 *  @return what the authority says of it */
std::string revokeOnToken(
    const EnrolmentTerms& terms, const TokenSession& session, const Certificate& certificate, View id, int reason);

} // namespace toolkit
