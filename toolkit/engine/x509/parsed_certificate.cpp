// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "toolkit/engine/x509/parsed_certificate.h"

#include "toolkit/engine/base/error.h"
#include "toolkit/engine/base/oid.h"
#include "toolkit/engine/x509/certificate_view.h"
#include "toolkit/engine/x509/text.h"

#include <openssl/objects.h>

namespace toolkit {

namespace {

X509Handle parse(OSSL_LIB_CTX* context, View der)
{
    X509Handle fresh(X509_new_ex(context, nullptr));
    require(fresh != nullptr, SIGIL_TK_NO_MEMORY);
    const unsigned char* at = der.data();
    X509Handle parsed = decodeInto(
        std::move(fresh), [&](X509** target) { return d2i_X509(target, &at, static_cast<long>(der.size())); });
    require(parsed != nullptr, SIGIL_TK_CERT_MALFORMED);
    return parsed;
}

/** Bits of a key as OpenSSL counts them; @p otherwise when it cannot decode the key. */
int keyBits(const X509* certificate, int otherwise)
{
    const EVP_PKEY* const key = X509_get0_pubkey(certificate);
    if (key)
        return EVP_PKEY_get_bits(key);
    requireMemory();
    return otherwise;
}

} // namespace

ParsedCertificate::ParsedCertificate(const Library& library, View der)
    : m_library(&library)
    , m_read(parse(library.readingContext(), der))
{
}

X509* ParsedCertificate::get() const
{
    if (!m_judged)
        m_judged = parse(m_library->context(), der());
    return m_judged.get();
}

Bytes ParsedCertificate::der() const { return encode<Bytes>(read(), i2d_X509); }

std::string ParsedCertificate::uid() const
{
    const X509_NAME* name = X509_get_subject_name(read());
    int last = -1;
    for (int i = -1; (i = X509_NAME_get_index_by_NID(name, NID_commonName, i)) >= 0;)
        last = i;
    return last < 0 ? std::string() : asn1Text(X509_NAME_ENTRY_get_data(X509_NAME_get_entry(name, last)));
}

int ParsedCertificate::version() const { return static_cast<int>(X509_get_version(read())) + 1; }

std::string ParsedCertificate::serialNumber() const
{
    const ASN1_INTEGER* serial = X509_get0_serialNumber(read());
    const bool negative = (ASN1_STRING_type(serial) & V_ASN1_NEG) != 0;
    return (negative ? "-" : "") + hexText(octets(serial));
}

std::string ParsedCertificate::signatureAlgorithm() const
{
    const X509_ALGOR* algorithm = X509_get0_tbs_sigalg(read());
    const int nid = OBJ_obj2nid(algorithm->algorithm);
    return nid == NID_undef ? dottedOid(algorithm->algorithm) : OBJ_nid2ln(nid);
}

std::string ParsedCertificate::signature() const
{
    const ASN1_BIT_STRING* bits = nullptr;
    X509_get0_signature(&bits, nullptr, read());
    return hexText(octets(bits));
}

std::string ParsedCertificate::issuerName() const { return nameText(X509_get_issuer_name(read())); }

std::string ParsedCertificate::subjectName() const { return nameText(X509_get_subject_name(read())); }

Bytes ParsedCertificate::subjectNameDer() const
{
    return encode<Bytes>(X509_get_subject_name(read()), i2d_X509_NAME);
}

std::time_t ParsedCertificate::notBefore() const
{
    const auto time = asn1Time(X509_get0_notBefore(read()));
    require(time.has_value(), SIGIL_TK_CERT_MALFORMED, "start of validity");
    return *time;
}

std::time_t ParsedCertificate::notAfter() const
{
    const auto time = asn1Time(X509_get0_notAfter(read()));
    require(time.has_value(), SIGIL_TK_CERT_MALFORMED, "end of validity");
    return *time;
}

std::string ParsedCertificate::publicKeyAlgorithm() const
{
    ASN1_OBJECT* type = nullptr;
    X509_PUBKEY_get0_param(&type, nullptr, nullptr, nullptr, X509_get_X509_PUBKEY(read()));
    switch (const int nid = OBJ_obj2nid(type)) {
    case NID_rsaEncryption:
        return "RSA";
    case NID_X9_62_id_ecPublicKey:
        return "EC";
    case NID_undef:
        return dottedOid(type);
    default:
        return OBJ_nid2sn(nid);
    }
}

std::string ParsedCertificate::publicKeyLength() const
{
    const ASN1_BIT_STRING* bits = X509_get0_pubkey_bitstr(read());
    const auto modulus = publicKeyAlgorithm() == "RSA" ? modulusBits(octets(bits)) : std::nullopt;
    return std::to_string(modulus ? *modulus : keyBits(get(), 8 * bits->length)) + " Bits";
}

std::string ParsedCertificate::publicKeyText() const
{
    const ASN1_BIT_STRING* bits = X509_get0_pubkey_bitstr(read());
    return hexText(octets(bits));
}

Bytes ParsedCertificate::publicKeyDer() const
{
    return encode<Bytes>(X509_get_X509_PUBKEY(read()), i2d_X509_PUBKEY);
}

} // namespace toolkit
