// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "toolkit/engine/status/ocsp.h"

#include "toolkit/engine/base/error.h"
#include "toolkit/engine/keys/private_key.h"
#include "toolkit/engine/net/fetch.h"
#include "toolkit/engine/trust/issuer.h"
#include "toolkit/engine/trust/soundness.h"
#include "toolkit/engine/x509/text.h"

#include <algorithm>
#include <array>

namespace toolkit {
namespace {

using ResponseHandle = Handle<OCSP_RESPONSE, OCSP_RESPONSE_free>;
using CertIdHandle = Handle<OCSP_CERTID, OCSP_CERTID_free>;

CertIdHandle certIdOf(const Library& library, const Certificate& certificate, const Certificate& issuer)
{
    const DigestHandle sha1 = library.digest("SHA1");
    CertIdHandle id(OCSP_cert_to_id(sha1.get(), certificate.get(), issuer.get()));
    require(id != nullptr, SIGIL_TK_INTERNAL, "certificate identifier");
    return id;
}

void addNonce(const Library& library, OCSP_REQUEST* request)
{
    std::array nonce = library.nonce();
    require(OCSP_request_add1_nonce(request, nonce.data(), static_cast<int>(nonce.size())) == 1, SIGIL_TK_INTERNAL,
        "nonce");
}

void sign(const Library& library, OCSP_REQUEST* request, const RequestSigner& signer)
{
    checkKeyPair(library, signer.certificate, signer.keyInfo);
    const KeyHandle key = loadPrivateKey(library, signer.keyInfo);
    const DigestHandle sha256 = library.digest("SHA256");
    const int done = OCSP_request_sign(request, signer.certificate.get(), key.get(), sha256.get(), nullptr, 0);
    require(done == 1, SIGIL_TK_INTERNAL, "signature of the request");
}

bool isMeantForResponses(const Certificate& certificate)
{
    const bool isLimited = (X509_get_extension_flags(certificate.get()) & EXFLAG_XKUSAGE) != 0;
    return isLimited && (X509_get_extended_key_usage(certificate.get()) & XKU_OCSP_SIGN) != 0;
}

/** Whether a certificate may sign responses for an authority (RFC 6960, 4.2.2.2). */
bool maySign(const Certificate& candidate, const Certificate& issuer, std::time_t time)
{
    if (candidate.der() == issuer.der())
        return true;
    return isMeantForResponses(candidate) && issued(issuer, candidate) &&
        hasSigned(issuer.get(), candidate.get()) && candidate.notBefore() <= time && time <= candidate.notAfter();
}

/** Without nextUpdate there is always something newer (RFC 6960, 2.4), so only an answer of this moment counts. */
void requireCurrent(const ASN1_TIME* thisUpdate, const ASN1_TIME* nextUpdate, std::time_t time)
{
    const auto from = asn1Time(thisUpdate);
    const auto to = nextUpdate ? asn1Time(nextUpdate) : from;
    require(from && to, SIGIL_TK_OCSP_MALFORMED, "time");
    require(*from <= *to && *from <= time + clockTolerance && time <= *to + clockTolerance, SIGIL_TK_OCSP_STALE);
}

} // namespace

OcspResponse::OcspResponse(View der)
{
    const unsigned char* at = der.data();
    const ResponseHandle response(d2i_OCSP_RESPONSE(nullptr, &at, static_cast<long>(der.size())));
    require(response && at == der.data() + der.size(), SIGIL_TK_OCSP_MALFORMED);
    const int status = OCSP_response_status(response.get());
    require(status == OCSP_RESPONSE_STATUS_SUCCESSFUL, SIGIL_TK_OCSP_REFUSED, OCSP_response_status_str(status));
    m_basic.reset(OCSP_response_get1_basic(response.get()));
    require(m_basic != nullptr, SIGIL_TK_OCSP_MALFORMED);
}

std::vector<Certificate> OcspResponse::certificates(const Library& library) const
{
    const STACK_OF(X509)* const included = OCSP_resp_get0_certs(m_basic.get());
    const int count = std::max(sk_X509_num(included), 0); // -1 when none are included
    std::vector<Certificate> all;
    all.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i)
        all.emplace_back(library, encode<Bytes>(sk_X509_value(included, i), i2d_X509));
    return all;
}

bool OcspResponse::isSignedBy(const Library& library, const Certificate& certificate) const
{
    const X509_ALGOR* const algorithm = OCSP_resp_get0_tbs_sigalg(m_basic.get());
    const KeyHandle key = certificate.publicKey();
    return !isForgeable(algorithm, key.get()) &&
        ASN1_item_verify_ex(ASN1_ITEM_rptr(OCSP_RESPDATA), algorithm, OCSP_resp_get0_signature(m_basic.get()),
            OCSP_resp_get0_respdata(m_basic.get()), nullptr, key.get(), library.context(), nullptr) == 1;
}

Bytes OcspResponse::requireSigner(
    const Library& library, const Certificate& issuer, const Certificate& responder, std::time_t time) const
{
    const auto signedBy = [&](const Certificate& candidate) {
        return maySign(candidate, issuer, time) && isSignedBy(library, candidate);
    };
    if (signedBy(responder))
        return responder.der();
    require(responder.der() == issuer.der(), SIGIL_TK_OCSP_SIGNER);
    const std::vector<Certificate> included = certificates(library);
    const auto signer = std::find_if(included.begin(), included.end(), signedBy);
    require(signer != included.end(), SIGIL_TK_OCSP_SIGNER);
    return signer->der();
}

void OcspResponse::requireNonce(OCSP_REQUEST* request, bool mayBeAbsent) const
{
    constexpr int bothEqual = 1;
    constexpr int inRequestOnly = -1;
    const int found = OCSP_check_nonce(request, m_basic.get());
    require(found == bothEqual || (mayBeAbsent && found == inRequestOnly), SIGIL_TK_OCSP_NONCE);
}

int OcspResponse::indexOf(const Library& library, const Certificate& certificate, const Certificate& issuer) const
{
    const int index = OCSP_resp_find(m_basic.get(), certIdOf(library, certificate, issuer).get(), -1);
    require(index >= 0, SIGIL_TK_OCSP_NO_ANSWER);
    return index;
}

OcspAnswer OcspResponse::answerAt(int index, std::time_t time) const
{
    int reason = OcspAnswer::noReason;
    ASN1_GENERALIZEDTIME* revocation = nullptr;
    ASN1_GENERALIZEDTIME* thisUpdate = nullptr;
    ASN1_GENERALIZEDTIME* nextUpdate = nullptr;
    const int status = OCSP_single_get0_status(
        OCSP_resp_get0(m_basic.get(), index), &reason, &revocation, &thisUpdate, &nextUpdate);
    requireCurrent(thisUpdate, nextUpdate, time);
    if (status == V_OCSP_CERTSTATUS_GOOD)
        return {};
    if (status != V_OCSP_CERTSTATUS_REVOKED)
        return {SIGIL_TK_STATUS_UNKNOWN, {}};
    const auto revokedAt = asn1Time(revocation);
    require(revokedAt.has_value(), SIGIL_TK_OCSP_MALFORMED, "revocation time");
    return {SIGIL_TK_STATUS_REVOKED, revokedAt, reason};
}

OcspAnswer OcspResponse::answer(
    const Library& library, const Certificate& certificate, const Certificate& issuer, std::time_t time) const
{
    const OcspAnswer answer = answerAt(indexOf(library, certificate, issuer), time);
    require(answer.status != SIGIL_TK_STATUS_UNKNOWN, SIGIL_TK_OCSP_UNKNOWN);
    return answer;
}

OcspRequestHandle makeOcspRequest(
    const Library& library, const Certificate& certificate, const Certificate& issuer, const RequestSigner* signer)
{
    OcspRequestHandle request(OCSP_REQUEST_new());
    CertIdHandle id = certIdOf(library, certificate, issuer);
    require(request && OCSP_request_add0_id(request.get(), id.get()), SIGIL_TK_NO_MEMORY);
    static_cast<void>(id.release());
    addNonce(library, request.get());
    if (signer)
        sign(library, request.get(), *signer);
    return request;
}

OcspAnswer ocspStatus(const Library& library, const TrustStore& store, const Certificate& certificate,
    const Certificate& responder, std::string_view url, const RequestSigner* signer)
{
    const Certificate& issuer = issuerOf(store, certificate, &responder);
    const std::time_t time = store.time.value_or(std::time(nullptr));
    const OcspRequestHandle request = makeOcspRequest(library, certificate, issuer, signer);
    const OcspResponse response(
        post(url, "application/ocsp-request", encode<Bytes>(request.get(), i2d_OCSP_REQUEST), maximumAnswerSize));
    response.requireSigner(library, issuer, responder, time);
    response.requireNonce(request.get());
    return response.answer(library, certificate, issuer, time);
}

} // namespace toolkit
