// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Challenge and response in two passes (ISO/IEC 9798-3): the open toolkit's own encoding.
 *
 *  Challenge ::= SEQUENCE { version INTEGER (1), random OCTET STRING (SIZE(32)) }
 *  The response is a signed message over SEQUENCE { challenge Challenge, random OCTET STRING (SIZE(32)) }.
 */
#pragma once

#include "toolkit/engine/messages/signed.h"

namespace toolkit {

Bytes makeChallenge(const Library& library);
/** Throws SIGIL_TK_ENCODING when @p challenge is not one. */
Secret answerChallenge(
    const Library& library, const SigningRequest& request, const DigestSigner& signer, View challenge);
/** Throws SIGIL_TK_SIGNATURE when the response answers another challenge, and what verifyMessage() throws.
 *  @return its signer */
VerifiedMessage verifyAnswer(const Library& library, View challenge, View response);

} // namespace toolkit
