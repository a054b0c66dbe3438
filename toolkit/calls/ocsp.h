// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  The state of a certificate in single steps: bodies of the functions that both faces export.
 */
#pragma once

#include "toolkit/calls/trust.h"
#include "toolkit/engine/base/face.h"
#include "toolkit/engine/status/ocsp_exchange.h"

namespace toolkit::calls {

/** @param signerCertificate looked at as the issuer, too, when the store does not hold it
 *  @param signerKey not read when the request is not signed */
inline void ocspMakeOCSPReq(Context& state, BINSTR* certificate, bool signRequest, BINSTR* signerCertificate,
    BINSTR* signerKey, BINSTR* request)
{
    const Library& library = state.library();
    std::optional<RequestSigner> signer;
    if (signRequest)
        signer = RequestSigner{{library, in(signerCertificate)}, in(signerKey)};
    put(state.ocsp.makeRequest(library, state.trust, {library, in(certificate)}, {library, in(signerCertificate)},
            signer ? &*signer : nullptr),
        request);
}

inline void ocspSendAndRecv(Context& state, char* url, BINSTR* certificate, BINSTR* request, BINSTR* response)
{
    put(sendToResponder(state.trust, in(url), {state.library(), in(certificate)}, in(request)), response);
}

/** Hands out the responder's certificate when a record is given. */
inline OcspAnswer verifyOcspInto(Context& state, BINSTR* certificate, BINSTR* response, BINSTR* responder)
{
    const OcspVerdict verdict =
        state.ocsp.verify(state.library(), state.trust, {state.library(), in(certificate)}, in(response));
    if (responder)
        put(verdict.responder, responder);
    return verdict.asked;
}

/** The result is the state: 0 good, SIGIL_TK_VERIFY_REVOKED, SIGIL_TK_OCSP_UNKNOWN. */
inline void requireGoodState(const OcspAnswer& answer)
{
    require(answer.status != SIGIL_TK_STATUS_REVOKED, SIGIL_TK_VERIFY_REVOKED);
    require(answer.status == SIGIL_TK_STATUS_GOOD, SIGIL_TK_OCSP_UNKNOWN);
}

inline void ocspVerifyResMsg(Context& state, BINSTR* certificate, BINSTR* response, BINSTR* responder)
{
    requireGoodState(verifyOcspInto(state, certificate, response, responder));
}

/** @param count receives the number of single answers, which ocspGetCertStatus tells */
inline void ocspVerifyResMsgWithCount(
    Context& state, BINSTR* certificate, BINSTR* response, int* count, BINSTR* responder)
{
    require(count != nullptr, SIGIL_TK_ARGUMENT);
    verifyOcspInto(state, certificate, response, responder);
    *count = static_cast<int>(state.ocsp.answers().size());
}

/** @param revocationTime receives at most 25 bytes, an empty text when the certificate is not revoked */
inline void ocspGetCertStatus(Context& state, int index, int* status, char* revocationTime, int* reason)
{
    require(status && revocationTime && reason, SIGIL_TK_ARGUMENT);
    const auto& answers = state.ocsp.answers();
    require(index >= 0 && static_cast<std::size_t>(index) < answers.size(), SIGIL_TK_INDEX);
    const OcspAnswer& answer = answers[static_cast<std::size_t>(index)];
    putText(answer.revokedAt ? timeText(*answer.revokedAt) : "", timeCapacity, revocationTime);
    *status = answer.status;
    *reason = answer.reason;
}

/** All steps in one. */
inline void ocspCheckCertStatus(
    Context& state, char* url, BINSTR* certificate, bool signRequest, BINSTR* signerCertificate, BINSTR* signerKey)
{
    const Library& library = state.library();
    std::optional<RequestSigner> signer;
    if (signRequest)
        signer = RequestSigner{{library, in(signerCertificate)}, in(signerKey)};
    const Certificate subject(library, in(certificate));
    OcspExchange exchange;
    exchange.acceptsAnyNonce = state.ocsp.acceptsAnyNonce;
    const Bytes request = exchange.makeRequest(
        library, state.trust, {library, in(certificate)}, {library, in(certificate)}, signer ? &*signer : nullptr);
    requireGoodState(
        exchange.verify(library, state.trust, subject, sendToResponder(state.trust, in(url), subject, request))
            .asked);
}

} // namespace toolkit::calls
