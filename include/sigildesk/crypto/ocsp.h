/** @file
 *  Online certificate status.
 *
 *  The protocol is that of RFC 6960.
 *  The rules that hold for every function (handle, codes, ownership, texts) stand in <sigildesk/crypto.h>.
 */
#ifndef SIGILDESK_CRYPTO_OCSP_H
#define SIGILDESK_CRYPTO_OCSP_H

#include <sigildesk/binstr.h>
#include <sigildesk/export.h>

/** Makes a request for the state of a certificate.
 *  @param certificate        certificate
 *  @param signRequest        flag of the toolkit
 *  @param signerCertificate  second certificate
 *  @param signerKey          third byte string
 *  @param request            filled by the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @return the common codes; 1001 when @p certificate, @p signerCertificate or @p signerKey is empty */
SIGIL_EXPORT int OCSPMakeOCSPReq(void* handle, BINSTR* certificate, bool signRequest, BINSTR* signerCertificate,
    BINSTR* signerKey, BINSTR* request);

/** Sends a request to a responder and receives its response.
 *  @param url          text that tells the toolkit where the responder is
 *  @param certificate  certificate
 *  @param request      OCSP request
 *  @param response     filled by the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @return the common codes; 1001 when @p certificate or @p request is empty or @p url is null */
SIGIL_EXPORT int OCSPSendAndRecv(void* handle, char* url, BINSTR* certificate, BINSTR* request, BINSTR* response);

/** Verifies a response. The maker toolkit does not receive @p status.
 *  @param certificate           certificate
 *  @param response              OCSP response
 *  @param status                number that the GPKI library may write
 *  @param responderCertificate  third byte string of the toolkit; filled by the toolkit; release it with
 *                               HV_BINSTR_Delete on the same handle
 *  @return the common codes; 1001 when @p certificate or @p response is empty */
SIGIL_EXPORT int OCSPVerifyResMsg(
    void* handle, BINSTR* certificate, BINSTR* response, int* status, BINSTR* responderCertificate);

/** Reads one certificate's state from the response that was verified last.
 *  @param index           position in the response; the toolkit says where it counts from
 *  @param status          number that the toolkit may write
 *  @param revocationTime  text that the toolkit may write
 *  @param reason          number that the toolkit may write
 *  @return the common codes; 1003 on the maker toolkit */
SIGIL_EXPORT int OCSPGetCertStatus(void* handle, int index, int* status, char* revocationTime, int* reason);

#endif
