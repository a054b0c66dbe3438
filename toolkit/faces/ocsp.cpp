// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// OCSP_: the state of a certificate in single steps.

#include "toolkit/calls/ocsp.h"
#include "toolkit/engine/base/face.h"
#include "toolkit_abi/gpki.h"
#include "toolkit_abi/hvtk.h"

using namespace toolkit;

TOOLKIT_FUNCTION HVTK_OCSP_MakeOCSPReq(void* context, BINSTR* certificate, bool signRequest,
    BINSTR* signerCertificate, BINSTR* signerKey, BINSTR* request)
{
    return call(context, calls::ocspMakeOCSPReq, certificate, signRequest, signerCertificate, signerKey, request);
}
SAME_FUNCTION(GPKI_OCSP_MakeOCSPReq, HVTK_OCSP_MakeOCSPReq);

TOOLKIT_FUNCTION HVTK_OCSP_SendAndRecv(
    void* context, char* url, BINSTR* certificate, BINSTR* request, BINSTR* response)
{
    return call(context, calls::ocspSendAndRecv, url, certificate, request, response);
}
SAME_FUNCTION(GPKI_OCSP_SendAndRecv, HVTK_OCSP_SendAndRecv);

TOOLKIT_FUNCTION HVTK_OCSP_VerifyResMsg(
    void* context, BINSTR* certificate, BINSTR* response, BINSTR* responderCertificate)
{
    return call(context, calls::ocspVerifyResMsg, certificate, response, responderCertificate);
}

TOOLKIT_FUNCTION GPKI_OCSP_VerifyResMsg(
    void* context, BINSTR* certificate, BINSTR* response, int* count, BINSTR* responderCertificate)
{
    return call(context, calls::ocspVerifyResMsgWithCount, certificate, response, count, responderCertificate);
}

TOOLKIT_FUNCTION GPKI_OCSP_GetCertStatus(void* context, int index, int* status, char* revocationTime, int* reason)
{
    return call(context, calls::ocspGetCertStatus, index, status, revocationTime, reason);
}

TOOLKIT_FUNCTION HVTK_OCSP_CheckCertStatus(
    void* context, char* url, BINSTR* certificate, bool signRequest, BINSTR* signerCertificate, BINSTR* signerKey)
{
    return call(context, calls::ocspCheckCertStatus, url, certificate, signRequest, signerCertificate, signerKey);
}
