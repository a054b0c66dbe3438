// HVTK_OCSP_: the state of a certificate in single steps.

#include "toolkit/calls/ocsp.h"

using namespace toolkit;

TOOLKIT_FUNCTION HVTK_OCSP_MakeOCSPReq(void* context, BINSTR* certificate, bool signRequest,
    BINSTR* signerCertificate, BINSTR* signerKey, BINSTR* request)
{
    return call(context, calls::ocspMakeOCSPReq, certificate, signRequest, signerCertificate, signerKey, request);
}

TOOLKIT_FUNCTION HVTK_OCSP_SendAndRecv(
    void* context, char* url, BINSTR* certificate, BINSTR* request, BINSTR* response)
{
    return call(context, calls::ocspSendAndRecv, url, certificate, request, response);
}

TOOLKIT_FUNCTION HVTK_OCSP_VerifyResMsg(
    void* context, BINSTR* certificate, BINSTR* response, BINSTR* responderCertificate)
{
    return call(context, calls::ocspVerifyResMsg, certificate, response, responderCertificate);
}

TOOLKIT_FUNCTION HVTK_OCSP_CheckCertStatus(
    void* context, char* url, BINSTR* certificate, bool signRequest, BINSTR* signerCertificate, BINSTR* signerKey)
{
    return call(context, calls::ocspCheckCertStatus, url, certificate, signRequest, signerCertificate, signerKey);
}
