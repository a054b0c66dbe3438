// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "toolkit/engine/status/ivs.h"

#include "toolkit/engine/base/der.h"
#include "toolkit/engine/base/error.h"
#include "toolkit/engine/base/file.h"
#include "toolkit/engine/base/oid.h"
#include "toolkit/engine/base/settings.h"
#include "toolkit/engine/keys/identity.h"
#include "toolkit/engine/messages/cms_parts.h"
#include "toolkit/engine/messages/sealed.h"
#include "toolkit/engine/net/fetch.h"
#include "toolkit/engine/x509/text.h"

#include <openssl/err.h>

#include <algorithm>
#include <cstdint>
#include <utility>
#include <vector>

namespace toolkit {
namespace {

constexpr unsigned signingUsage = KU_DIGITAL_SIGNATURE | KU_NON_REPUDIATION;

/** Query ::= SEQUENCE { queriedCerts, checks, validationPolicy, responseFlags }, as far as anything in it is wanted. */
Bytes query(const Certificate& certificate)
{
    const Bytes der = certificate.der();
    const auto fields = der::Reader(der).take(der::Sequence);
    require(fields.has_value(), SIGIL_TK_INTERNAL);
    const Bytes reference = der::element(der::Implicit0, {*fields});
    // The nonce would not come back in a response that the server has at hand. That it signs is the default.
    constexpr unsigned char no[]{0};
    const Bytes notCached = der::element(der::Implicit3Boolean, {no});
    return der::element(der::Sequence,
        {der::element(der::Implicit0, {reference}),
            der::element(der::Sequence, {der::oid(oid::scvpStatusCheckedPath)}),
            der::element(der::Sequence, {der::element(der::Sequence, {der::oid(oid::scvpDefaultPolicy)})}),
            der::element(der::Sequence, {notCached})});
}

bool equal(View left, View right) { return std::equal(left.begin(), left.end(), right.begin(), right.end()); }

/** A number that has 0 for its default; one that is out of bounds is -1. */
template <class Number>
std::int64_t numberOf(const Number* field, int (*get)(std::int64_t*, const Number*))
{
    std::int64_t value = 0;
    return !field || get(&value, field) == 1 ? value : -1;
}

/** What a client does not know and must not ignore. */
bool hasCritical(const STACK_OF(X509_EXTENSION) * extensions)
{
    return X509v3_get_ext_by_critical(extensions, 1, -1) >= 0;
}

scvp::ResponseHandle parseResponse(View der)
{
    const unsigned char* at = der.data();
    scvp::ResponseHandle response(scvp::d2i_CVResponse(nullptr, &at, static_cast<long>(der.size())));
    require(response && at == der.data() + der.size(), SIGIL_TK_IVS_MALFORMED);
    return response;
}

/** The response of a message that nobody signed; null, and no trace of the attempt in later error texts, when the message
 *  is not one. */
scvp::ResponseHandle parsePlain(View der)
{
    const unsigned char* at = der.data();
    ERR_set_mark();
    const scvp::PlainResponseHandle plain(scvp::d2i_PlainResponse(nullptr, &at, static_cast<long>(der.size())));
    ERR_pop_to_mark();
    if (!plain || at != der.data() + der.size() || dottedOid(plain->type) != oid::scvpResponse)
        return {};
    return scvp::ResponseHandle(std::exchange(plain->content, nullptr));
}

CmsHandle parseSigned(const Library& library, View der)
{
    CmsHandle cms = parseCms(library, verifiableForm(der, SIGIL_TK_IVS_MALFORMED), SIGIL_TK_IVS_MALFORMED);
    require(dottedOid(CMS_get0_eContentType(cms.get())) == oid::scvpResponse, SIGIL_TK_IVS_MALFORMED);
    return cms;
}

/** @param cms in its verifiable form, which has a content */
View contentOf(CMS_ContentInfo* cms) { return octets(*CMS_get0_content(cms)); }

/** The signature covers the type of what is signed through an attribute alone (RFC 5652, 5.3). Without it signed bytes of
 *  another kind could be passed off as a response. */
bool coversType(CMS_SignerInfo* signer)
{
    constexpr int onlyOne = -3;
    const auto* const type = static_cast<const ASN1_OBJECT*>(
        CMS_signed_get0_data_by_OBJ(signer, OBJ_nid2obj(NID_pkcs9_contentType), onlyOne, V_ASN1_OBJECT));
    return type && dottedOid(type) == oid::scvpResponse;
}

bool allCoverType(CMS_ContentInfo* cms)
{
    STACK_OF(CMS_SignerInfo)* const signers = CMS_get0_SignerInfos(cms);
    for (int i = 0; i < sk_CMS_SignerInfo_num(signers); ++i)
        if (!coversType(sk_CMS_SignerInfo_value(signers, i)))
            return false;
    return sk_CMS_SignerInfo_num(signers) > 0;
}

bool maySign(const Certificate& server, std::time_t time)
{
    const auto usage = server.usageBits();
    return server.notBefore() <= time && time <= server.notAfter() && (!usage || (*usage & signingUsage) != 0);
}

/** Whether every signature is the server's. Certificates in the message are not looked at. */
bool isSignedBy(CMS_ContentInfo* cms, const Certificate& server)
{
    const CertificatesHandle only(sk_X509_new_null());
    require(only && X509_add_cert(only.get(), server.get(), X509_ADD_FLAG_UP_REF) == 1, SIGIL_TK_NO_MEMORY);
    return CMS_verify(cms, only.get(), nullptr, nullptr, nullptr,
               CMS_BINARY | CMS_NOINTERN | CMS_NO_SIGNER_CERT_VERIFY) == 1;
}

/** The hash of @p data that stands in @p like when it is the right one. */
Bytes hashAs(const scvp::HashValue& like, const Library& library, View data)
{
    const DigestHandle algorithm =
        library.digest(like.algorithm ? dottedOid(like.algorithm->algorithm).c_str() : oid::sha1);
    Bytes hash(EVP_MAX_MD_SIZE);
    unsigned length = 0;
    require(EVP_Digest(data.data(), data.size(), hash.data(), &length, algorithm.get(), nullptr) == 1,
        SIGIL_TK_INTERNAL, "digest");
    hash.resize(length);
    return hash;
}

bool isAbout(const scvp::CertReference& subject, const Certificate& certificate)
{
    return subject.type == scvp::CertReference::Certificate &&
        encode<Bytes>(subject.value, i2d_ASN1_SEQUENCE_ANY) == certificate.der();
}

/** What the server says against a certificate, for people. */
std::string objections(const std::string& what, std::int64_t status, const STACK_OF(ASN1_OBJECT) * errors)
{
    std::vector<std::string> parts{what + " status " + std::to_string(status)};
    for (int i = 0; i < sk_ASN1_OBJECT_num(errors); ++i)
        parts.push_back(dottedOid(sk_ASN1_OBJECT_value(errors, i)));
    return join(parts, ", ");
}

/** The text with which a server explains an error, when it has one. */
std::string explanation(const scvp::ResponseStatus& status)
{
    const std::string number = "status " + std::to_string(numberOf(status.code, ASN1_ENUMERATED_get_int64));
    return status.message ? number + ", " + asn1Text(status.message) : number;
}

} // namespace

IvsRequest makeIvsRequest(const Library& library, const Certificate& certificate)
{
    const Bytes nonce = toBytes(library.nonce());
    const Bytes content =
        der::element(der::Sequence, {query(certificate), der::element(der::Implicit1OctetString, {nonce})});
    const Bytes message =
        der::element(der::Sequence, {der::oid(oid::scvpRequest), der::element(der::Explicit0, {content})});
    return {nonce, content, message};
}

IvsResponse::IvsResponse(const Library& library, View der)
    : m_response(parsePlain(der))
{
    if (!m_response) {
        m_signed = parseSigned(library, der);
        m_response = parseResponse(contentOf(m_signed.get()));
    }
    require(numberOf(m_response->version, ASN1_INTEGER_get_int64) == 1 && !hasCritical(m_response->extensions),
        SIGIL_TK_IVS_MALFORMED, "version or extension");
    require(numberOf(m_response->status->code, ASN1_ENUMERATED_get_int64) == 0, SIGIL_TK_IVS_REFUSED,
        explanation(*m_response->status));
}

void IvsResponse::requireSigner(const Certificate& server, std::time_t time) const
{
    require(m_signed != nullptr, SIGIL_TK_IVS_SIGNER, "no signature");
    require(maySign(server, time), SIGIL_TK_IVS_SIGNER, "validity or usage");
    require(isSignedBy(m_signed.get(), server) && allCoverType(m_signed.get()), SIGIL_TK_IVS_SIGNER);
}

void IvsResponse::requireAnswerTo(const Library& library, const IvsRequest& request) const
{
    require(
        m_response->nonce && equal(octets(m_response->nonce), request.nonce), SIGIL_TK_IVS_OTHER_REQUEST, "nonce");
    const scvp::RequestReference* const reference = m_response->request;
    require(reference && reference->type == scvp::RequestReference::Hash, SIGIL_TK_IVS_OTHER_REQUEST, "no hash");
    const scvp::HashValue& hash = *reference->value.hash;
    require(equal(octets(hash.value), hashAs(hash, library, request.content)), SIGIL_TK_IVS_OTHER_REQUEST, "hash");
}

void IvsResponse::requireMadeAt(std::time_t time) const
{
    const auto madeAt = asn1Time(m_response->producedAt);
    require(madeAt.has_value(), SIGIL_TK_IVS_MALFORMED, "time");
    require(*madeAt <= time + clockTolerance && time <= *madeAt + clockTolerance, SIGIL_TK_IVS_STALE);
}

void IvsResponse::requireValid(const Certificate& certificate) const
{
    require(sk_CertReply_num(m_response->replies) == 1, SIGIL_TK_IVS_NO_ANSWER);
    const scvp::CertReply& reply = *sk_CertReply_value(m_response->replies, 0);
    require(isAbout(*reply.subject, certificate), SIGIL_TK_IVS_NO_ANSWER, "certificate");
    require(!hasCritical(reply.extensions), SIGIL_TK_IVS_MALFORMED, "extension");
    const std::int64_t status = numberOf(reply.status, ASN1_ENUMERATED_get_int64);
    require(status == 0, SIGIL_TK_IVS_INVALID, objections("reply", status, reply.errors));
    require(sk_ReplyCheck_num(reply.checks) == 1, SIGIL_TK_IVS_NO_ANSWER, "checks");
    const scvp::ReplyCheck& check = *sk_ReplyCheck_value(reply.checks, 0);
    require(dottedOid(check.check) == oid::scvpStatusCheckedPath, SIGIL_TK_IVS_NO_ANSWER, "check");
    const std::int64_t result = numberOf(check.status, ASN1_INTEGER_get_int64);
    require(result == 0, SIGIL_TK_IVS_INVALID, objections("check", result, reply.errors));
}

void verifyByIvs(
    const Library& library, const std::string& confFile, const Certificate& certificate, const Certificate& server)
{
    const Secret settings = readFile(confFile);
    const std::string url = settingOf({chars(settings), settings.size()}, "IVS", "URL");
    require(!url.empty(), SIGIL_TK_URL, "no URL in section [IVS]");
    const IvsRequest request = makeIvsRequest(library, certificate);
    const IvsResponse response(
        library, post(url, "application/scvp-cv-request", request.message, maximumAnswerSize));
    const std::time_t now = std::time(nullptr);
    response.requireSigner(server, now);
    response.requireAnswerTo(library, request);
    response.requireMadeAt(now);
    response.requireValid(certificate);
}

void verifyIdentityByIvs(const Library& library, const std::string& confFile, const Certificate& certificate,
    View random, std::string_view idn, const Certificate& server)
{
    verifyByIvs(library, confFile, certificate, server);
    verifyIdentity(library, certificate, random, idn);
}

} // namespace toolkit
