#include "handles.h"
#include "text.h"

#include <sigildesk/crypto.h>

#include <array>
#include <iostream>

namespace host {

namespace {

using Getter = int (*)(void* handle, int capacity, char* buffer);

struct Field {
    const char* name;
    Getter get;
};

constexpr std::array<Field, 15> kFields{{
    {"version", CertGetVersion},
    {"serial number", CertGetSerialNum},
    {"signature algorithm", CertGetSignatureAlgorithm},
    {"issuer", CertGetIssuerName},
    {"subject", CertGetSubjectName},
    {"unique identifier", CertGetUID},
    {"key usage", CertGetKeyUsage},
    {"extended key usage", CertGetExtKeyUsage},
    {"basic constraints", CertGetBasicConstraints},
    {"policy", CertGetPolicyID},
    {"alternative name", CertGetSubjectAltName},
    {"authority key id", CertGetAuthKeyID},
    {"subject key id", CertGetSubKeyID},
    {"revocation list", CertGetCRLDP},
    {"authority access", CertGetAIA},
}};

void printFields(const Crypto& crypto)
{
    for (const Field& field : kFields) {
        std::array<char, 2049> text{};
        if (field.get(crypto.handle(), 2048, text.data()) == 0 && text[0])
            printField(field.name, text.data());
    }
    std::array<char, 41> from{}, to{};
    if (CertGetValidity(crypto.handle(), 40, from.data(), 40, to.data()) == 0)
        printField("validity", std::string(from.data()) + " ~ " + to.data());
}

} // namespace

int showCertificate(const Setting& setting, int toolkitType, const std::string& file)
{
    const std::string certificate = readFile(file);
    const Crypto crypto(setting, toolkitType);
    if (crypto.status() != 0) {
        std::cerr << "The toolkit could not be opened (code " << crypto.status() << ").\n";
        return failed;
    }
    Bytes bytes(crypto, certificate);
    if (const int status = CertLoad(crypto.handle(), bytes.get()); status != 0) {
        std::cerr << "Not a certificate (code " << status << "): " << crypto.errorText() << "\n";
        return failed;
    }
    printFields(crypto);
    CertUnLoad(crypto.handle());
    return done;
}

} // namespace host
