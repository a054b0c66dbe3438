#include "toolkit/engine/x509/certificate.h"

#include "toolkit/engine/base/error.h"
#include "toolkit/engine/base/oid.h"
#include "toolkit/engine/base/pem.h"
#include "toolkit/engine/x509/text.h"

#include <openssl/objects.h>

namespace toolkit {

Certificate::Certificate(const Library& library, View bytes)
{
    const Bytes der = derOf(bytes, SIGIL_TK_CERT_MALFORMED);
    X509Handle fresh(X509_new_ex(library.context(), nullptr));
    require(fresh != nullptr, SIGIL_TK_NO_MEMORY);
    const unsigned char* at = der.data();
    m_x509 = decodeInto(
        std::move(fresh), [&](X509** target) { return d2i_X509(target, &at, static_cast<long>(der.size())); });
    require(m_x509 != nullptr, SIGIL_TK_CERT_MALFORMED);
}

Bytes Certificate::der() const { return encode<Bytes>(get(), i2d_X509); }

KeyHandle Certificate::publicKey() const
{
    KeyHandle key(X509_get_pubkey(get()));
    require(key != nullptr, SIGIL_TK_ALGORITHM, "public key");
    return key;
}

std::string Certificate::uid() const
{
    const X509_NAME* name = X509_get_subject_name(get());
    int last = -1;
    for (int i = -1; (i = X509_NAME_get_index_by_NID(name, NID_commonName, i)) >= 0;)
        last = i;
    return last < 0 ? std::string() : asn1Text(X509_NAME_ENTRY_get_data(X509_NAME_get_entry(name, last)));
}

int Certificate::version() const { return static_cast<int>(X509_get_version(get())) + 1; }

std::string Certificate::serialNumber() const
{
    const ASN1_INTEGER* serial = X509_get0_serialNumber(get());
    const View octets(ASN1_STRING_get0_data(serial), static_cast<std::size_t>(ASN1_STRING_length(serial)));
    const bool negative = (ASN1_STRING_type(serial) & V_ASN1_NEG) != 0;
    return (negative ? "-" : "") + hexText(octets);
}

std::string Certificate::signatureAlgorithm() const
{
    const X509_ALGOR* algorithm = X509_get0_tbs_sigalg(get());
    const int nid = OBJ_obj2nid(algorithm->algorithm);
    return nid == NID_undef ? dottedOid(algorithm->algorithm) : OBJ_nid2ln(nid);
}

std::string Certificate::signature() const
{
    const ASN1_BIT_STRING* bits = nullptr;
    X509_get0_signature(&bits, nullptr, get());
    return hexText({bits->data, static_cast<std::size_t>(bits->length)});
}

std::string Certificate::issuerName() const { return nameText(X509_get_issuer_name(get())); }

std::string Certificate::subjectName() const { return nameText(X509_get_subject_name(get())); }

Bytes Certificate::subjectNameDer() const { return encode<Bytes>(X509_get_subject_name(get()), i2d_X509_NAME); }

std::time_t Certificate::notBefore() const
{
    const auto time = asn1Time(X509_get0_notBefore(get()));
    require(time.has_value(), SIGIL_TK_CERT_MALFORMED, "start of validity");
    return *time;
}

std::time_t Certificate::notAfter() const
{
    const auto time = asn1Time(X509_get0_notAfter(get()));
    require(time.has_value(), SIGIL_TK_CERT_MALFORMED, "end of validity");
    return *time;
}

int Certificate::remainingDays(std::time_t now) const
{
    constexpr std::time_t day = 24L * 60 * 60;
    const std::time_t seconds = notAfter() - now;
    return static_cast<int>(seconds >= 0 ? seconds / day : -((-seconds + day - 1) / day));
}

std::string Certificate::publicKeyAlgorithm() const
{
    ASN1_OBJECT* type = nullptr;
    X509_PUBKEY_get0_param(&type, nullptr, nullptr, nullptr, X509_get_X509_PUBKEY(get()));
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

std::string Certificate::publicKeyLength() const
{
    const EVP_PKEY* key = X509_get0_pubkey(get());
    if (key)
        return std::to_string(EVP_PKEY_get_bits(key)) + " Bits";
    const ASN1_BIT_STRING* bits = X509_get0_pubkey_bitstr(get());
    return std::to_string(8 * bits->length) + " Bits";
}

std::string Certificate::publicKeyText() const
{
    const ASN1_BIT_STRING* bits = X509_get0_pubkey_bitstr(get());
    return hexText({bits->data, static_cast<std::size_t>(bits->length)});
}

Bytes Certificate::publicKeyDer() const { return encode<Bytes>(X509_get_X509_PUBKEY(get()), i2d_X509_PUBKEY); }

} // namespace toolkit
