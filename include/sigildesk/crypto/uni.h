/** @file
 *  Universal view, verification and decryption.
 *
 *  Maker toolkit only.
 *  The rules that hold for every function (handle, codes, ownership, texts) stand in <sigildesk/crypto.h>.
 */
#ifndef SIGILDESK_CRYPTO_UNI_H
#define SIGILDESK_CRYPTO_UNI_H

#include <sigildesk/binstr.h>
#include <sigildesk/export.h>

/** Shows a certificate.
 *  @param certificate  certificate
 *  @param text         text of the toolkit; no capacity is passed
 *  @return the common codes; 1001 when @p certificate is empty; 1003 on the GPKI library */
SIGIL_EXPORT int UNIViewCert(void* handle, BINSTR* certificate, char* text);

/** Verifies a signed message of any supported kind.
 *  @param message      message
 *  @param data         filled by the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @param certificate  filled by the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @return the common codes; 1001 when @p message is empty; 1003 on the GPKI library */
SIGIL_EXPORT int UNIVerifySignData(void* handle, BINSTR* message, BINSTR* data, BINSTR* certificate);

/** Decrypts an enveloped message of any supported kind.
 *  @param certificate  certificate
 *  @param privateKey   private key
 *  @param message      message
 *  @param data         filled by the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @return the common codes; 1001 when @p certificate, @p privateKey or @p message is empty; 1003 on the GPKI
 *          library */
SIGIL_EXPORT int UNIDecryptEnvData(
    void* handle, BINSTR* certificate, BINSTR* privateKey, BINSTR* message, BINSTR* data);

#endif
