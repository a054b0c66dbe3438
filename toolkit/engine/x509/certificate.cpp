#include "toolkit/engine/x509/certificate.h"

#include "toolkit/engine/base/error.h"
#include "toolkit/engine/base/pem.h"
#include "toolkit/engine/x509/text.h"

namespace toolkit {

Certificate::Certificate(const Library& library, View bytes)
    : m_parsed(library, derOf(bytes, SIGIL_TK_CERT_MALFORMED))
{
}

Bytes Certificate::der() const { return parsed().der(); }

KeyHandle Certificate::publicKey() const
{
    KeyHandle key(X509_get_pubkey(get()));
    require(key != nullptr, SIGIL_TK_ALGORITHM, "public key");
    return key;
}

std::string Certificate::uid() const { return parsed().uid(); }

int Certificate::version() const { return parsed().version(); }

std::string Certificate::serialNumber() const { return parsed().serialNumber(); }

std::string Certificate::signatureAlgorithm() const { return parsed().signatureAlgorithm(); }

std::string Certificate::signature() const { return parsed().signature(); }

std::string Certificate::issuerName() const { return parsed().issuerName(); }

std::string Certificate::subjectName() const { return parsed().subjectName(); }

Bytes Certificate::subjectNameDer() const { return parsed().subjectNameDer(); }

std::time_t Certificate::notBefore() const { return parsed().notBefore(); }

std::time_t Certificate::notAfter() const { return parsed().notAfter(); }

int Certificate::remainingDays(std::time_t now) const
{
    constexpr std::time_t day = 24L * 60 * 60;
    const std::time_t seconds = notAfter() - now;
    return static_cast<int>(seconds >= 0 ? seconds / day : -((-seconds + day - 1) / day));
}

std::string Certificate::publicKeyAlgorithm() const { return parsed().publicKeyAlgorithm(); }

std::string Certificate::publicKeyLength() const { return parsed().publicKeyLength(); }

std::string Certificate::publicKeyText() const { return parsed().publicKeyText(); }

Bytes Certificate::publicKeyDer() const { return parsed().publicKeyDer(); }

std::optional<unsigned> Certificate::usageBits() const { return parsed().usageBits(); }

std::string Certificate::keyUsage() const { return usageText(usageBits().value_or(0)); }

std::string Certificate::basicConstraints() const { return parsed().basicConstraints(); }

bool Certificate::isAuthority() const { return parsed().isAuthority(); }

std::string Certificate::policies() const { return parsed().policies(); }

std::string Certificate::policyIds() const { return parsed().policyIds(); }

std::string Certificate::policyConstraints() const { return parsed().policyConstraints(); }

std::string Certificate::extendedKeyUsage() const { return parsed().extendedKeyUsage(); }

std::string Certificate::subjectAltName() const { return parsed().subjectAltName(); }

std::string Certificate::issuerAltName() const { return parsed().issuerAltName(); }

std::string Certificate::authorityKeyId() const { return parsed().authorityKeyId(); }

std::string Certificate::subjectKeyId() const { return parsed().subjectKeyId(); }

std::string Certificate::crlDistributionPoints() const { return parsed().crlDistributionPoints(); }

std::vector<std::string> Certificate::crlUrls() const { return parsed().crlUrls(); }

std::string Certificate::crlUrlText() const { return join(crlUrls(), ", "); }

std::string Certificate::authorityInfoAccess() const { return parsed().authorityInfoAccess(); }

std::vector<std::string> Certificate::issuerUrls() const { return parsed().issuerUrls(); }

std::vector<std::string> Certificate::responderUrls() const { return parsed().responderUrls(); }

std::optional<Bytes> Certificate::identifyData() const { return parsed().identifyData(); }

} // namespace toolkit
