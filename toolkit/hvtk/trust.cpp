// HVTK_CERT_ verification, HVTK_UTIL_ paths and HVTK_HVAP_ fetches.

#include "toolkit/calls/trust.h"
#include "toolkit/engine/base/face.h"
#include "toolkit_abi/hvtk.h"

using namespace toolkit;

TOOLKIT_FUNCTION HVTK_CERT_SetCaPubs(void* context, BINSTR* certificates)
{
    return call(context, calls::trustSetCaPubs, certificates);
}

TOOLKIT_FUNCTION HVTK_CERT_FreeCaPubs(void* context) { return call(context, calls::trustFreeCaPubs); }

TOOLKIT_FUNCTION HVTK_CERT_AddTrustedCert(void* context, BINSTR* certificate)
{
    return call(context, calls::certAddTrustedCert, certificate);
}

TOOLKIT_FUNCTION HVTK_CERT_SetVerifyEnv1(
    void* context, int pathSource, int revocation, bool toleratesMissingCrl, char* time)
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

TOOLKIT_FUNCTION HVTK_CERT_Verify2(void* context, BINSTR* certificate, int usage, char* policies, char* time)
{
    return call(context, calls::certVerify2, certificate, usage, policies, time);
}

TOOLKIT_FUNCTION HVTK_CERT_CheckStatByCRL(void* context, BINSTR* certificate, char* url, int* status)
{
    return call(context, calls::certCheckStatByCRL, certificate, url, status);
}

TOOLKIT_FUNCTION HVTK_CERT_VerifyByIVS(void* context, char* confFile, BINSTR* certificate, BINSTR* server)
{
    return call(context, calls::certVerifyByIVS, confFile, certificate, server);
}

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

TOOLKIT_FUNCTION HVTK_HVAP_GetCRLByCert(void* context, BINSTR* certificate, BINSTR* out)
{
    return call(context, calls::hvapGetCRLByCert, certificate, out);
}
