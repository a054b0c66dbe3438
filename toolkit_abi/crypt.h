// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Cryptographic primitives.
 */
#pragma once

#include <sigildesk/binstr.h>

extern "C" {

int HVTK_CRYPT_SetRSAVersion(void* context, int version);
int HVTK_CRYPT_SetPaddingType(void* context, int padding);
int HVTK_CRYPT_SetEnvChangeIV(void* context);
int HVTK_CRYPT_GenRandom(void* context, int length, BINSTR* random);
int HVTK_CRYPT_GenKeyPair(void* context, int bits, BINSTR* publicKey, BINSTR* privateKey);
int HVTK_CRYPT_GenKeyAndIV(void* context, int algorithm);
int HVTK_CRYPT_SetKeyAndIV(void* context, int algorithm, BINSTR* key, BINSTR* iv);
int HVTK_CRYPT_GetKeyAndIV(void* context, int* algorithm, BINSTR* key, BINSTR* iv);
int HVTK_CRYPT_ClearKeyAndIV(void* context);
int HVTK_CRYPT_Encrypt(void* context, BINSTR* data, BINSTR* cipher);
int HVTK_CRYPT_Decrypt(void* context, BINSTR* cipher, BINSTR* data);
int HVTK_CRYPT_EncryptFile(void* context, char* inputFile, char* outputFile);
int HVTK_CRYPT_DecryptFile(void* context, char* inputFile, char* outputFile);
int HVTK_CRYPT_Sign(
    void* context, BINSTR* certificate, BINSTR* privateKey, int hash, BINSTR* data, BINSTR* signature);
int HVTK_CRYPT_Verify(void* context, BINSTR* certificate, int hash, BINSTR* data, BINSTR* signature);
int HVTK_CRYPT_VerifyFile(void* context, BINSTR* certificate, int hash, char* dataFile, char* signatureFile);
int HVTK_CRYPT_AsymEncrypt(void* context, int option, BINSTR* key, BINSTR* data, BINSTR* cipher);
int HVTK_CRYPT_AsymDecrypt(void* context, int option, BINSTR* key, BINSTR* cipher, BINSTR* data);
int HVTK_CRYPT_Hash(void* context, int hash, BINSTR* data, BINSTR* digest);
int HVTK_CRYPT_HashFile(void* context, int hash, char* inputFile, BINSTR* digest);
int HVTK_CRYPT_GenMAC(void* context, int algorithm, char* password, BINSTR* data, BINSTR* mac);
int HVTK_CRYPT_GenMAC2(void* context, int algorithm, BINSTR* key, BINSTR* data, BINSTR* mac);
int HVTK_CRYPT_VerifyMAC(void* context, int algorithm, char* password, BINSTR* data, BINSTR* mac);
int HVTK_CRYPT_GenSharedKey(void* context, int algorithm, BINSTR* privateKey, BINSTR* publicKey, BINSTR* key);
int HVTK_CRYPT_SignFile(
    void* context, BINSTR* certificate, BINSTR* privateKey, int hash, char* inputFile, char* outputFile);

int GPKI_CRYPT_GenRandom(void* context, int length, BINSTR* random);
int GPKI_CRYPT_GenKeyAndIV(void* context, int algorithm);
int GPKI_CRYPT_SetKeyAndIV(void* context, int algorithm, BINSTR* key, BINSTR* iv);
int GPKI_CRYPT_GetKeyAndIV(void* context, int* algorithm, BINSTR* key, BINSTR* iv);
int GPKI_CRYPT_ClearKeyAndIV(void* context);
int GPKI_CRYPT_Encrypt(void* context, BINSTR* data, BINSTR* cipher);
int GPKI_CRYPT_Decrypt(void* context, BINSTR* cipher, BINSTR* data);
int GPKI_CRYPT_Encrypt_File(void* context, char* inputFile, char* outputFile);
int GPKI_CRYPT_Decrypt_File(void* context, char* inputFile, char* outputFile);
int GPKI_CRYPT_Sign(
    void* context, BINSTR* certificate, BINSTR* privateKey, int hash, BINSTR* data, BINSTR* signature);
int GPKI_CRYPT_Verify(void* context, BINSTR* certificate, int hash, BINSTR* data, BINSTR* signature);
int GPKI_CRYPT_Verify_File(void* context, BINSTR* certificate, int hash, char* dataFile, char* signatureFile);
int GPKI_CRYPT_AsymEncrypt(void* context, int option, BINSTR* key, BINSTR* data, BINSTR* cipher);
int GPKI_CRYPT_AsymDecrypt(void* context, int option, BINSTR* key, BINSTR* cipher, BINSTR* data);
int GPKI_CRYPT_Hash(void* context, int hash, BINSTR* data, BINSTR* digest);
int GPKI_CRYPT_GenMAC(void* context, int algorithm, char* password, BINSTR* data, BINSTR* mac);
int GPKI_CRYPT_VerifyMAC(void* context, int algorithm, char* password, BINSTR* data, BINSTR* mac);
int GPKI_CRYPT_Sign_File(
    void* context, BINSTR* certificate, BINSTR* privateKey, int hash, char* inputFile, char* outputFile);

} // extern "C"
