// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Challenge and response: bodies of the functions of the GPKI_ face.
 */
#pragma once

#include "toolkit/calls/messages.h"
#include "toolkit/engine/messages/challenge.h"

#include <optional>

namespace toolkit::calls {

/** @param challenge the façade wants data in it; it is replaced */
inline void sigeaMakeChallenge(Context& state, BINSTR* challenge)
{
    replace(makeChallenge(state.library()), challenge);
}

inline void sigeaMakeResponse(Context& state, BINSTR* challenge, BINSTR* certificate, BINSTR* key, BINSTR* out)
{
    const Certificate signer(state.library(), in(certificate));
    const SigningRequest request{
        signer, signatureScheme(state, SIGIL_TK_HASH_DEFAULT), {}, SIGIL_TK_MESSAGE_PLAIN, state.trust.authorities};
    put(answerChallenge(state.library(), request, digestSigner(state.library(), request, in(key)), in(challenge)),
        out);
}

/** The certificate in a record that may hold anything. */
inline std::optional<Certificate> certificateIn(const Library& library, View bytes)
{
    try {
        return std::optional<Certificate>(std::in_place, library, bytes);
    } catch (const Error&) {
        return {};
    }
}

/** @param certificate holds the certificate that must have answered; other data in it are replaced by the certificate that
 *  did */
inline void sigeaVerifyResponse(Context& state, BINSTR* challenge, BINSTR* response, BINSTR* certificate)
{
    const VerifiedMessage answer = verifyAnswer(state.library(), in(challenge), in(response));
    if (!state.trust.trusted.empty())
        verifySigners(state.library(), state.trust, answer);
    const Bytes& signer = answer.signers.front().certificate;
    if (const auto expected = certificateIn(state.library(), in(certificate)))
        require(expected->der() == signer, SIGIL_TK_CMS_NOBODY, "another certificate answers");
    else
        replace(signer, certificate);
}

} // namespace toolkit::calls
