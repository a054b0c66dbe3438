// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  A question about a certificate's state in single steps: the request, its way, and the response.
 */
#pragma once

#include "toolkit/engine/status/ocsp.h"

#include <optional>
#include <string>
#include <vector>

namespace toolkit {

/** What a verified response said. */
struct OcspVerdict {
    Bytes responder;  ///< certificate of the signer
    OcspAnswer asked; ///< about the certificate that was asked for; its state may be "unknown"
};

/** What a context keeps between the steps: a response counts for the request that was made last. */
class OcspExchange {
public:
    /** Whether a response without a nonce is good enough. */
    bool acceptsAnyNonce = false;

    /** A request about @p certificate. Its issuer is found in the store, or is @p other.
     *  @param signer null: unsigned. Throws as makeOcspRequest(), and as issuerOf() */
    Bytes makeRequest(const Library& library, const TrustStore& store, Certificate certificate, Certificate other,
        const RequestSigner* signer);
    /** Verifies the response to it: its signer, its nonce, its validity at the time of the store. A failure forgets what
     *  the last one said.
     *  @param certificate the one asked for or its authority; SIGIL_TK_OCSP_NO_ANSWER for another
     *  Throws SIGIL_TK_OCSP_NONCE before any request, and what OcspResponse throws. */
    OcspVerdict verify(
        const Library& library, const TrustStore& store, const Certificate& certificate, View response);
    /** All that it said. */
    const std::vector<OcspAnswer>& answers() const { return m_answers; }

private:
    OcspRequestHandle m_request;
    std::optional<Certificate> m_certificate;
    std::optional<Certificate> m_issuer;
    std::vector<OcspAnswer> m_answers;
};

/** Asks the responder at a web address; an empty one stands for the addresses in the certificate.
 *  Throws SIGIL_TK_URL when it names none, and what findIssuer() and post() throw. */
Bytes sendToResponder(const TrustStore& store, std::string_view url, const Certificate& certificate, View request);

} // namespace toolkit
