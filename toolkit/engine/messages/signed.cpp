// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "toolkit/engine/messages/signed.h"

#include "toolkit/engine/base/der.h"
#include "toolkit/engine/base/digest.h"
#include "toolkit/engine/base/error.h"
#include "toolkit/engine/base/oid.h"
#include "toolkit/engine/keys/private_key.h"
#include "toolkit/engine/messages/cms_parts.h"
#include "toolkit/engine/x509/text.h"

#include <openssl/core_names.h>

#include <algorithm>
#include <array>

namespace toolkit {
namespace {

constexpr int knownOptions = SIGIL_TK_MESSAGE_DETACHED | SIGIL_TK_MESSAGE_NO_ATTRIBUTES |
    SIGIL_TK_MESSAGE_NO_CERTIFICATE | SIGIL_TK_MESSAGE_CA_PUBS;

bool has(const SigningRequest& request, int option) { return (request.options & option) != 0; }

/** AlgorithmIdentifier of RSASSA-PSS with the parameters of the scheme. */
AlgorithmHandle pssAlgorithm(const Library& library, const SigningRequest& request)
{
    const DigestHandle digest = hashAlgorithm(library, request.scheme.hash);
    const KeyHandle key = request.certificate.publicKey();
    const DigestContextHandle context(EVP_MD_CTX_new());
    EVP_PKEY_CTX* options = nullptr; // owned by the context
    std::array<unsigned char, 256> der{};
    std::array<OSSL_PARAM, 2> wanted{
        OSSL_PARAM_construct_octet_string(OSSL_SIGNATURE_PARAM_ALGORITHM_ID, der.data(), der.size()),
        OSSL_PARAM_construct_end()};
    const bool told = context &&
        EVP_DigestVerifyInit_ex(context.get(), &options, EVP_MD_get0_name(digest.get()), library.context(), nullptr,
            key.get(), nullptr) == 1 &&
        usePss(options) && EVP_PKEY_CTX_get_params(options, wanted.data()) == 1;
    require(told, SIGIL_TK_ALGORITHM, "RSASSA-PSS");
    const unsigned char* at = der.data();
    AlgorithmHandle algorithm(d2i_X509_ALGOR(nullptr, &at, static_cast<long>(wanted[0].return_size)));
    require(algorithm != nullptr, SIGIL_TK_ALGORITHM, "RSASSA-PSS");
    return algorithm;
}

/** Says in the signer's record how the signature is made. OpenSSL has already said it for everything but PSS. */
void setSignatureAlgorithm(const Library& library, const SigningRequest& request, CMS_SignerInfo* signer)
{
    if (!signsWithPss(request.scheme, request.certificate.publicKey().get()))
        return;
    X509_ALGOR* algorithm = nullptr;
    CMS_SignerInfo_get0_algs(signer, nullptr, nullptr, nullptr, &algorithm);
    require(X509_ALGOR_copy(algorithm, pssAlgorithm(library, request).get()) == 1, SIGIL_TK_INTERNAL, "algorithm");
}

void addAttribute(CMS_SignerInfo* signer, int nid, int type, const void* value, int length = -1)
{
    require(CMS_signed_add1_attr_by_NID(signer, nid, type, value, length) == 1, SIGIL_TK_INTERNAL, "attribute");
}

void addAttributes(CMS_SignerInfo* signer, const SigningRequest& request, const char* contentType, View digest)
{
    const ObjectHandle type(OBJ_txt2obj(contentType, 1));
    addAttribute(signer, NID_pkcs9_contentType, V_ASN1_OBJECT, type.get());
    addAttribute(
        signer, NID_pkcs9_messageDigest, V_ASN1_OCTET_STRING, digest.data(), static_cast<int>(digest.size()));
    const Handle<ASN1_TIME, ASN1_TIME_free> time(
        ASN1_TIME_set(nullptr, request.time ? *request.time : std::time(nullptr)));
    require(time != nullptr, SIGIL_TK_ENCODING, "signing time");
    addAttribute(signer, NID_pkcs9_signingTime, ASN1_STRING_type(time.get()), time.get());
}

/** DER of the SET OF signed attributes: what a signature covers. */
Bytes attributesDer(const CMS_SignerInfo* signer)
{
    const int count = std::max(CMS_signed_get_attr_count(signer), 0); // -1 for none
    std::vector<Bytes> attributes;
    attributes.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i)
        attributes.push_back(encode<Bytes>(CMS_signed_get_attr(signer, i), i2d_X509_ATTRIBUTE));
    std::sort(attributes.begin(), attributes.end());
    Bytes content;
    for (const Bytes& attribute : attributes)
        content.insert(content.end(), attribute.begin(), attribute.end());
    return der::element(der::Set, {content});
}

void addCertificate(CMS_ContentInfo* cms, const Certificate& certificate)
{
    const CertificatesHandle present(CMS_get1_certs(cms));
    for (int i = 0; present && i < sk_X509_num(present.get()); ++i)
        if (X509_cmp(sk_X509_value(present.get(), i), certificate.get()) == 0)
            return;
    require(CMS_add1_cert(cms, certificate.get()) == 1, SIGIL_TK_INTERNAL, "certificate");
}

void addCertificates(CMS_ContentInfo* cms, const SigningRequest& request)
{
    if (!has(request, SIGIL_TK_MESSAGE_NO_CERTIFICATE))
        addCertificate(cms, request.certificate);
    if (has(request, SIGIL_TK_MESSAGE_CA_PUBS))
        for (const Certificate& authority : request.authorities)
            addCertificate(cms, authority);
}

/** A record for the signer, with everything but the signature. OpenSSL gets the public key alone: it never signs. */
CMS_SignerInfo* addRecord(const Library& library, CMS_ContentInfo* cms, const SigningRequest& request, View digest)
{
    const bool bare = has(request, SIGIL_TK_MESSAGE_NO_ATTRIBUTES);
    const DigestHandle algorithm = hashAlgorithm(library, request.scheme.hash);
    const unsigned flags = CMS_PARTIAL | CMS_NOCERTS | CMS_NOSMIMECAP | (bare ? CMS_NOATTR : 0U);
    CMS_SignerInfo* const signer = CMS_add1_signer(
        cms, request.certificate.get(), request.certificate.publicKey().get(), algorithm.get(), flags);
    require(signer != nullptr, SIGIL_TK_ALGORITHM, "signer");
    setSignatureAlgorithm(library, request, signer);
    if (!bare)
        addAttributes(signer, request, dottedOid(CMS_get0_eContentType(cms)).c_str(), digest);
    addCertificates(cms, request);
    return signer;
}

/** What the signature of a record is made of: its attributes' hash, or the content's when it has none. */
Bytes signedDigest(
    const Library& library, const SigningRequest& request, const CMS_SignerInfo* signer, const Bytes& contentDigest)
{
    if (has(request, SIGIL_TK_MESSAGE_NO_ATTRIBUTES))
        return contentDigest;
    return hash(library, request.scheme.hash, attributesDer(signer));
}

void setSignature(CMS_SignerInfo* signer, View signature)
{
    require(ASN1_STRING_set(
                CMS_SignerInfo_get0_signature(signer), signature.data(), static_cast<int>(signature.size())) == 1,
        SIGIL_TK_NO_MEMORY);
}

CmsHandle emptySigned(const Library& library)
{
    CmsHandle cms(
        CMS_sign_ex(nullptr, nullptr, nullptr, nullptr, CMS_PARTIAL | CMS_DETACHED, library.context(), nullptr));
    require(cms != nullptr, SIGIL_TK_INTERNAL, "message");
    return cms;
}

Bytes digestOf(const Library& library, int algorithm, const std::function<void(const Sink&)>& content)
{
    Hasher hasher(library, algorithm);
    content([&](View piece) { hasher.update(piece); });
    return hasher.finish();
}

MessageLayout sign(const Library& library, CmsHandle cms, const SigningRequest& request, const DigestSigner& signer,
    const Bytes& contentDigest)
{
    CMS_SignerInfo* const record = addRecord(library, cms.get(), request, contentDigest);
    setSignature(record, signer(signedDigest(library, request, record, contentDigest)));
    return layoutOf(encodeCms(cms.get()));
}

/** The digest that another signer states in its attributes, under the same hash. */
Bytes statedDigest(CMS_ContentInfo* cms, const EVP_MD* algorithm)
{
    for (CMS_SignerInfo* signer : signersOf(cms)) {
        const auto* const stated = static_cast<const ASN1_OCTET_STRING*>(
            onlyAttribute(CMS_signed_get0_data_by_OBJ, signer, NID_pkcs9_messageDigest, V_ASN1_OCTET_STRING));
        if (stated && digestNid(signer) == EVP_MD_get_type(algorithm))
            return toBytes(octets(stated));
    }
    fail(SIGIL_TK_CMS_CONTENT, "a detached message with other hashes or without signed attributes");
}

/** The certificates in a message, made anew in the engine's library context. */
std::vector<Certificate> certificatesIn(const Library& library, CMS_ContentInfo* cms)
{
    const CertificatesHandle found(CMS_get1_certs(cms));
    std::vector<Certificate> certificates;
    for (int i = 0; found && i < sk_X509_num(found.get()); ++i)
        certificates.emplace_back(library, encode<Bytes>(sk_X509_value(found.get(), i), i2d_X509));
    return certificates;
}

const Certificate& signerCertificate(CMS_SignerInfo* signer, const std::vector<Certificate>& certificates)
{
    const auto found = std::find_if(certificates.begin(), certificates.end(),
        [&](const Certificate& certificate) { return CMS_SignerInfo_cert_cmp(signer, certificate.get()) == 0; });
    require(found != certificates.end(), SIGIL_TK_CMS_NOBODY, "the signer's certificate is not in the message");
    return *found;
}

bool hasAttributes(const CMS_SignerInfo* signer) { return CMS_signed_get_attr_count(signer) >= 0; }

/** The signature covers the type of the content through an attribute alone (RFC 5652, 5.3): without it signed bytes of one
 *  kind could be passed off as another. */
void requireCoveredType(CMS_SignerInfo* signer, const std::string& contentType)
{
    if (!hasAttributes(signer)) {
        require(contentType == oid::data, SIGIL_TK_CMS_MALFORMED, "no signed attributes");
        return;
    }
    const auto* const type = static_cast<const ASN1_OBJECT*>(
        onlyAttribute(CMS_signed_get0_data_by_OBJ, signer, NID_pkcs9_contentType, V_ASN1_OBJECT));
    require(type && dottedOid(type) == contentType, SIGIL_TK_CMS_CONTENT, "type of the content");
}

/** Hashes the content for every signer; @p take receives it too. */
BioHandle hashContent(CMS_ContentInfo* cms, const Message& message, const Input* detached, const Sink& take)
{
    require(message.hasContent() || detached, SIGIL_TK_CMS_CONTENT, "detached message");
    BIO* const nowhere = BIO_new(BIO_s_null());
    require(nowhere != nullptr, SIGIL_TK_NO_MEMORY); // without one OpenSSL would take another place for the content
    BioHandle hashes(CMS_dataInit(cms, nowhere));
    if (!hashes)
        BIO_free(nowhere);
    require(hashes != nullptr, SIGIL_TK_ALGORITHM, "hash");
    const auto update = [&](View piece) {
        const int length = static_cast<int>(piece.size());
        require(BIO_write(hashes.get(), piece.data(), length) == length, SIGIL_TK_INTERNAL, "hash");
        if (take)
            take(piece);
    };
    if (message.hasContent())
        message.content(update);
    else
        detached->pieces(update);
    return hashes;
}

void verifySignature(CMS_SignerInfo* signer, const Certificate& certificate, BIO* hashes, bool detached)
{
    CMS_SignerInfo_set1_signer_cert(signer, certificate.get());
    const bool covered = hasAttributes(signer);
    if (covered)
        require(CMS_SignerInfo_verify(signer) == 1, SIGIL_TK_SIGNATURE);
    require(CMS_SignerInfo_verify_content(signer, hashes) == 1,
        covered || detached ? SIGIL_TK_CMS_CONTENT : SIGIL_TK_SIGNATURE);
}

std::optional<std::time_t> signingTime(CMS_SignerInfo* signer)
{
    const int at = CMS_signed_get_attr_by_NID(signer, NID_pkcs9_signingTime, -1);
    X509_ATTRIBUTE* const attribute = at < 0 ? nullptr : CMS_signed_get_attr(signer, at);
    const ASN1_TYPE* const value = attribute ? X509_ATTRIBUTE_get0_type(attribute, 0) : nullptr;
    if (!value || (value->type != V_ASN1_UTCTIME && value->type != V_ASN1_GENERALIZEDTIME))
        return {};
    return asn1Time(value->value.asn1_string);
}

Bytes timeStampToken(CMS_SignerInfo* signer)
{
    const auto* const token = static_cast<const ASN1_STRING*>(
        onlyAttribute(CMS_unsigned_get0_data_by_OBJ, signer, NID_id_smime_aa_timeStampToken, V_ASN1_SEQUENCE));
    return token ? toBytes(octets(token)) : Bytes();
}

std::vector<Bytes> otherThanSigners(
    const std::vector<Certificate>& certificates, const std::vector<SignerRecord>& signers)
{
    std::vector<Bytes> others;
    for (const Certificate& certificate : certificates) {
        const Bytes der = certificate.der();
        if (std::none_of(signers.begin(), signers.end(), [&](const auto& one) { return one.certificate == der; }))
            others.push_back(der);
    }
    return others;
}

} // namespace

DigestSigner digestSigner(const Library& library, const SigningRequest& request, View keyInfo)
{
    checkKeyPair(library, request.certificate, keyInfo);
    return [&library, scheme = request.scheme, key = toSecret(keyInfo)](
               View digest) { return signDigest(library, scheme, key, digest); };
}

void requireMessageOptions(int options, int contradicting)
{
    require((options & ~knownOptions) == 0, SIGIL_TK_OPTION, "option " + std::to_string(options));
    require((options & contradicting) == 0, SIGIL_TK_OPTION, "an option that this function cannot follow");
}

Bytes digestOf(const Library& library, int algorithm, const Input& content)
{
    return digestOf(library, algorithm, [&](const Sink& take) { content.pieces(take); });
}

MessageLayout signContent(
    const Library& library, const SigningRequest& request, const DigestSigner& signer, const Bytes& contentDigest)
{
    return sign(library, emptySigned(library), request, signer, contentDigest);
}

MessageLayout addSigner(
    const Library& library, const SigningRequest& request, const DigestSigner& signer, const Message& message)
{
    CmsHandle cms = parseCms(library, message.require(oid::signedData).layout().skeleton());
    const bool bare = has(request, SIGIL_TK_MESSAGE_NO_ATTRIBUTES);
    require(!bare || message.hasContent(), SIGIL_TK_CMS_CONTENT, "detached message");
    require(
        !bare || message.layout().holds == oid::data, SIGIL_TK_OPTION, "the type of the content needs attributes");
    const Bytes digest = message.hasContent()
        ? digestOf(library, request.scheme.hash, [&](const Sink& take) { message.content(take); })
        : statedDigest(cms.get(), hashAlgorithm(library, request.scheme.hash).get());
    return sign(library, std::move(cms), request, signer, digest);
}

Bytes prepareSignature(
    const Library& library, const SigningRequest& request, const Bytes& contentDigest, MessageLayout& prepared)
{
    const CmsHandle cms = emptySigned(library);
    CMS_SignerInfo* const record = addRecord(library, cms.get(), request, contentDigest);
    setSignature(record, {});
    prepared = layoutOf(encodeCms(cms.get()));
    return attributesDer(record);
}

MessageLayout completeSignature(const Library& library, const PendingMessage& pending, View signature)
{
    const CmsHandle cms = parseCms(library, pending.skeleton);
    CMS_SignerInfo* const signer = signersOf(cms.get()).at(0);
    setSignature(signer, signature);
    const Certificate certificate(library, pending.certificate);
    CMS_SignerInfo_set1_signer_cert(signer, certificate.get());
    require(CMS_SignerInfo_verify(signer) == 1, SIGIL_TK_SIGNATURE);
    return layoutOf(encodeCms(cms.get()));
}

VerifiedMessage verifyMessage(
    const Library& library, const Message& message, const Input* detached, const Sink& take)
{
    const CmsHandle cms = parseCms(library, message.require(oid::signedData).layout().skeleton());
    const auto signers = signersOf(cms.get());
    require(!signers.empty(), SIGIL_TK_CMS_NOBODY, "nobody signed the message");
    const std::vector<Certificate> certificates = certificatesIn(library, cms.get());
    const BioHandle hashes = hashContent(cms.get(), message, detached, take);
    VerifiedMessage verified;
    for (CMS_SignerInfo* signer : signers) {
        const Certificate& certificate = signerCertificate(signer, certificates);
        requireCoveredType(signer, message.layout().holds);
        verifySignature(signer, certificate, hashes.get(), !message.hasContent());
        verified.signers.push_back({certificate.der(), signingTime(signer),
            toBytes(octets(CMS_SignerInfo_get0_signature(signer))), timeStampToken(signer)});
    }
    verified.others = otherThanSigners(certificates, verified.signers);
    return verified;
}

void verifySigners(const Library& library, const TrustStore& store, const VerifiedMessage& message)
{
    constexpr unsigned signingUsage = KU_DIGITAL_SIGNATURE | KU_NON_REPUDIATION;
    VerifyRequest request;
    for (const Bytes& other : message.others)
        request.authorities.emplace_back(library, other);
    for (const SignerRecord& signer : message.signers) {
        const Certificate certificate(library, signer.certificate);
        require((certificate.usageBits().value_or(signingUsage) & signingUsage) != 0, SIGIL_TK_VERIFY_USAGE);
        verifyCertificate(library, store, certificate, request);
    }
}

} // namespace toolkit
