// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "toolkit/engine/time/time_stamp_token.h"

#include "toolkit/engine/base/error.h"
#include "toolkit/engine/base/file.h"
#include "toolkit/engine/base/oid.h"
#include "toolkit/engine/messages/cms_parts.h"
#include "toolkit/engine/messages/sealed.h"
#include "toolkit/engine/trust/soundness.h"
#include "toolkit/engine/x509/text.h"

#include <openssl/ess.h>

#include <algorithm>

namespace toolkit {
namespace {

constexpr int onlyOne = -3;

std::string numberText(const ASN1_INTEGER* number) { return number ? hexText(octets(number)) : std::string(); }

int64_t numberOf(const ASN1_INTEGER* number)
{
    int64_t value = 0;
    return number && ASN1_INTEGER_get_int64(&value, number) == 1 ? value : 0;
}

/** Seconds with their fraction, as short as it can be. */
std::string accuracyText(const TS_ACCURACY* accuracy)
{
    if (!accuracy)
        return {};
    const int64_t micros =
        1000 * numberOf(TS_ACCURACY_get_millis(accuracy)) + numberOf(TS_ACCURACY_get_micros(accuracy));
    std::string fraction = std::to_string(1000000 + micros).substr(1); // both are bounded to three digits
    fraction.erase(fraction.find_last_not_of('0') + 1);
    const std::string whole = std::to_string(numberOf(TS_ACCURACY_get_seconds(accuracy)));
    return fraction.empty() ? whole : whole + "." + fraction;
}

/** A certificate for time stamps and nothing else (RFC 3161, 2.3). OpenSSL's own summary leaves out purposes that it does not
 *  know. */
bool isForTimeStamps(const Certificate& certificate)
{
    constexpr unsigned signing = KU_DIGITAL_SIGNATURE | KU_NON_REPUDIATION;
    int critical = 0;
    const Handle<EXTENDED_KEY_USAGE, EXTENDED_KEY_USAGE_free> purposes(static_cast<EXTENDED_KEY_USAGE*>(
        X509_get_ext_d2i(certificate.get(), NID_ext_key_usage, &critical, nullptr)));
    return purposes && critical == 1 && sk_ASN1_OBJECT_num(purposes.get()) == 1 &&
        OBJ_obj2nid(sk_ASN1_OBJECT_value(purposes.get(), 0)) == NID_time_stamp &&
        (certificate.usageBits().value_or(signing) & signing) != 0;
}

template <class T, class Decoder>
T* signedAttribute(const CMS_SignerInfo* signer, int nid, Decoder decode)
{
    const auto* const sequence = static_cast<const ASN1_STRING*>(
        CMS_signed_get0_data_by_OBJ(signer, OBJ_nid2obj(nid), onlyOne, V_ASN1_SEQUENCE));
    if (!sequence)
        return nullptr;
    const unsigned char* at = ASN1_STRING_get0_data(sequence);
    return decode(nullptr, &at, ASN1_STRING_length(sequence));
}

/** The signature covers which certificate it was made with: another one with the same key does not count. */
bool namesSigner(const CMS_SignerInfo* signer, const std::vector<Certificate>& signerFirst)
{
    const Handle<ESS_SIGNING_CERT, ESS_SIGNING_CERT_free> first(
        signedAttribute<ESS_SIGNING_CERT>(signer, NID_id_smime_aa_signingCertificate, d2i_ESS_SIGNING_CERT));
    const Handle<ESS_SIGNING_CERT_V2, ESS_SIGNING_CERT_V2_free> second(signedAttribute<ESS_SIGNING_CERT_V2>(
        signer, NID_id_smime_aa_signingCertificateV2, d2i_ESS_SIGNING_CERT_V2));
    const CertificatesHandle chain(sk_X509_new_null());
    require(chain != nullptr, SIGIL_TK_NO_MEMORY);
    for (const Certificate& certificate : signerFirst)
        require(X509_add_cert(chain.get(), certificate.get(), X509_ADD_FLAG_UP_REF) == 1, SIGIL_TK_NO_MEMORY);
    constexpr int mustBeThere = 1;
    return OSSL_ESS_check_signing_certs(first.get(), second.get(), chain.get(), mustBeThere) == 1;
}

/** Whether anybody can have signed. */
bool isForgeable(CMS_SignerInfo* signer, const Certificate& certificate)
{
    X509_ALGOR* digest = nullptr;
    CMS_SignerInfo_get0_algs(signer, nullptr, nullptr, &digest, nullptr);
    return isBrokenDigest(OBJ_obj2nid(digest->algorithm)) || isShortKey(certificate.publicKey().get());
}

} // namespace

TimeStampToken::TimeStampToken(const Library& library, View der)
    : m_cms(parseCms(library, verifiableForm(der, SIGIL_TK_TSP_MALFORMED), SIGIL_TK_TSP_MALFORMED))
{
    require(OBJ_obj2nid(CMS_get0_eContentType(m_cms.get())) == NID_id_smime_ct_TSTInfo, SIGIL_TK_TSP_MALFORMED);
    const View bytes = octets(*CMS_get0_content(m_cms.get())); // the verifiable form has one
    const unsigned char* infoAt = bytes.data();
    m_info.reset(d2i_TS_TST_INFO(nullptr, &infoAt, static_cast<long>(bytes.size())));
    require(m_info && infoAt == bytes.data() + bytes.size() && TS_TST_INFO_get_version(m_info.get()) == 1,
        SIGIL_TK_TSP_MALFORMED);
}

std::vector<Certificate> TimeStampToken::certificates(const Library& library) const
{
    const CertificatesHandle held(CMS_get1_certs(m_cms.get()));
    const int count = std::max(sk_X509_num(held.get()), 0); // -1 for no list
    std::vector<Certificate> all;
    all.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i)
        all.emplace_back(library, encode<Bytes>(sk_X509_value(held.get(), i), i2d_X509));
    return all;
}

CMS_SignerInfo* TimeStampToken::signer() const
{
    STACK_OF(CMS_SignerInfo)* const signers = CMS_get0_SignerInfos(m_cms.get());
    require(sk_CMS_SignerInfo_num(signers) == 1, SIGIL_TK_TSP_MALFORMED, "one signer is wanted");
    return sk_CMS_SignerInfo_value(signers, 0);
}

std::vector<Certificate> TimeStampToken::signerFirst(const Library& library) const
{
    std::vector<Certificate> all = certificates(library);
    CMS_SignerInfo* const by = signer();
    const auto own = std::find_if(all.begin(), all.end(),
        [&](const Certificate& candidate) { return CMS_SignerInfo_cert_cmp(by, candidate.get()) == 0; });
    require(own != all.end(), SIGIL_TK_TSP_SIGNER, "the token does not hold it");
    std::rotate(all.begin(), own, own + 1);
    return all;
}

Bytes TimeStampToken::authority(const Library& library) const
{
    const std::vector<Certificate> all = certificates(library);
    CMS_SignerInfo* const by = signer();
    const auto own = std::find_if(all.begin(), all.end(),
        [&](const Certificate& candidate) { return CMS_SignerInfo_cert_cmp(by, candidate.get()) == 0; });
    return own == all.end() ? Bytes() : own->der();
}

Bytes TimeStampToken::verify(const Library& library, const TrustStore& store) const
{
    std::vector<Certificate> all = signerFirst(library);
    const Certificate& authority = all.front();
    require(isForTimeStamps(authority), SIGIL_TK_TSP_SIGNER, "its certificate is not for time stamps");
    require(!isForgeable(signer(), authority), SIGIL_TK_SIGNATURE, "anybody can have made it");
    const CertificatesHandle only(sk_X509_new_null());
    require(only && X509_add_cert(only.get(), authority.get(), X509_ADD_FLAG_UP_REF) == 1, SIGIL_TK_NO_MEMORY);
    constexpr unsigned flags = CMS_BINARY | CMS_NOINTERN | CMS_NO_SIGNER_CERT_VERIFY;
    require(CMS_verify(m_cms.get(), only.get(), nullptr, nullptr, nullptr, flags) == 1, SIGIL_TK_SIGNATURE);
    require(namesSigner(signer(), all), SIGIL_TK_TSP_SIGNER, "the token names another certificate");
    require(authority.notBefore() <= time() && time() <= authority.notAfter(), SIGIL_TK_TSP_TIME);
    Bytes der = authority.der();
    if (!store.trusted.empty()) {
        VerifyRequest request;
        request.time = time();
        request.authorities = std::move(all);
        verifyCertificate(library, store, {library, der}, request);
    }
    return der;
}

DigestHandle TimeStampToken::imprintHash(const Library& library) const
{
    const X509_ALGOR* const algorithm = TS_MSG_IMPRINT_get_algo(TS_TST_INFO_get_msg_imprint(m_info.get()));
    require(!isBrokenDigest(OBJ_obj2nid(algorithm->algorithm)), SIGIL_TK_TSP_IMPRINT, "the hash is broken");
    return library.digest(dottedOid(algorithm->algorithm).c_str());
}

void TimeStampToken::requireImprint(View hash) const
{
    const View imprint = octets(TS_MSG_IMPRINT_get_msg(TS_TST_INFO_get_msg_imprint(m_info.get())));
    require(std::equal(hash.begin(), hash.end(), imprint.begin(), imprint.end()), SIGIL_TK_TSP_IMPRINT);
}

void TimeStampToken::requireAbout(const Library& library, View data) const
{
    const DigestHandle algorithm = imprintHash(library);
    Bytes hash(EVP_MAX_MD_SIZE);
    unsigned length = 0;
    require(EVP_Digest(data.data(), data.size(), hash.data(), &length, algorithm.get(), nullptr) == 1,
        SIGIL_TK_INTERNAL, "digest");
    requireImprint({hash.data(), length});
}

void TimeStampToken::requireAboutFile(const Library& library, const std::string& path) const
{
    const DigestHandle algorithm = imprintHash(library);
    const DigestContextHandle context(EVP_MD_CTX_new());
    Bytes hash(EVP_MAX_MD_SIZE);
    unsigned length = 0;
    require(context && EVP_DigestInit_ex(context.get(), algorithm.get(), nullptr) == 1, SIGIL_TK_NO_MEMORY);
    readPieces(path, [&](View piece) { EVP_DigestUpdate(context.get(), piece.data(), piece.size()); });
    require(EVP_DigestFinal_ex(context.get(), hash.data(), &length) == 1, SIGIL_TK_INTERNAL, "digest");
    requireImprint({hash.data(), length});
}

std::time_t TimeStampToken::time() const
{
    const auto value = asn1Time(TS_TST_INFO_get_time(m_info.get()));
    require(value.has_value(), SIGIL_TK_TSP_MALFORMED, "time");
    return *value;
}

TimeStampTexts TimeStampToken::texts() const
{
    TS_TST_INFO* const info = m_info.get();
    TS_MSG_IMPRINT* const imprint = TS_TST_INFO_get_msg_imprint(info);
    const ASN1_OBJECT* const hash = TS_MSG_IMPRINT_get_algo(imprint)->algorithm;
    const int nid = OBJ_obj2nid(hash);
    return {std::to_string(TS_TST_INFO_get_version(info)), accuracyText(TS_TST_INFO_get_accuracy(info)),
        blankOid(TS_TST_INFO_get_policy_id(info)), nid == NID_undef ? dottedOid(hash) : OBJ_nid2sn(nid),
        hexText(octets(TS_MSG_IMPRINT_get_msg(imprint))), numberText(TS_TST_INFO_get_serial(info)),
        timeText(time()), numberText(TS_TST_INFO_get_nonce(info))};
}

} // namespace toolkit
