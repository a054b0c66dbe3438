// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Online certificate status.

#include "facade/row.h"

#include <sigildesk/crypto/ocsp.h>

using namespace sigil;

int OCSPMakeOCSPReq(void* handle, BINSTR* certificate, bool signRequest, BINSTR* signerCertificate,
    BINSTR* signerKey, BINSTR* request)
{
    return secretRow(handle, {need(certificate), need(signerCertificate), need(signerKey)},
        maker(SYMBOL(HVTK_OCSP_MakeOCSPReq), certificate, signRequest, signerCertificate, signerKey, request),
        gpki(SYMBOL(GPKI_OCSP_MakeOCSPReq), certificate, signRequest, signerCertificate, signerKey, request));
}

int OCSPSendAndRecv(void* handle, char* url, BINSTR* certificate, BINSTR* request, BINSTR* response)
{
    return row(handle, {need(url), need(certificate), need(request)},
        maker(SYMBOL(HVTK_OCSP_SendAndRecv), url, certificate, request, response),
        gpki(SYMBOL(GPKI_OCSP_SendAndRecv), url, certificate, request, response));
}

int OCSPVerifyResMsg(void* handle, BINSTR* certificate, BINSTR* response, int* status, BINSTR* responderCertificate)
{
    return row(handle, {need(certificate), need(response)},
        maker(SYMBOL(HVTK_OCSP_VerifyResMsg), certificate, response, responderCertificate),
        gpki(SYMBOL(GPKI_OCSP_VerifyResMsg), certificate, response, status, responderCertificate));
}

int OCSPGetCertStatus(void* handle, int index, int* status, char* revocationTime, int* reason)
{
    return row(handle, {}, absent, gpki(SYMBOL(GPKI_OCSP_GetCertStatus), index, status, revocationTime, reason));
}
