// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

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

/** Shows a certificate. The open toolkit answers 3010: no size comes with the text.
 *  @param certificate  certificate
 *  @param text         text of the toolkit; no capacity is passed
 *  @return the common codes; 1001 when @p certificate is empty; 1003 on the GPKI library */
SIGIL_EXPORT int UNIViewCert(void* handle, BINSTR* certificate, char* text);

/** Verifies a signed message of any supported kind. With the open toolkit as CMSProcessSignedData with option 0.
 *  @param message      message
 *  @param data         holds the content of a detached message; is replaced by that of another one
 *  @param certificate  the first signer's; filled by the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @return the common codes; 1001 when @p message is empty; 1003 on the GPKI library */
SIGIL_EXPORT int UNIVerifySignData(void* handle, BINSTR* message, BINSTR* data, BINSTR* certificate);

/** Decrypts an enveloped message of any supported kind. Of a signed-and-enveloped one the open toolkit hands out the signed
 *  message, for UNIVerifySignData.
 *  @param certificate  certificate of the recipient, DER or PEM
 *  @param privateKey   its private key, PrivateKeyInfo in DER
 *  @param message      message, with the codes of CMSProcessEnvelopedData
 *  @param data         filled by the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @return the common codes; 1001 when @p certificate, @p privateKey or @p message is empty; 1003 on the GPKI
 *          library */
SIGIL_EXPORT int UNIDecryptEnvData(
    void* handle, BINSTR* certificate, BINSTR* privateKey, BINSTR* message, BINSTR* data);

#endif
