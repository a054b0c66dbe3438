// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Cryptographic primitives.
 *
 *  Algorithm numbers, paddings and key forms are the toolkit's. A key and an initialisation vector live in the
 *  toolkit, one pair per handle, between CRYPTGenKeyAndIV or CRYPTSetKeyAndIV and CRYPTClearKeyAndIV.
 *  The rules that hold for every function (handle, codes, ownership, texts) stand in <sigildesk/crypto.h>.
 */
#ifndef SIGILDESK_CRYPTO_CRYPT_H
#define SIGILDESK_CRYPTO_CRYPT_H

#include <sigildesk/binstr.h>
#include <sigildesk/export.h>

/** Chooses the version of the RSA scheme.
 *  @param version  number of the toolkit
 *  @return the common codes; 1003 on the GPKI library */
SIGIL_EXPORT int CRYPTSetRSAVersion(void* handle, int version);

/** Chooses the padding.
 *  @param padding  number of the toolkit
 *  @return the common codes; 1003 on the GPKI library */
SIGIL_EXPORT int CRYPTSetPaddingType(void* handle, int padding);

/** Makes the toolkit change the initialisation vector from call to call.
 *  @return the common codes; 1003 on the GPKI library */
SIGIL_EXPORT int CRYPTSetEnvChangeIV(void* handle);

/** Makes random bytes.
 *  @param length  number of bytes
 *  @param random  filled by the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @return the common codes */
SIGIL_EXPORT int CRYPTGenRandom(void* handle, int length, BINSTR* random);

/** Makes a key pair.
 *  @param bits        number of the toolkit
 *  @param publicKey   filled by the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @param privateKey  filled by the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @return the common codes; 1003 on the GPKI library */
SIGIL_EXPORT int CRYPTGenKeyPair(void* handle, int bits, BINSTR* publicKey, BINSTR* privateKey);

/** Makes the handle's key and initialisation vector.
 *  @param algorithm  algorithm, a number of the toolkit
 *  @return the common codes */
SIGIL_EXPORT int CRYPTGenKeyAndIV(void* handle, int algorithm);

/** Sets the handle's key and initialisation vector.
 *  @param algorithm  algorithm, a number of the toolkit
 *  @param key        key
 *  @param iv         initialisation vector
 *  @return the common codes; 1001 when @p key or @p iv is empty */
SIGIL_EXPORT int CRYPTSetKeyAndIV(void* handle, int algorithm, BINSTR* key, BINSTR* iv);

/** Gives the handle's key and initialisation vector.
 *  @param algorithm  receives the algorithm
 *  @param key        filled by the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @param iv         filled by the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @return the common codes */
SIGIL_EXPORT int CRYPTGetKeyAndIV(void* handle, int* algorithm, BINSTR* key, BINSTR* iv);

/** Forgets the handle's key and initialisation vector.
 *  @return the common codes */
SIGIL_EXPORT int CRYPTClearKeyAndIV(void* handle);

/** Encrypts data under the handle's key.
 *  @param data    data
 *  @param cipher  filled by the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @return the common codes; 1001 when @p data is empty */
SIGIL_EXPORT int CRYPTEncrypt(void* handle, BINSTR* data, BINSTR* cipher);

/** Decrypts data under the handle's key.
 *  @param cipher  encrypted data
 *  @param data    filled by the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @return the common codes; 1001 when @p cipher is empty */
SIGIL_EXPORT int CRYPTDecrypt(void* handle, BINSTR* cipher, BINSTR* data);

/** Encrypts a file under the handle's key.
 *  @param inputFile   path of the input
 *  @param outputFile  path of the output
 *  @return the common codes; 1001 when @p inputFile is null */
SIGIL_EXPORT int CRYPTEncryptFile(void* handle, char* inputFile, char* outputFile);

/** Decrypts a file under the handle's key.
 *  @param inputFile   path of the input
 *  @param outputFile  path of the output
 *  @return the common codes; 1001 when @p inputFile is null */
SIGIL_EXPORT int CRYPTDecryptFile(void* handle, char* inputFile, char* outputFile);

/** Signs data.
 *  @param certificate  DER certificate
 *  @param privateKey   private key
 *  @param hash         hash algorithm, a number of the toolkit
 *  @param data         data
 *  @param signature    filled by the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @return the common codes; 1001 when @p certificate, @p privateKey or @p data is empty */
SIGIL_EXPORT int CRYPTSign(
    void* handle, BINSTR* certificate, BINSTR* privateKey, int hash, BINSTR* data, BINSTR* signature);

/** Verifies a signature: 0 when it is good.
 *  @param certificate  DER certificate
 *  @param hash         hash algorithm, a number of the toolkit
 *  @param data         data
 *  @param signature    signature
 *  @return the common codes; 1001 when @p certificate, @p data or @p signature is empty */
SIGIL_EXPORT int CRYPTVerify(void* handle, BINSTR* certificate, int hash, BINSTR* data, BINSTR* signature);

/** Verifies the signature of a file.
 *  @param certificate    DER certificate
 *  @param hash           hash algorithm, a number of the toolkit
 *  @param dataFile       path of the data
 *  @param signatureFile  path of the signature
 *  @return the common codes; 1001 when @p certificate is empty or @p dataFile or @p signatureFile is null */
SIGIL_EXPORT int CRYPTVerifyFile(void* handle, BINSTR* certificate, int hash, char* dataFile, char* signatureFile);

/** Encrypts data with an asymmetric key.
 *  @param option  number of the toolkit
 *  @param key     key
 *  @param data    data
 *  @param cipher  filled by the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @return the common codes; 1001 when @p key or @p data is empty */
SIGIL_EXPORT int CRYPTAsymEncrypt(void* handle, int option, BINSTR* key, BINSTR* data, BINSTR* cipher);

/** Decrypts data with an asymmetric key.
 *  @param option  number of the toolkit
 *  @param key     key
 *  @param cipher  encrypted data
 *  @param data    filled by the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @return the common codes; 1001 when @p key or @p cipher is empty */
SIGIL_EXPORT int CRYPTAsymDecrypt(void* handle, int option, BINSTR* key, BINSTR* cipher, BINSTR* data);

/** Digests data.
 *  @param hash    hash algorithm, a number of the toolkit
 *  @param data    data
 *  @param digest  filled by the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @return the common codes; 1001 when @p data is empty */
SIGIL_EXPORT int CRYPTHash(void* handle, int hash, BINSTR* data, BINSTR* digest);

/** Digests a file.
 *  @param hash       hash algorithm, a number of the toolkit
 *  @param inputFile  path of the input
 *  @param digest     filled by the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @return the common codes; 1001 when @p inputFile is null; 1003 on the GPKI library */
SIGIL_EXPORT int CRYPTHashFile(void* handle, int hash, char* inputFile, BINSTR* digest);

/** Makes a MAC under a password.
 *  @param algorithm  algorithm, a number of the toolkit
 *  @param password   text of the toolkit, required
 *  @param data       data
 *  @param mac        filled by the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @return the common codes; 1001 when @p data is empty or @p password is null */
SIGIL_EXPORT int CRYPTGenMAC(void* handle, int algorithm, char* password, BINSTR* data, BINSTR* mac);

/** Makes a MAC under a key.
 *  @param algorithm  algorithm, a number of the toolkit
 *  @param key        key
 *  @param data       data
 *  @param mac        filled by the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @return the common codes; 1001 when @p key or @p data is empty; 1003 on the GPKI library */
SIGIL_EXPORT int CRYPTGenMAC2(void* handle, int algorithm, BINSTR* key, BINSTR* data, BINSTR* mac);

/** Verifies a MAC of CRYPTGenMAC: 0 when it is good.
 *  @param algorithm  algorithm, a number of the toolkit
 *  @param password   text of the toolkit, required
 *  @param data       data
 *  @param mac        MAC value
 *  @return the common codes; 1001 when @p data is empty or @p password is null */
SIGIL_EXPORT int CRYPTVerifyMAC(void* handle, int algorithm, char* password, BINSTR* data, BINSTR* mac);

/** Agrees on a key with another party.
 *  @param algorithm   how the key is derived, a number of the toolkit
 *  @param privateKey  own private key
 *  @param publicKey   other party's public key
 *  @param key         filled by the toolkit; release it with HV_BINSTR_Delete on the same handle
 *  @return the common codes; 1001 when @p privateKey or @p publicKey is empty; 1003 on the GPKI library */
SIGIL_EXPORT int CRYPTGenSharedKey(void* handle, int algorithm, BINSTR* privateKey, BINSTR* publicKey, BINSTR* key);

#endif
