// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Signed messages (RFC 5652, section 5).
 */
#pragma once

#include "toolkit/engine/keys/asymmetric.h"
#include "toolkit/engine/messages/layout.h"
#include "toolkit/engine/messages/processed.h"
#include "toolkit/engine/trust/trust.h"
#include "toolkit/engine/x509/certificate.h"

#include <ctime>
#include <functional>
#include <optional>
#include <vector>

namespace toolkit {

/** How a message is signed. */
struct SigningRequest {
    const Certificate& certificate;
    SignatureScheme scheme;
    std::optional<std::time_t> time;             ///< nothing: now
    int options;                                 ///< SigilToolkitMessageOption bits
    const std::vector<Certificate>& authorities; ///< go into the message with SIGIL_TK_MESSAGE_CA_PUBS
};

/** Signs a hash, here or elsewhere. */
using DigestSigner = std::function<Bytes(View digest)>;

/** Signs hashes with a PrivateKeyInfo. Throws SIGIL_TK_KEY_MISMATCH when it does not belong to the certificate. */
DigestSigner digestSigner(const Library& library, const SigningRequest& request, View keyInfo);

/** Throws SIGIL_TK_OPTION for unknown bits, and for those of @p contradicting. */
void requireMessageOptions(int options, int contradicting = 0);

/** The hash of a content. @param algorithm SigilToolkitHash, not the default one */
Bytes digestOf(const Library& library, int algorithm, const Input& content);

/** A message whose one signer signs the content with this hash. @return its layout; the content is not in it, whether
 *  detached or not */
MessageLayout signContent(
    const Library& library, const SigningRequest& request, const DigestSigner& signer, const Bytes& contentDigest);
/** @p message with one signer more. A content that is not in the message must have been signed with the same hash and
 *  signed attributes before, else SIGIL_TK_CMS_CONTENT. */
MessageLayout addSigner(
    const Library& library, const SigningRequest& request, const DigestSigner& signer, const Message& message);

/** Prepares a message for a signer elsewhere. @return the DER of the signed attributes, which is to be signed */
Bytes prepareSignature(
    const Library& library, const SigningRequest& request, const Bytes& contentDigest, MessageLayout& prepared);
/** The prepared message with its signature. Throws SIGIL_TK_SIGNATURE when it is wrong. */
MessageLayout completeSignature(const Library& library, const PendingMessage& pending, View signature);

/** Verifies every signer with the certificates in the message.
 *  @param detached the content of a message that has none in it; may be null
 *  @param take receives the content, before anything is known about it; may be empty
 *  Throws SIGIL_TK_CMS_NOBODY, SIGIL_TK_CMS_CONTENT, SIGIL_TK_SIGNATURE. */
VerifiedMessage verifyMessage(
    const Library& library, const Message& message, const Input* detached, const Sink& take);

/** Verifies the signers' certificates under a context's environment, with the message's other certificates as
 *  authorities. Throws what verifyCertificate() throws, and SIGIL_TK_VERIFY_USAGE when a certificate may not sign. */
void verifySigners(const Library& library, const TrustStore& store, const VerifiedMessage& message);

} // namespace toolkit
