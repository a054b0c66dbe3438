// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Online certificate status.
 *
 *  The protocol is that of RFC 6960. With the open toolkit requests name certificates by SHA-1 and carry a nonce of 16 bytes,
 *  certificates may be PEM too, and one call waits twenty seconds at most; a licensed toolkit may do otherwise.
 *  The rules that hold for every function (handle, codes, ownership, texts) stand in <sigildesk/crypto.h>.
 */
#ifndef SIGILDESK_CRYPTO_OCSP_H
#define SIGILDESK_CRYPTO_OCSP_H

#include <sigildesk/binstr.h>
#include <sigildesk/export.h>

/** Makes a request for the state of a certificate. The open toolkit keeps it: OCSPVerifyResMsg accepts the response to the last
 *  request alone. It finds the issuer among the trusted certificates and the CaPubs, or takes @p signerCertificate for it.
 *  @param certificate        DER certificate to be asked about
 *  @param signRequest        whether the request is signed
 *  @param signerCertificate  DER certificate of whoever signs; never empty, even when nobody signs
 *  @param signerKey          its private key (PrivateKeyInfo of PKCS#8, DER); never empty, even when nobody signs
 *  @param request            receives the request (RFC 6960, DER); release it with HV_BINSTR_Delete on the same handle
 *  @return the common codes; 1001 when @p certificate, @p signerCertificate or @p signerKey is empty; open toolkit: 3201 without
 *          the issuer, 2005 when key and certificate of the signer do not belong together */
SIGIL_EXPORT int OCSPMakeOCSPReq(void* handle, BINSTR* certificate, bool signRequest, BINSTR* signerCertificate,
    BINSTR* signerKey, BINSTR* request);

/** Sends a request to a responder and receives its response (HTTP POST).
 *  @param url          where the responder is; open toolkit: a web address (http, https), empty for the one in
 *                      @p certificate
 *  @param certificate  DER certificate that is asked about
 *  @param request      OCSP request
 *  @param response     receives the response; release it with HV_BINSTR_Delete on the same handle
 *  @return the common codes; 1001 when @p certificate or @p request is empty or @p url is null; open toolkit: 3600 without an
 *          web address, 3601 and 3602 when the server does not answer */
SIGIL_EXPORT int OCSPSendAndRecv(void* handle, char* url, BINSTR* certificate, BINSTR* request, BINSTR* response);

/** Verifies a response: its signer, its nonce, the time for which it holds. The maker toolkit does not receive @p status, so the
 *  open toolkit's result tells the state there.
 *  @param certificate           DER certificate that was asked about, or its authority's
 *  @param response              OCSP response
 *  @param status                GPKI library only: receives a number; open toolkit: how many single answers
 *                               OCSPGetCertStatus can tell
 *  @param responderCertificate  receives the certificate of the responder, which may be null; release it with
 *                               HV_BINSTR_Delete on the same handle
 *  @return the common codes; 1001 when @p certificate or @p response is empty; open toolkit: 3700 to 3705; on type 0 also 3204 for
 *          a revoked certificate and 3706 for one that the responder does not know. A response without the nonce is 3703,
 *          unless HV_SetOption(SIGIL_TK_OPTION_OCSP_ANY_NONCE) on type 1, or "Nonce = 0" in the section [OCSP] of the file of
 *          HV_SetConfFile on type 0, allows it; one with another nonce is 3703 in any case */
SIGIL_EXPORT int OCSPVerifyResMsg(
    void* handle, BINSTR* certificate, BINSTR* response, int* status, BINSTR* responderCertificate);

/** Reads one certificate's state from the response that was verified last.
 *  @param index           position in the response; open toolkit: from 0
 *  @param status          receives the state; open toolkit: 0 good, 1 revoked, 2 unknown
 *  @param revocationTime  caller's buffer of at least 25 bytes; open toolkit: "YYYY-MM-DD HH:MM:SS", empty when not revoked
 *  @param reason          receives the reason of the revocation (RFC 5280, 5.3.1); open toolkit: -1 when there is none
 *  @return the common codes; 1003 on the maker toolkit; open toolkit: 3008 outside the response, 3000 for a null pointer */
SIGIL_EXPORT int OCSPGetCertStatus(void* handle, int index, int* status, char* revocationTime, int* reason);

#endif
