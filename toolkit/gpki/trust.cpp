// GPKI_CERT_ verification, the authorities of GPKI_API_ and GPKI_LDAP_ fetches.

#include "toolkit/calls/trust.h"
#include "toolkit/engine/base/face.h"
#include "toolkit_abi/gpki.h"

using namespace toolkit;

TOOLKIT_FUNCTION GPKI_API_SetCaPubs(void* context, BINSTR* certificates)
{
    return call(context, calls::trustSetCaPubs, certificates);
}

TOOLKIT_FUNCTION GPKI_API_FreeCaPubs(void* context) { return call(context, calls::trustFreeCaPubs); }

TOOLKIT_FUNCTION GPKI_CERT_AddTrustedCert(void* context, BINSTR* certificate)
{
    return call(context, calls::certAddTrustedCert, certificate);
}

TOOLKIT_FUNCTION GPKI_CERT_SetVerifyEnv(
    void* context, int pathSource, int revocation, bool toleratesMissingCrl, char* /*confFile*/, char* time)
{
    return call(context, calls::certSetVerifyEnv1, pathSource, revocation, toleratesMissingCrl, time);
}

TOOLKIT_FUNCTION GPKI_CERT_Verify(void* context, BINSTR* certificate, int usage, char* policies, char* /*confFile*/,
    bool checksRevocation, BINSTR* authorities, BINSTR* path)
{
    return call(context, calls::certVerify, certificate, usage, policies, checksRevocation, authorities, path);
}

TOOLKIT_FUNCTION GPKI_CERT_CheckStatByCRL(void* context, BINSTR* certificate, char* url, int* status)
{
    return call(context, calls::certCheckStatByCRL, certificate, url, status);
}

TOOLKIT_FUNCTION GPKI_CERT_CheckStatByOCSP(void* context, BINSTR* certificate, bool signRequest,
    BINSTR* signerCertificate, BINSTR* signerKey, char* url, BINSTR* responderCertificate, char* revocationTime,
    int* status)
{
    return call(context, calls::certCheckStatByOCSP, certificate, signRequest, signerCertificate, signerKey, url,
        responderCertificate, revocationTime, status);
}

TOOLKIT_FUNCTION GPKI_CERT_VerifyByIVS(void* context, char* confFile, BINSTR* certificate, BINSTR* server)
{
    return call(context, calls::certVerifyByIVS, confFile, certificate, server);
}

TOOLKIT_FUNCTION GPKI_LDAP_GetDataByURL(void* context, int mode, char* url, BINSTR* out)
{
    return call(context, calls::hvapGetDataByURL, mode, url, out);
}

TOOLKIT_FUNCTION GPKI_LDAP_GetAnyDataByURL(void* context, char* url, char* attribute, BINSTR* out)
{
    return call(context, calls::ldapGetAnyDataByURL, url, attribute, out);
}

TOOLKIT_FUNCTION GPKI_LDAP_GetDataByCN(
    void* context, char* host, int port, char* commonName, int mode, char* base, BINSTR* out)
{
    return call(context, calls::ldapGetDataByCN, host, port, commonName, mode, base, out);
}

TOOLKIT_FUNCTION GPKI_LDAP_GetCRLByCert(void* context, BINSTR* certificate, BINSTR* out)
{
    return call(context, calls::hvapGetCRLByCert, certificate, out);
}

TOOLKIT_FUNCTION GPKI_LDAP_GetCertPath(void* context, BINSTR* certificate, char* directory, BINSTR* path)
{
    return call(context, calls::ldapGetCertPath, certificate, directory, path);
}
