// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "toolkit/engine/x509/certificate.h"

#include "toolkit/engine/base/error.h"
#include "toolkit/engine/base/pem.h"
#include "toolkit/engine/x509/text.h"

namespace toolkit {

using Parsed = ParsedCertificate;

Certificate::Certificate(const Library& library, View bytes)
    : m_library(&library)
    , m_der(derOf(bytes, SIGIL_TK_CERT_MALFORMED))
    , m_view(CertificateView::of(m_der))
{
    if (!m_view)
        parsed();
}

const Parsed& Certificate::parsed() const
{
    if (!m_parsed)
        m_parsed.emplace(*m_library, m_der);
    return *m_parsed;
}

/** A field as the view has it, and as OpenSSL has it when the view does not know. */
template <class T, class View>
T Certificate::field(View view, T (Parsed::*otherwise)() const) const
{
    auto known = m_view ? std::optional<T>(((*m_view).*view)()) : std::nullopt;
    return known ? *std::move(known) : (parsed().*otherwise)();
}

Bytes Certificate::der() const { return m_view ? m_der : parsed().der(); }

KeyHandle Certificate::publicKey() const
{
    KeyHandle key(X509_get_pubkey(get()));
    require(key != nullptr, SIGIL_TK_ALGORITHM, "public key");
    return key;
}

std::string Certificate::uid() const { return field(&CertificateView::uid, &Parsed::uid); }

int Certificate::version() const { return field(&CertificateView::version, &Parsed::version); }

std::string Certificate::serialNumber() const
{
    return field(&CertificateView::serialNumber, &Parsed::serialNumber);
}

std::string Certificate::signatureAlgorithm() const
{
    return field(&CertificateView::signatureAlgorithm, &Parsed::signatureAlgorithm);
}

std::string Certificate::signature() const { return field(&CertificateView::signature, &Parsed::signature); }

std::string Certificate::issuerName() const { return field(&CertificateView::issuerName, &Parsed::issuerName); }

std::string Certificate::subjectName() const { return field(&CertificateView::subjectName, &Parsed::subjectName); }

Bytes Certificate::subjectNameDer() const
{
    return field(&CertificateView::subjectNameDer, &Parsed::subjectNameDer);
}

std::time_t Certificate::notBefore() const { return field(&CertificateView::notBefore, &Parsed::notBefore); }

std::time_t Certificate::notAfter() const { return field(&CertificateView::notAfter, &Parsed::notAfter); }

int Certificate::remainingDays(std::time_t now) const
{
    constexpr std::time_t day = 24L * 60 * 60;
    const std::time_t seconds = notAfter() - now;
    return static_cast<int>(seconds >= 0 ? seconds / day : -((-seconds + day - 1) / day));
}

std::string Certificate::publicKeyAlgorithm() const
{
    return field(&CertificateView::publicKeyAlgorithm, &Parsed::publicKeyAlgorithm);
}

std::string Certificate::publicKeyLength() const
{
    return field(&CertificateView::publicKeyLength, &Parsed::publicKeyLength);
}

std::string Certificate::publicKeyText() const
{
    return field(&CertificateView::publicKeyText, &Parsed::publicKeyText);
}

Bytes Certificate::publicKeyDer() const { return field(&CertificateView::publicKeyDer, &Parsed::publicKeyDer); }

std::optional<unsigned> Certificate::usageBits() const
{
    return field(&CertificateView::usageBits, &Parsed::usageBits);
}

std::string Certificate::keyUsage() const { return usageText(usageBits().value_or(0)); }

std::string Certificate::basicConstraints() const { return parsed().basicConstraints(); }

bool Certificate::isAuthority() const { return parsed().isAuthority(); }

std::string Certificate::policies() const { return field(&CertificateView::policies, &Parsed::policies); }

std::string Certificate::policyIds() const { return field(&CertificateView::policyIds, &Parsed::policyIds); }

std::string Certificate::policyConstraints() const { return parsed().policyConstraints(); }

std::string Certificate::extendedKeyUsage() const { return parsed().extendedKeyUsage(); }

std::string Certificate::subjectAltName() const
{
    return field(&CertificateView::subjectAltName, &Parsed::subjectAltName);
}

std::string Certificate::issuerAltName() const { return parsed().issuerAltName(); }

std::string Certificate::authorityKeyId() const
{
    return field(&CertificateView::authorityKeyId, &Parsed::authorityKeyId);
}

std::string Certificate::subjectKeyId() const
{
    return field(&CertificateView::subjectKeyId, &Parsed::subjectKeyId);
}

std::string Certificate::crlDistributionPoints() const
{
    return field(&CertificateView::crlDistributionPoints, &Parsed::crlDistributionPoints);
}

std::vector<std::string> Certificate::crlUrls() const { return parsed().crlUrls(); }

std::string Certificate::crlUrlText() const { return join(crlUrls(), ", "); }

std::string Certificate::authorityInfoAccess() const
{
    return field(&CertificateView::authorityInfoAccess, &Parsed::authorityInfoAccess);
}

std::vector<std::string> Certificate::issuerUrls() const { return parsed().issuerUrls(); }

std::vector<std::string> Certificate::responderUrls() const { return parsed().responderUrls(); }

std::optional<Bytes> Certificate::identifyData() const { return parsed().identifyData(); }

} // namespace toolkit
