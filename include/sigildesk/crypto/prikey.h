// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Private keys.
 *
 *  Keys travel as DER: PKCS#8 PrivateKeyInfo in the clear, EncryptedPrivateKeyInfo under a password (RFC 5958).
 *  The rules that hold for every function (handle, codes, ownership, texts) stand in <sigildesk/crypto.h>.
 */
#ifndef SIGILDESK_CRYPTO_PRIKEY_H
#define SIGILDESK_CRYPTO_PRIKEY_H

#include <sigildesk/binstr.h>
#include <sigildesk/export.h>

/** Puts a private key under a password.
 *  @param algorithm     encryption algorithm, a number of the toolkit
 *  @param password      password, terminated
 *  @param privateKey    private key in the clear; wipe your copy
 *  @param encryptedKey  filled by the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @return the common codes; 1001 when @p privateKey is empty or @p password is null */
SIGIL_EXPORT int PriKeyEncrypt(
    void* handle, int algorithm, char* password, BINSTR* privateKey, BINSTR* encryptedKey);

/** Opens a private key with its password.
 *  @param password      password, terminated
 *  @param encryptedKey  private key under a password
 *  @param privateKey    filled by the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @return the common codes; 1001 when @p encryptedKey is empty or @p password is null */
SIGIL_EXPORT int PriKeyDecrypt(void* handle, char* password, BINSTR* encryptedKey, BINSTR* privateKey);

/** Changes the password of a private key.
 *  @param oldPassword   password in use, terminated
 *  @param newPassword   password to be, terminated
 *  @param encryptedKey  private key under a password
 *  @param changedKey    filled by the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @return the common codes; 1001 when @p encryptedKey is empty or @p oldPassword or @p newPassword is null */
SIGIL_EXPORT int PriKeyChangePasswd(
    void* handle, char* oldPassword, char* newPassword, BINSTR* encryptedKey, BINSTR* changedKey);

/** Tells whether a private key belongs to a certificate: 0 when it does.
 *  @param certificate  DER certificate
 *  @param privateKey   private key in the clear; wipe your copy
 *  @return the common codes; 1001 when @p certificate or @p privateKey is empty */
SIGIL_EXPORT int PriKeyCheckKeyPair(void* handle, BINSTR* certificate, BINSTR* privateKey);

#endif
