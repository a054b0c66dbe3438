// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Online certificate status.
 */
#pragma once

#include <sigildesk/binstr.h>

extern "C" {

int HVTK_OCSP_MakeOCSPReq(void* context, BINSTR* certificate, bool signRequest, BINSTR* signerCertificate,
    BINSTR* signerKey, BINSTR* request);
int HVTK_OCSP_SendAndRecv(void* context, char* url, BINSTR* certificate, BINSTR* request, BINSTR* response);
int HVTK_OCSP_VerifyResMsg(void* context, BINSTR* certificate, BINSTR* response, BINSTR* responderCertificate);
int HVTK_OCSP_CheckCertStatus(
    void* context, char* url, BINSTR* certificate, bool signRequest, BINSTR* signerCertificate, BINSTR* signerKey);

int GPKI_OCSP_MakeOCSPReq(void* context, BINSTR* certificate, bool signRequest, BINSTR* signerCertificate,
    BINSTR* signerKey, BINSTR* request);
int GPKI_OCSP_SendAndRecv(void* context, char* url, BINSTR* certificate, BINSTR* request, BINSTR* response);
int GPKI_OCSP_VerifyResMsg(
    void* context, BINSTR* certificate, BINSTR* response, int* status, BINSTR* responderCertificate);
int GPKI_OCSP_GetCertStatus(void* context, int index, int* status, char* revocationTime, int* reason);

} // extern "C"
