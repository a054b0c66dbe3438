// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  PKCS#11 tokens.
 */
#pragma once

#include <sigildesk/binstr.h>

struct PKCS11_TOKEN_INFO;

extern "C" {

int HVTK_PKCS11_GetSlotList(void* context, unsigned long* slots, unsigned long* count);
int HVTK_PKCS11_GetTokenInfo(void* context, unsigned long slotId, PKCS11_TOKEN_INFO* info);
int HVTK_PKCS11_InitToken(void* context, char* soPin, char* label);
int HVTK_PKCS11_InitTokenWithSlotID(void* context, unsigned long slotId, char* soPin, char* pin, char* label);
int HVTK_PKCS11_OpenSessionWithSlotID(void* context, unsigned long slotId, char* pin, int flags);
int HVTK_PKCS11_OpenSessionWithTokenName(void* context, char* token, int flags);
int HVTK_PKCS11_Login(void* context, char* pin);
int HVTK_PKCS11_Logout(void* context);
int HVTK_PKCS11_CloseSession(void* context);
int HVTK_PKCS11_ChangePIN(void* context, char* oldPin, char* newPin);
int HVTK_PKCS11_GetCertCnt(void* context, int* count);
int HVTK_PKCS11_GetCertInfo(void* context, int index, int* kind, BINSTR* id, BINSTR* certificate);
int HVTK_PKCS11_ReadCert(void* context, BINSTR* id, BINSTR* certificate);
int HVTK_PKCS11_ReadRandomForVID(void* context, BINSTR* id, BINSTR* random);
int HVTK_PKCS11_WriteCertAndPriKey(void* context, BINSTR* certificate, BINSTR* privateKey);
int HVTK_PKCS11_DeleteCertAndPriKey(void* context, BINSTR* id);
int HVTK_PKCS11_GenKeyPair(void* context, int algorithm, int bits, BINSTR* publicKey);
int HVTK_PKCS11_Sign(void* context, BINSTR* id, BINSTR* data, BINSTR* signature);
int HVTK_PKCS11_Verify(void* context, BINSTR* id, BINSTR* data, BINSTR* signature);
int HVTK_PKCS11_Encrypt(void* context, BINSTR* id, BINSTR* data, BINSTR* cipher);
int HVTK_PKCS11_Decrypt(void* context, BINSTR* id, BINSTR* cipher, BINSTR* data);
int HVTK_PKCS11_SignData(void* context, BINSTR* id, BINSTR* data, BINSTR* signedMessage);
int HVTK_PKCS11_SignData_NoContent(void* context, BINSTR* id, BINSTR* data, BINSTR* signedMessage);
int HVTK_PKCS11_DecryptData(void* context, BINSTR* id, BINSTR* message, BINSTR* data);
int HVTK_PKCS11_SignAndEnvData(
    void* context, BINSTR* id, BINSTR* recipient, BINSTR* data, BINSTR* envelopedMessage);
int HVTK_PKCS11_VerifyAndDecData(
    void* context, BINSTR* id, BINSTR* message, BINSTR* data, BINSTR* signerCertificate);
int HVTK_PKCS11_VerifySignatureValue(void* context, char* hash, BINSTR* certificate, BINSTR* signature);
int HVTK_PKCS11_CMP_CertRequest(void* context, char* address, int port, char* reference, char* secret, char* pin,
    char* token, BINSTR* caCertificate, BINSTR* certificate);
int HVTK_PKCS11_CMP_CertUpdate(void* context, char* address, int port, bool newKey, char* pin, char* token,
    BINSTR* certificate, BINSTR* newCertificate);
int HVTK_PKCS11_CMP_CertUpdate2(void* context, char* address, int port, bool newKey, int keyBits, char* pin,
    char* token, BINSTR* certificate, BINSTR* caCertificate, BINSTR* newCertificate, BINSTR* newId,
    BINSTR* kmCertificate, BINSTR* kmId);
int HVTK_PKCS11_CMP_CertRevoke(void* context, char* address, int port, int reason, BINSTR* certificate, BINSTR* id);
int HVTK_PKCS11_OpenSession(void* context, char* pin);

int GPKI_HSM_GetSlotList(void* context, unsigned long* slots, unsigned long* count);
int GPKI_HSM_GetTokenInfo(void* context, unsigned long slotId, PKCS11_TOKEN_INFO* info);
int GPKI_HSM_OpenSession(void* context, unsigned long slotId, int flags);
int GPKI_HSM_Login(void* context, char* pin);
int GPKI_HSM_Logout(void* context);
int GPKI_HSM_CloseSession(void* context);
int GPKI_HSM_ChangePIN(void* context, char* oldPin, char* newPin);
int GPKI_HSM_GetCertCnt(void* context, int* count);
int GPKI_HSM_GetCertInfo(void* context, int index, int* kind, BINSTR* id, BINSTR* certificate);
int GPKI_HSM_ReadCert(void* context, BINSTR* id, BINSTR* certificate);
int GPKI_HSM_ReadRandomForVID(void* context, BINSTR* id, BINSTR* random);
int GPKI_HSM_WriteCertAndPriKey(void* context, BINSTR* certificate, BINSTR* privateKey);
int GPKI_HSM_DeleteCertAndPriKey(void* context, BINSTR* id);
int GPKI_HSM_SignData(void* context, BINSTR* id, BINSTR* data, BINSTR* signedMessage);

} // extern "C"
