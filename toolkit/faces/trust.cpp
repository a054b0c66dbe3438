// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Verification (CERT_), authorities (HVTK_CERT_, GPKI_API_), paths (HVTK_UTIL_) and fetches (HVTK_HVAP_, GPKI_LDAP_).

#include "toolkit/calls/trust.h"
#include "toolkit/engine/base/face.h"
#include "toolkit_abi/gpki.h"
#include "toolkit_abi/hvtk.h"

using namespace toolkit;

TOOLKIT_FUNCTION HVTK_CERT_SetCaPubs(void* context, BINSTR* certificates)
{
    return call(context, calls::trustSetCaPubs, certificates);
}
SAME_FUNCTION(GPKI_API_SetCaPubs, HVTK_CERT_SetCaPubs);

TOOLKIT_FUNCTION HVTK_CERT_FreeCaPubs(void* context) { return call(context, calls::trustFreeCaPubs); }
SAME_FUNCTION(GPKI_API_FreeCaPubs, HVTK_CERT_FreeCaPubs);

TOOLKIT_FUNCTION HVTK_CERT_AddTrustedCert(void* context, BINSTR* certificate)
{
    return call(context, calls::certAddTrustedCert, certificate);
}
SAME_FUNCTION(GPKI_CERT_AddTrustedCert, HVTK_CERT_AddTrustedCert);

TOOLKIT_FUNCTION HVTK_CERT_SetVerifyEnv1(
    void* context, int pathSource, int revocation, bool toleratesMissingCrl, char* time)
{
    return call(context, calls::certSetVerifyEnv1, pathSource, revocation, toleratesMissingCrl, time);
}

TOOLKIT_FUNCTION GPKI_CERT_SetVerifyEnv(
    void* context, int pathSource, int revocation, bool toleratesMissingCrl, char* /*confFile*/, char* time)
{
    return call(context, calls::certSetVerifyEnv1, pathSource, revocation, toleratesMissingCrl, time);
}

TOOLKIT_FUNCTION HVTK_CERT_SetVerifyEnv2(void* context, char* time, BINSTR* trusted, BINSTR* crls)
{
    return call(context, calls::certSetVerifyEnv2, time, trusted, crls);
}

TOOLKIT_FUNCTION HVTK_CERT_Verify(void* context, BINSTR* certificate, int usage, char* policies,
    bool checksRevocation, BINSTR* authorities, BINSTR* path)
{
    return call(context, calls::certVerify, certificate, usage, policies, checksRevocation, authorities, path);
}

TOOLKIT_FUNCTION GPKI_CERT_Verify(void* context, BINSTR* certificate, int usage, char* policies, char* /*confFile*/,
    bool checksRevocation, BINSTR* authorities, BINSTR* path)
{
    return call(context, calls::certVerify, certificate, usage, policies, checksRevocation, authorities, path);
}

TOOLKIT_FUNCTION HVTK_CERT_Verify2(void* context, BINSTR* certificate, int usage, char* policies, char* time)
{
    return call(context, calls::certVerify2, certificate, usage, policies, time);
}

TOOLKIT_FUNCTION HVTK_CERT_CheckStatByCRL(void* context, BINSTR* certificate, char* url, int* status)
{
    return call(context, calls::certCheckStatByCRL, certificate, url, status);
}
SAME_FUNCTION(GPKI_CERT_CheckStatByCRL, HVTK_CERT_CheckStatByCRL);

TOOLKIT_FUNCTION GPKI_CERT_CheckStatByOCSP(void* context, BINSTR* certificate, bool signRequest,
    BINSTR* signerCertificate, BINSTR* signerKey, char* url, BINSTR* responderCertificate, char* revocationTime,
    int* status)
{
    return call(context, calls::certCheckStatByOCSP, certificate, signRequest, signerCertificate, signerKey, url,
        responderCertificate, revocationTime, status);
}

TOOLKIT_FUNCTION HVTK_CERT_VerifyByIVS(void* context, char* confFile, BINSTR* certificate, BINSTR* server)
{
    return call(context, calls::certVerifyByIVS, confFile, certificate, server);
}
SAME_FUNCTION(GPKI_CERT_VerifyByIVS, HVTK_CERT_VerifyByIVS);

TOOLKIT_FUNCTION HVTK_UTIL_GetCertPath(void* context, BINSTR* certificate, BINSTR* path)
{
    return call(context, calls::utilGetCertPath, certificate, path);
}

TOOLKIT_FUNCTION HVTK_UTIL_GetRootCert(void* context, BINSTR* certificate, BINSTR* root)
{
    return call(context, calls::utilGetRootCert, certificate, root);
}

TOOLKIT_FUNCTION HVTK_UTIL_IsTrustCert(void* context, BINSTR* certificate, BINSTR* anchors, bool* trusted)
{
    return call(context, calls::utilIsTrustCert, certificate, anchors, trusted);
}

TOOLKIT_FUNCTION HVTK_HVAP_GetDataByURL(void* context, int mode, char* url, BINSTR* out)
{
    return call(context, calls::hvapGetDataByURL, mode, url, out);
}
SAME_FUNCTION(GPKI_LDAP_GetDataByURL, HVTK_HVAP_GetDataByURL);

TOOLKIT_FUNCTION GPKI_LDAP_GetAnyDataByURL(void* context, char* url, char* attribute, BINSTR* out)
{
    return call(context, calls::ldapGetAnyDataByURL, url, attribute, out);
}

TOOLKIT_FUNCTION GPKI_LDAP_GetDataByCN(
    void* context, char* host, int port, char* commonName, int mode, char* base, BINSTR* out)
{
    return call(context, calls::ldapGetDataByCN, host, port, commonName, mode, base, out);
}

TOOLKIT_FUNCTION HVTK_HVAP_GetCRLByCert(void* context, BINSTR* certificate, BINSTR* out)
{
    return call(context, calls::hvapGetCRLByCert, certificate, out);
}
SAME_FUNCTION(GPKI_LDAP_GetCRLByCert, HVTK_HVAP_GetCRLByCert);

TOOLKIT_FUNCTION GPKI_LDAP_GetCertPath(void* context, BINSTR* certificate, char* directory, BINSTR* path)
{
    return call(context, calls::ldapGetCertPath, certificate, directory, path);
}
