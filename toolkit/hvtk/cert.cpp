// HVTK_CERT_: the loaded certificate and its fields.

#include "toolkit/engine/base/face.h"
#include "toolkit/engine/x509/text.h"

#include <ctime>

using namespace toolkit;

namespace {

// Buffers whose size is fixed by the callers rather than passed.
constexpr int timeCapacity = 25;
constexpr int algorithmCapacity = 50;
constexpr int keyLengthCapacity = 20;

} // namespace

TOOLKIT_FUNCTION HVTK_CERT_Load(void* context, BINSTR* certificate)
{
    return call(context, [&](Context& state) { state.load({state.library(), in(certificate)}); });
}

TOOLKIT_FUNCTION HVTK_CERT_Unload(void* context)
{
    return call(context, [](Context& state) { state.unload(); });
}

TOOLKIT_FUNCTION HVTK_CERT_GetUID(void* context, int capacity, char* out)
{
    return identify(context, capacity, out, &Certificate::uid);
}

TOOLKIT_FUNCTION HVTK_CERT_GetVersion(void* context, int* version)
{
    return call(context, [&](Context& state) { putValue(state.certificate().version(), version); });
}

TOOLKIT_FUNCTION HVTK_CERT_GetSerialNum(void* context, int capacity, char* out)
{
    return identify(context, capacity, out, &Certificate::serialNumber);
}

TOOLKIT_FUNCTION HVTK_CERT_GetSignatureAlgorithm(void* context, int capacity, char* out)
{
    return describe(context, capacity, out, &Certificate::signatureAlgorithm);
}

TOOLKIT_FUNCTION HVTK_CERT_GetIssuerName(void* context, int capacity, char* out)
{
    return identify(context, capacity, out, &Certificate::issuerName);
}

TOOLKIT_FUNCTION HVTK_CERT_GetValidity(void* context, char* notBefore, char* notAfter)
{
    return call(context, [&](Context& state) {
        require(notBefore && notAfter, SIGIL_TK_ARGUMENT);
        const std::string from = timeText(state.certificate().notBefore());
        const std::string to = timeText(state.certificate().notAfter());
        putText(from, timeCapacity, notBefore);
        putText(to, timeCapacity, notAfter);
    });
}

TOOLKIT_FUNCTION HVTK_CERT_GetSubjectName(void* context, int capacity, char* out)
{
    return identify(context, capacity, out, &Certificate::subjectName);
}

TOOLKIT_FUNCTION HVTK_CERT_GetSubjectName_DERFormat(void* context, BINSTR* out)
{
    return call(context, [&](Context& state) { put(state.certificate().subjectNameDer(), out); });
}

TOOLKIT_FUNCTION HVTK_CERT_GetPubKey(void* context, int capacity, char* algorithm, char* publicKey)
{
    return call(context, [&](Context& state) {
        require(algorithm && publicKey && capacity >= 1, SIGIL_TK_ARGUMENT);
        putText(state.certificate().publicKeyAlgorithm(), algorithmCapacity, algorithm);
        putText(state.certificate().publicKeyText(), capacity, publicKey);
    });
}

TOOLKIT_FUNCTION HVTK_CERT_GetPubKey2(void* context, char* algorithm, char* keyLength, BINSTR* publicKey)
{
    return call(context, [&](Context& state) {
        require(algorithm && keyLength, SIGIL_TK_ARGUMENT);
        put(state.certificate().publicKeyDer(), publicKey);
        putText(state.certificate().publicKeyAlgorithm(), algorithmCapacity, algorithm);
        putText(state.certificate().publicKeyLength(), keyLengthCapacity, keyLength);
    });
}

TOOLKIT_FUNCTION HVTK_CERT_GetSignature(void* context, int capacity, char* out)
{
    return describe(context, capacity, out, &Certificate::signature);
}

TOOLKIT_FUNCTION HVTK_CERT_GetKeyUsage(void* context, int capacity, char* out)
{
    return describe(context, capacity, out, &Certificate::keyUsage);
}

TOOLKIT_FUNCTION HVTK_CERT_GetBasicConstraints(void* context, int capacity, char* out)
{
    return describe(context, capacity, out, &Certificate::basicConstraints);
}

TOOLKIT_FUNCTION HVTK_CERT_GetCertPolicy(void* context, int capacity, char* out)
{
    return describe(context, capacity, out, &Certificate::policies);
}

TOOLKIT_FUNCTION HVTK_CERT_GetCertPolicy_PolicyID(void* context, int capacity, char* out)
{
    return describe(context, capacity, out, &Certificate::policyIds);
}

TOOLKIT_FUNCTION HVTK_CERT_GetPolicyConstraints(void* context, int capacity, char* out)
{
    return describe(context, capacity, out, &Certificate::policyConstraints);
}

TOOLKIT_FUNCTION HVTK_CERT_GetExtKeyUsage(void* context, int capacity, char* out)
{
    return describe(context, capacity, out, &Certificate::extendedKeyUsage);
}

TOOLKIT_FUNCTION HVTK_CERT_GetSubjectAltName(void* context, int capacity, char* out)
{
    return describe(context, capacity, out, &Certificate::subjectAltName);
}

TOOLKIT_FUNCTION HVTK_CERT_GetIssuerAltName(void* context, int capacity, char* out)
{
    return describe(context, capacity, out, &Certificate::issuerAltName);
}

TOOLKIT_FUNCTION HVTK_CERT_GetAuthKeyID(void* context, int capacity, char* out)
{
    return describe(context, capacity, out, &Certificate::authorityKeyId);
}

TOOLKIT_FUNCTION HVTK_CERT_GetSubKeyID(void* context, int capacity, char* out)
{
    return describe(context, capacity, out, &Certificate::subjectKeyId);
}

TOOLKIT_FUNCTION HVTK_CERT_GetCRLDP(void* context, int capacity, char* out)
{
    return describe(context, capacity, out, &Certificate::crlDistributionPoints);
}

TOOLKIT_FUNCTION HVTK_CERT_GetCRLDP_URL(void* context, int capacity, char* out)
{
    return describe(context, capacity, out, &Certificate::crlUrlText);
}

TOOLKIT_FUNCTION HVTK_CERT_GetAIA(void* context, int capacity, char* out)
{
    return describe(context, capacity, out, &Certificate::authorityInfoAccess);
}

TOOLKIT_FUNCTION HVTK_CERT_GetRemainDays(void* context, BINSTR* certificate, int* days)
{
    return call(context, [&](Context& state) {
        putValue(Certificate(state.library(), in(certificate)).remainingDays(std::time(nullptr)), days);
    });
}
