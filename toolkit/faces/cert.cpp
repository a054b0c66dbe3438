// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// CERT_: the loaded certificate and its fields.

#include "toolkit/calls/cert.h"
#include "toolkit/engine/base/face.h"
#include "toolkit_abi/gpki.h"
#include "toolkit_abi/hvtk.h"

using namespace toolkit;

TOOLKIT_FUNCTION HVTK_CERT_Load(void* context, BINSTR* certificate)
{
    return call(context, calls::certLoad, certificate);
}
SAME_FUNCTION(GPKI_CERT_Load, HVTK_CERT_Load);

TOOLKIT_FUNCTION HVTK_CERT_Unload(void* context) { return call(context, calls::certUnload); }
SAME_FUNCTION(GPKI_CERT_Unload, HVTK_CERT_Unload);

TOOLKIT_FUNCTION HVTK_CERT_GetUID(void* context, int capacity, char* out)
{
    return identify(context, capacity, out, &Certificate::uid);
}
SAME_FUNCTION(GPKI_CERT_GetUID, HVTK_CERT_GetUID);

TOOLKIT_FUNCTION HVTK_CERT_GetVersion(void* context, int* version)
{
    return call(context, calls::certGetVersion, version);
}
SAME_FUNCTION(GPKI_CERT_GetVersion, HVTK_CERT_GetVersion);

TOOLKIT_FUNCTION HVTK_CERT_GetSerialNum(void* context, int capacity, char* out)
{
    return identify(context, capacity, out, &Certificate::serialNumber);
}
SAME_FUNCTION(GPKI_CERT_GetSerialNum, HVTK_CERT_GetSerialNum);

TOOLKIT_FUNCTION HVTK_CERT_GetSignatureAlgorithm(void* context, int capacity, char* out)
{
    return describe(context, capacity, out, &Certificate::signatureAlgorithm);
}
SAME_FUNCTION(GPKI_CERT_GetSignatureAlgorithm, HVTK_CERT_GetSignatureAlgorithm);

TOOLKIT_FUNCTION HVTK_CERT_GetIssuerName(void* context, int capacity, char* out)
{
    return identify(context, capacity, out, &Certificate::issuerName);
}
SAME_FUNCTION(GPKI_CERT_GetIssuerName, HVTK_CERT_GetIssuerName);

TOOLKIT_FUNCTION HVTK_CERT_GetValidity(void* context, char* notBefore, char* notAfter)
{
    return call(context, calls::certGetValidity, notBefore, notAfter);
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

TOOLKIT_FUNCTION HVTK_CERT_GetSubjectName(void* context, int capacity, char* out)
{
    return identify(context, capacity, out, &Certificate::subjectName);
}
SAME_FUNCTION(GPKI_CERT_GetSubjectName, HVTK_CERT_GetSubjectName);

TOOLKIT_FUNCTION HVTK_CERT_GetSubjectName_DERFormat(void* context, BINSTR* out)
{
    return call(context, calls::certGetSubjectNameDERFormat, out);
}

TOOLKIT_FUNCTION HVTK_CERT_GetPubKey(void* context, int capacity, char* algorithm, char* publicKey)
{
    return call(context, calls::certGetPubKey, capacity, algorithm, publicKey);
}

TOOLKIT_FUNCTION GPKI_CERT_GetPubKey(void* context, int capacity, char* out)
{
    return describe(context, capacity, out, &Certificate::publicKeyText);
}

TOOLKIT_FUNCTION HVTK_CERT_GetPubKey2(void* context, char* algorithm, char* keyLength, BINSTR* publicKey)
{
    return call(context, calls::certGetPubKey2, algorithm, keyLength, publicKey);
}

TOOLKIT_FUNCTION HVTK_CERT_GetSignature(void* context, int capacity, char* out)
{
    return describe(context, capacity, out, &Certificate::signature);
}
SAME_FUNCTION(GPKI_CERT_GetSignature, HVTK_CERT_GetSignature);

TOOLKIT_FUNCTION HVTK_CERT_GetKeyUsage(void* context, int capacity, char* out)
{
    return describe(context, capacity, out, &Certificate::keyUsage);
}
SAME_FUNCTION(GPKI_CERT_GetKeyUsage, HVTK_CERT_GetKeyUsage);

TOOLKIT_FUNCTION HVTK_CERT_GetBasicConstraints(void* context, int capacity, char* out)
{
    return describe(context, capacity, out, &Certificate::basicConstraints);
}
SAME_FUNCTION(GPKI_CERT_GetBasicConstraints, HVTK_CERT_GetBasicConstraints);

TOOLKIT_FUNCTION HVTK_CERT_GetCertPolicy(void* context, int capacity, char* out)
{
    return describe(context, capacity, out, &Certificate::policies);
}
SAME_FUNCTION(GPKI_CERT_GetCertPolicy, HVTK_CERT_GetCertPolicy);

TOOLKIT_FUNCTION HVTK_CERT_GetCertPolicy_PolicyID(void* context, int capacity, char* out)
{
    return describe(context, capacity, out, &Certificate::policyIds);
}
SAME_FUNCTION(GPKI_CERT_GetCertPolicyID, HVTK_CERT_GetCertPolicy_PolicyID);

TOOLKIT_FUNCTION HVTK_CERT_GetPolicyConstraints(void* context, int capacity, char* out)
{
    return describe(context, capacity, out, &Certificate::policyConstraints);
}

TOOLKIT_FUNCTION HVTK_CERT_GetExtKeyUsage(void* context, int capacity, char* out)
{
    return describe(context, capacity, out, &Certificate::extendedKeyUsage);
}
SAME_FUNCTION(GPKI_CERT_GetExtKeyUsage, HVTK_CERT_GetExtKeyUsage);

TOOLKIT_FUNCTION HVTK_CERT_GetSubjectAltName(void* context, int capacity, char* out)
{
    return describe(context, capacity, out, &Certificate::subjectAltName);
}
SAME_FUNCTION(GPKI_CERT_GetSubjectAltName, HVTK_CERT_GetSubjectAltName);

TOOLKIT_FUNCTION HVTK_CERT_GetIssuerAltName(void* context, int capacity, char* out)
{
    return describe(context, capacity, out, &Certificate::issuerAltName);
}

TOOLKIT_FUNCTION HVTK_CERT_GetAuthKeyID(void* context, int capacity, char* out)
{
    return describe(context, capacity, out, &Certificate::authorityKeyId);
}
SAME_FUNCTION(GPKI_CERT_GetAuthKeyID, HVTK_CERT_GetAuthKeyID);

TOOLKIT_FUNCTION HVTK_CERT_GetSubKeyID(void* context, int capacity, char* out)
{
    return describe(context, capacity, out, &Certificate::subjectKeyId);
}
SAME_FUNCTION(GPKI_CERT_GetSubKeyID, HVTK_CERT_GetSubKeyID);

TOOLKIT_FUNCTION HVTK_CERT_GetCRLDP(void* context, int capacity, char* out)
{
    return describe(context, capacity, out, &Certificate::crlDistributionPoints);
}
SAME_FUNCTION(GPKI_CERT_GetCRLDP, HVTK_CERT_GetCRLDP);

TOOLKIT_FUNCTION HVTK_CERT_GetCRLDP_URL(void* context, int capacity, char* out)
{
    return describe(context, capacity, out, &Certificate::crlUrlText);
}

TOOLKIT_FUNCTION HVTK_CERT_GetAIA(void* context, int capacity, char* out)
{
    return describe(context, capacity, out, &Certificate::authorityInfoAccess);
}
SAME_FUNCTION(GPKI_CERT_GetAIA, HVTK_CERT_GetAIA);

TOOLKIT_FUNCTION HVTK_CERT_GetRemainDays(void* context, BINSTR* certificate, int* days)
{
    return call(context, calls::certGetRemainDays, certificate, days);
}
SAME_FUNCTION(GPKI_CERT_GetRemainDays, HVTK_CERT_GetRemainDays);
