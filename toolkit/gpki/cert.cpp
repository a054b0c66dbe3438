// GPKI_CERT_: the loaded certificate and its fields.

#include "toolkit/engine/base/face.h"
#include "toolkit/engine/x509/object_list.h"
#include "toolkit/engine/x509/text.h"

#include <ctime>

using namespace toolkit;

TOOLKIT_FUNCTION GPKI_CERT_Load(void* context, BINSTR* certificate)
{
    return call(context, [&](Context& state) { state.load({state.library(), in(certificate)}); });
}

TOOLKIT_FUNCTION GPKI_CERT_Unload(void* context)
{
    return call(context, [](Context& state) { state.unload(); });
}

TOOLKIT_FUNCTION GPKI_CERT_GetUID(void* context, int capacity, char* out)
{
    return identify(context, capacity, out, &Certificate::uid);
}

TOOLKIT_FUNCTION GPKI_CERT_GetVersion(void* context, int* version)
{
    return call(context, [&](Context& state) { putValue(state.certificate().version(), version); });
}

TOOLKIT_FUNCTION GPKI_CERT_GetSerialNum(void* context, int capacity, char* out)
{
    return identify(context, capacity, out, &Certificate::serialNumber);
}

TOOLKIT_FUNCTION GPKI_CERT_GetSignatureAlgorithm(void* context, int capacity, char* out)
{
    return describe(context, capacity, out, &Certificate::signatureAlgorithm);
}

TOOLKIT_FUNCTION GPKI_CERT_GetIssuerName(void* context, int capacity, char* out)
{
    return identify(context, capacity, out, &Certificate::issuerName);
}

TOOLKIT_FUNCTION GPKI_CERT_GetSubjectName(void* context, int capacity, char* out)
{
    return identify(context, capacity, out, &Certificate::subjectName);
}

/** One text with both dates: "A ~ B". Callers pass the capacity that they have for one date, and a buffer for both: at least
 *  42 bytes. */
TOOLKIT_FUNCTION GPKI_CERT_GetValidity(void* context, int capacity, char* out)
{
    return call(context, [&](Context& state) {
        const std::string from = timeText(state.certificate().notBefore());
        const std::string to = timeText(state.certificate().notAfter());
        require(capacity > static_cast<int>(from.size()), SIGIL_TK_BUFFER_TOO_SMALL);
        const std::string both = from + " ~ " + to;
        putText(both, static_cast<int>(both.size()) + 1, out);
    });
}

TOOLKIT_FUNCTION GPKI_CERT_GetPubKeyAlg(void* context, int capacity, char* out)
{
    return describe(context, capacity, out, &Certificate::publicKeyAlgorithm);
}

TOOLKIT_FUNCTION GPKI_CERT_GetPubKeyLen(void* context, int capacity, char* out)
{
    return describe(context, capacity, out, &Certificate::publicKeyLength);
}

TOOLKIT_FUNCTION GPKI_CERT_GetPubKey(void* context, int capacity, char* out)
{
    return describe(context, capacity, out, &Certificate::publicKeyText);
}

TOOLKIT_FUNCTION GPKI_CERT_GetSignature(void* context, int capacity, char* out)
{
    return describe(context, capacity, out, &Certificate::signature);
}

TOOLKIT_FUNCTION GPKI_CERT_GetKeyUsage(void* context, int capacity, char* out)
{
    return describe(context, capacity, out, &Certificate::keyUsage);
}

TOOLKIT_FUNCTION GPKI_CERT_GetBasicConstraints(void* context, int capacity, char* out)
{
    return describe(context, capacity, out, &Certificate::basicConstraints);
}

TOOLKIT_FUNCTION GPKI_CERT_GetCertPolicy(void* context, int capacity, char* out)
{
    return describe(context, capacity, out, &Certificate::policies);
}

TOOLKIT_FUNCTION GPKI_CERT_GetCertPolicyID(void* context, int capacity, char* out)
{
    return describe(context, capacity, out, &Certificate::policyIds);
}

TOOLKIT_FUNCTION GPKI_CERT_GetExtKeyUsage(void* context, int capacity, char* out)
{
    return describe(context, capacity, out, &Certificate::extendedKeyUsage);
}

TOOLKIT_FUNCTION GPKI_CERT_GetSubjectAltName(void* context, int capacity, char* out)
{
    return describe(context, capacity, out, &Certificate::subjectAltName);
}

TOOLKIT_FUNCTION GPKI_CERT_GetAuthKeyID(void* context, int capacity, char* out)
{
    return describe(context, capacity, out, &Certificate::authorityKeyId);
}

TOOLKIT_FUNCTION GPKI_CERT_GetSubKeyID(void* context, int capacity, char* out)
{
    return describe(context, capacity, out, &Certificate::subjectKeyId);
}

TOOLKIT_FUNCTION GPKI_CERT_GetCRLDP(void* context, int capacity, char* out)
{
    return describe(context, capacity, out, &Certificate::crlDistributionPoints);
}

TOOLKIT_FUNCTION GPKI_CERT_GetAIA(void* context, int capacity, char* out)
{
    return describe(context, capacity, out, &Certificate::authorityInfoAccess);
}

TOOLKIT_FUNCTION GPKI_CERT_GetRemainDays(void* context, BINSTR* certificate, int* days)
{
    return call(context, [&](Context& state) {
        putValue(Certificate(state.library(), in(certificate)).remainingDays(std::time(nullptr)), days);
    });
}

TOOLKIT_FUNCTION GPKI_CERT_AddCert(void* context, BINSTR* certificate, BINSTR* list)
{
    return call(context, [&](Context& state) {
        ObjectList certificates(inOptional(list));
        certificates.add(Certificate(state.library(), in(certificate)).der());
        replace(certificates.encode(), list);
    });
}

TOOLKIT_FUNCTION GPKI_CERT_GetCertCount(void* context, BINSTR* list, int* count)
{
    return call(context, [&](Context&) { putValue(static_cast<int>(ObjectList(in(list)).size()), count); });
}

/** Callers come with a record that already holds data of the toolkit, which is released. */
TOOLKIT_FUNCTION GPKI_CERT_GetCert(void* context, BINSTR* list, int index, BINSTR* certificate)
{
    return call(context, [&](Context&) { replace(ObjectList(in(list)).at(index), certificate); });
}
