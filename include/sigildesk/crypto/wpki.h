// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Wireless PKI.
 *
 *  Maker toolkit only. The formats have no public definition: the open toolkit answers 3010.
 *  The rules that hold for every function (handle, codes, ownership, texts) stand in <sigildesk/crypto.h>.
 */
#ifndef SIGILDESK_CRYPTO_WPKI_H
#define SIGILDESK_CRYPTO_WPKI_H

#include <sigildesk/binstr.h>
#include <sigildesk/export.h>

/** Signs data.
 *  @param certificate  certificate
 *  @param privateKey   private key
 *  @param data         data
 *  @param message      filled by the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @return the common codes; 1001 when @p certificate, @p privateKey or @p data is empty; 1003 on the GPKI library */
SIGIL_EXPORT int WPKISignData(void* handle, BINSTR* certificate, BINSTR* privateKey, BINSTR* data, BINSTR* message);

/** Verifies a signed message and takes its content out.
 *  @param message      message
 *  @param data         filled by the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @param certificate  filled by the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @return the common codes; 1001 when @p message is empty; 1003 on the GPKI library */
SIGIL_EXPORT int WPKIVerifyData(void* handle, BINSTR* message, BINSTR* data, BINSTR* certificate);

/** Encrypts data for a recipient.
 *  @param certificate  certificate
 *  @param privateKey   private key
 *  @param algorithm    algorithm, a number of the toolkit
 *  @param recipient    recipient's certificate
 *  @param data         data
 *  @param message      filled by the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @return the common codes; 1001 when @p certificate, @p privateKey, @p recipient or @p data is empty; 1003 on the
 *          GPKI library */
SIGIL_EXPORT int WPKIEncryptData(void* handle, BINSTR* certificate, BINSTR* privateKey, int algorithm,
    BINSTR* recipient, BINSTR* data, BINSTR* message);

/** Decrypts a message.
 *  @param certificate  certificate
 *  @param privateKey   private key
 *  @param message      message
 *  @param data         filled by the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @return the common codes; 1001 when @p certificate, @p privateKey or @p message is empty; 1003 on the GPKI
 *          library */
SIGIL_EXPORT int WPKIDecryptData(
    void* handle, BINSTR* certificate, BINSTR* privateKey, BINSTR* message, BINSTR* data);

/** Verifies a certificate.
 *  @param certificate  certificate
 *  @return the common codes; 1001 when @p certificate is empty; 1003 on the GPKI library */
SIGIL_EXPORT int WPKIVerifyCert(void* handle, BINSTR* certificate);

#endif
