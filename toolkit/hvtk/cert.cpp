// HVTK_CERT_: the loaded certificate and its fields.

#include "toolkit/calls/cert.h"
#include "toolkit/engine/base/face.h"
#include "toolkit_abi/hvtk.h"

using namespace toolkit;

TOOLKIT_FUNCTION HVTK_CERT_Load(void* context, BINSTR* certificate)
{
    return call(context, calls::certLoad, certificate);
}

TOOLKIT_FUNCTION HVTK_CERT_Unload(void* context) { return call(context, calls::certUnload); }

TOOLKIT_FUNCTION HVTK_CERT_GetUID(void* context, int capacity, char* out)
{
    return identify(context, capacity, out, &Certificate::uid);
}

TOOLKIT_FUNCTION HVTK_CERT_GetVersion(void* context, int* version)
{
    return call(context, calls::certGetVersion, version);
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
    return call(context, calls::certGetValidity, notBefore, notAfter);
}

TOOLKIT_FUNCTION HVTK_CERT_GetSubjectName(void* context, int capacity, char* out)
{
    return identify(context, capacity, out, &Certificate::subjectName);
}

TOOLKIT_FUNCTION HVTK_CERT_GetSubjectName_DERFormat(void* context, BINSTR* out)
{
    return call(context, calls::certGetSubjectNameDERFormat, out);
}

TOOLKIT_FUNCTION HVTK_CERT_GetPubKey(void* context, int capacity, char* algorithm, char* publicKey)
{
    return call(context, calls::certGetPubKey, capacity, algorithm, publicKey);
}

TOOLKIT_FUNCTION HVTK_CERT_GetPubKey2(void* context, char* algorithm, char* keyLength, BINSTR* publicKey)
{
    return call(context, calls::certGetPubKey2, algorithm, keyLength, publicKey);
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
    return call(context, calls::certGetRemainDays, certificate, days);
}
