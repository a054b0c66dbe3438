// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  The state of a certificate from its authority's responder (OCSP, RFC 6960, over HTTP POST as in its appendix A).
 */
#pragma once

#include "toolkit/engine/base/bytes.h"
#include "toolkit/engine/base/library.h"
#include "toolkit/engine/trust/trust.h"
#include "toolkit/engine/x509/certificate.h"

#include <openssl/ocsp.h>

#include <ctime>
#include <optional>
#include <string_view>
#include <vector>

namespace toolkit {

/** What a response says about one certificate. */
struct OcspAnswer {
    int status = SIGIL_TK_STATUS_GOOD; ///< SigilToolkitCertStatus
    std::optional<std::time_t> revokedAt;
    int reason = noReason; ///< of the revocation, CRLReason of RFC 5280

    static constexpr int noReason = -1;
};

/** Signs requests, for responders that want to know who asks. */
struct RequestSigner {
    Certificate certificate;
    View keyInfo; ///< PrivateKeyInfo
};

/** A response that says "successful". The checks are independent of each other; only all of them together make the answer
 *  worth something. */
class OcspResponse {
public:
    /** Throws SIGIL_TK_OCSP_MALFORMED, and SIGIL_TK_OCSP_REFUSED when the responder answers one of its errors. */
    explicit OcspResponse(View der);

    /** The certificates that came with the response. */
    std::vector<Certificate> certificates(const Library& library) const;
    /** Throws SIGIL_TK_OCSP_SIGNER unless the authority @p issuer signed, or a certificate that it issued for this purpose
     *  (id-kp-OCSPSigning) and that is valid at @p time. The signer must be @p responder itself, or, when that is the
     *  authority, may have come with the response. @return the signer's certificate */
    Bytes requireSigner(
        const Library& library, const Certificate& issuer, const Certificate& responder, std::time_t time) const;
    /** Throws SIGIL_TK_OCSP_NONCE unless the response repeats the nonce of the request.
     *  @param mayBeAbsent accepts a response without a nonce, of a responder that makes its responses beforehand */
    void requireNonce(OCSP_REQUEST* request, bool mayBeAbsent = false) const;
    /** What it says about a certificate. Throws SIGIL_TK_OCSP_NO_ANSWER when that is nothing, SIGIL_TK_OCSP_STALE when it
     *  does not hold at @p time, SIGIL_TK_OCSP_UNKNOWN when the responder does not know the certificate. */
    OcspAnswer answer(
        const Library& library, const Certificate& certificate, const Certificate& issuer, std::time_t time) const;

    /** Single answers, of which a response may hold several. */
    int count() const { return OCSP_resp_count(m_basic.get()); }
    /** The one about a certificate. Throws SIGIL_TK_OCSP_NO_ANSWER. */
    int indexOf(const Library& library, const Certificate& certificate, const Certificate& issuer) const;
    /** Throws SIGIL_TK_OCSP_STALE. */
    OcspAnswer answerAt(int index, std::time_t time) const;

private:
    bool isSignedBy(const Library& library, const Certificate& certificate) const;

    Handle<OCSP_BASICRESP, OCSP_BASICRESP_free> m_basic;
};

using OcspRequestHandle = Handle<OCSP_REQUEST, OCSP_REQUEST_free>;

/** A request about one certificate, named with SHA-1 as responders expect it, with a fresh nonce.
 *  @param signer null: unsigned. Throws SIGIL_TK_KEY_UNUSABLE and SIGIL_TK_KEY_MISMATCH. */
OcspRequestHandle makeOcspRequest(
    const Library& library, const Certificate& certificate, const Certificate& issuer, const RequestSigner* signer);

/** Asks the responder at a web address. The issuer is looked for in the store; when it is not there, @p responder must be
 *  the issuer. Throws what the steps above throw, SIGIL_TK_VERIFY_NO_ISSUER, SIGIL_TK_URL, _FETCH and _NOT_FOUND. */
OcspAnswer ocspStatus(const Library& library, const TrustStore& store, const Certificate& certificate,
    const Certificate& responder, std::string_view url, const RequestSigner* signer);

} // namespace toolkit
