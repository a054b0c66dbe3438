// GPKI_CERT_: the loaded certificate and its fields.

#include "toolkit/calls/cert.h"
#include "toolkit/calls/util.h"
#include "toolkit/engine/base/face.h"
#include "toolkit_abi/gpki.h"

using namespace toolkit;

TOOLKIT_FUNCTION GPKI_CERT_Load(void* context, BINSTR* certificate)
{
    return call(context, calls::certLoad, certificate);
}

TOOLKIT_FUNCTION GPKI_CERT_Unload(void* context) { return call(context, calls::certUnload); }

TOOLKIT_FUNCTION GPKI_CERT_GetUID(void* context, int capacity, char* out)
{
    return identify(context, capacity, out, &Certificate::uid);
}

TOOLKIT_FUNCTION GPKI_CERT_GetVersion(void* context, int* version)
{
    return call(context, calls::certGetVersion, version);
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

TOOLKIT_FUNCTION GPKI_CERT_GetValidity(void* context, int capacity, char* out)
{
    return call(context, calls::certGetValidityRange, capacity, out);
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
    return call(context, calls::certGetRemainDays, certificate, days);
}

TOOLKIT_FUNCTION GPKI_CERT_AddCert(void* context, BINSTR* certificate, BINSTR* list)
{
    return call(context, calls::certAddCert, certificate, list);
}

TOOLKIT_FUNCTION GPKI_CERT_GetCertCount(void* context, BINSTR* list, int* count)
{
    return call(context, calls::utilGetObjectCount, list, count);
}

TOOLKIT_FUNCTION GPKI_CERT_GetCert(void* context, BINSTR* list, int index, BINSTR* certificate)
{
    return call(context, calls::certGetCert, list, index, certificate);
}
