// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "tools/sample-store/issuer.h"

#include "toolkit/engine/keys/identity.h"
#include "tools/sample-store/check.h"
#include "tools/sample-store/dates.h"
#include "tools/sample-store/extensions.h"

namespace sample {

namespace {

using toolkit::X509Handle;

constexpr int authorityKeyBits = 2048;
constexpr std::time_t oneYear = 365 * oneDay;
constexpr std::string_view anyPolicy[] = {"2.5.29.32.0"};

/** What every certificate begins with. */
X509Handle begin(const DistinguishedName& subject, const toolkit::Bytes& serial, EVP_PKEY* key)
{
    X509Handle cert(check(X509_new(), "allocate a certificate"));
    const toolkit::NumberHandle number(BN_bin2bn(serial.data(), static_cast<int>(serial.size()), nullptr));
    check(BN_to_ASN1_INTEGER(number.get(), X509_get_serialNumber(cert.get())), "set the serial number");
    check(X509_set_version(cert.get(), X509_VERSION_3), "set the version");
    check(X509_set_subject_name(cert.get(), subject.toX509().get()), "set the subject");
    check(X509_set_pubkey(cert.get(), key), "set the public key");
    addSubjectKeyId(cert.get());
    return cert;
}

void setValidity(X509* cert, std::time_t notBefore, std::time_t notAfter)
{
    check(ASN1_TIME_set(X509_getm_notBefore(cert), notBefore), "set the validity");
    check(ASN1_TIME_set(X509_getm_notAfter(cert), notAfter), "set the validity");
}

void sign(X509* cert, const X509* issuer, EVP_PKEY* key, const EVP_MD* hash)
{
    check(X509_set_issuer_name(cert, X509_get_subject_name(issuer)), "set the issuer");
    check(X509_sign(cert, key, hash), "sign a certificate");
}

/** The root is like the one in use: it says that it is an authority and nothing about its key's usage. */
Issuer makeRoot(EVP_PKEY* key, std::time_t now)
{
    X509Handle cert = begin(DistinguishedName(rootName), {1}, key);
    setValidity(cert.get(), now - 10 * oneYear, now + 10 * oneYear);
    addAuthorityConstraints(cert.get(), -1);
    addPolicies(cert.get(), anyPolicy, {}, false);
    sign(cert.get(), cert.get(), key, EVP_sha256());
    return {std::move(cert), key};
}

Issuer makeAuthority(
    const Authority& authority, EVP_PKEY* key, unsigned char serial, const Issuer& root, std::time_t now)
{
    const DistinguishedName name(authority.dn);
    X509Handle cert = begin(name, {0x10, serial}, key);
    setValidity(cert.get(), now - 5 * oneYear, now + 5 * oneYear);
    addAuthorityKeyId(cert.get(), root.certificate.get());
    addKeyUsage(cert.get(), {KeyCertSign, CrlSign});
    addPolicies(cert.get(), anyPolicy, authority.cpsUrl, true);
    addIdentityData(cert.get(), toolkit::encodeIdentifyData({name.commonName(), {}}));
    addAuthorityConstraints(cert.get(), 0);
    addPolicyConstraints(cert.get());
    addCrlDistributionPoint(cert.get(), authority.crlUrl);
    sign(cert.get(), root.certificate.get(), root.key, EVP_sha256());
    return {std::move(cert), key};
}

/** Short keys come from the days of SHA-1. */
const EVP_MD* hashFor(int keyBits) { return keyBits < 2048 ? EVP_sha1() : EVP_sha256(); }

toolkit::Bytes nextSerial(toolkit::Bytes serial)
{
    ++serial.back(); // even before, so nothing is carried
    return serial;
}

} // namespace

Issuers::Issuers(std::time_t now, std::size_t keys)
    : m_now(now)
    , m_rootKey(1)
    , m_keys(keys)
    , m_root(makeRoot(m_rootKey.key(authorityKeyBits, 0), now))
{
}

const Issuer& Issuers::issuerOf(const Authority& authority)
{
    const auto found = m_authorities.find(&authority);
    if (found != m_authorities.end())
        return found->second;
    const std::size_t number = m_authorities.size() + 1;
    return m_authorities[&authority] = makeAuthority(
               authority, m_keys.key(authorityKeyBits, number), static_cast<unsigned char>(number), m_root, m_now);
}

X509Handle Issuers::beginUserCertificate(const PlannedCertificate& planned, EVP_PKEY* key, bool keyManagement)
{
    const Kind& kind = *planned.kind;
    const auto signing = std::span<const std::string_view>(kind.policies);
    const auto km = std::span<const std::string_view>(&kind.kmPolicy, 1);
    X509Handle cert = begin(planned.subject, keyManagement ? nextSerial(planned.serial) : planned.serial, key);
    setValidity(cert.get(), planned.notBefore, planned.notAfter);
    addAuthorityKeyId(cert.get(), certificateOf(*kind.authority));
    addPolicies(cert.get(), keyManagement && !kind.kmPolicy.empty() ? km : signing, kind.authority->cpsUrl,
        kind.family != Family::Gpki);
    return cert;
}

X509Handle Issuers::finishUserCertificate(const PlannedCertificate& planned, X509Handle cert)
{
    const Authority& authority = *planned.kind->authority;
    addCrlDistributionPoint(cert.get(), authority.crlUrl);
    addStatusResponder(cert.get(), authority.ocspUrl);
    const Issuer& issuer = issuerOf(authority);
    sign(cert.get(), issuer.certificate.get(), issuer.key, hashFor(planned.keyBits));
    return cert;
}

X509Handle Issuers::issueSigning(const PlannedCertificate& planned, EVP_PKEY* key, toolkit::View identifyData)
{
    X509Handle cert = beginUserCertificate(planned, key, false);
    addKeyUsage(cert.get(), {DigitalSignature, NonRepudiation});
    if (!identifyData.empty())
        addIdentityData(cert.get(), identifyData);
    return finishUserCertificate(planned, std::move(cert));
}

X509Handle Issuers::issueKeyManagement(const PlannedCertificate& planned, EVP_PKEY* key)
{
    X509Handle cert = beginUserCertificate(planned, key, true);
    if (planned.kind->family == Family::Gpki)
        addKeyUsage(cert.get(), {KeyEncipherment, DataEncipherment});
    else
        addKeyUsage(cert.get(), {KeyEncipherment});
    return finishUserCertificate(planned, std::move(cert));
}

} // namespace sample
