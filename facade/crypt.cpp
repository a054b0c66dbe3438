// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Cryptographic primitives.

#include "facade/row.h"

#include <sigildesk/crypto/crypt.h>

using namespace sigil;

int CRYPTSetRSAVersion(void* handle, int version)
{
    return row(handle, {}, maker(SYMBOL(HVTK_CRYPT_SetRSAVersion), version), absent);
}

int CRYPTSetPaddingType(void* handle, int padding)
{
    return row(handle, {}, maker(SYMBOL(HVTK_CRYPT_SetPaddingType), padding), absent);
}

int CRYPTSetEnvChangeIV(void* handle) { return row(handle, {}, maker(SYMBOL(HVTK_CRYPT_SetEnvChangeIV)), absent); }

int CRYPTGenRandom(void* handle, int length, BINSTR* random)
{
    return secretRow(handle, {}, maker(SYMBOL(HVTK_CRYPT_GenRandom), length, random),
        gpki(SYMBOL(GPKI_CRYPT_GenRandom), length, random));
}

int CRYPTGenKeyPair(void* handle, int bits, BINSTR* publicKey, BINSTR* privateKey)
{
    return secretRow(handle, {}, maker(SYMBOL(HVTK_CRYPT_GenKeyPair), bits, publicKey, privateKey), absent);
}

int CRYPTGenKeyAndIV(void* handle, int algorithm)
{
    return secretRow(handle, {}, maker(SYMBOL(HVTK_CRYPT_GenKeyAndIV), algorithm),
        gpki(SYMBOL(GPKI_CRYPT_GenKeyAndIV), algorithm));
}

int CRYPTSetKeyAndIV(void* handle, int algorithm, BINSTR* key, BINSTR* iv)
{
    return secretRow(handle, {need(key), need(iv)}, maker(SYMBOL(HVTK_CRYPT_SetKeyAndIV), algorithm, key, iv),
        gpki(SYMBOL(GPKI_CRYPT_SetKeyAndIV), algorithm, key, iv));
}

int CRYPTGetKeyAndIV(void* handle, int* algorithm, BINSTR* key, BINSTR* iv)
{
    return secretRow(handle, {}, maker(SYMBOL(HVTK_CRYPT_GetKeyAndIV), algorithm, key, iv),
        gpki(SYMBOL(GPKI_CRYPT_GetKeyAndIV), algorithm, key, iv));
}

int CRYPTClearKeyAndIV(void* handle)
{
    return row(handle, {}, maker(SYMBOL(HVTK_CRYPT_ClearKeyAndIV)), gpki(SYMBOL(GPKI_CRYPT_ClearKeyAndIV)));
}

int CRYPTEncrypt(void* handle, BINSTR* data, BINSTR* cipher)
{
    return secretRow(handle, {need(data)}, maker(SYMBOL(HVTK_CRYPT_Encrypt), data, cipher),
        gpki(SYMBOL(GPKI_CRYPT_Encrypt), data, cipher));
}

int CRYPTDecrypt(void* handle, BINSTR* cipher, BINSTR* data)
{
    return secretRow(handle, {need(cipher)}, maker(SYMBOL(HVTK_CRYPT_Decrypt), cipher, data),
        gpki(SYMBOL(GPKI_CRYPT_Decrypt), cipher, data));
}

int CRYPTEncryptFile(void* handle, char* inputFile, char* outputFile)
{
    return secretRow(handle, {need(inputFile)}, maker(SYMBOL(HVTK_CRYPT_EncryptFile), inputFile, outputFile),
        gpki(SYMBOL(GPKI_CRYPT_Encrypt_File), inputFile, outputFile));
}

int CRYPTDecryptFile(void* handle, char* inputFile, char* outputFile)
{
    return secretRow(handle, {need(inputFile)}, maker(SYMBOL(HVTK_CRYPT_DecryptFile), inputFile, outputFile),
        gpki(SYMBOL(GPKI_CRYPT_Decrypt_File), inputFile, outputFile));
}

int CRYPTSign(void* handle, BINSTR* certificate, BINSTR* privateKey, int hash, BINSTR* data, BINSTR* signature)
{
    return secretRow(handle, {need(certificate), need(privateKey), need(data)},
        maker(SYMBOL(HVTK_CRYPT_Sign), certificate, privateKey, hash, data, signature),
        gpki(SYMBOL(GPKI_CRYPT_Sign), certificate, privateKey, hash, data, signature));
}

int CRYPTVerify(void* handle, BINSTR* certificate, int hash, BINSTR* data, BINSTR* signature)
{
    return row(handle, {need(certificate), need(data), need(signature)},
        maker(SYMBOL(HVTK_CRYPT_Verify), certificate, hash, data, signature),
        gpki(SYMBOL(GPKI_CRYPT_Verify), certificate, hash, data, signature));
}

int CRYPTVerifyFile(void* handle, BINSTR* certificate, int hash, char* dataFile, char* signatureFile)
{
    return row(handle, {need(certificate), need(dataFile), need(signatureFile)},
        maker(SYMBOL(HVTK_CRYPT_VerifyFile), certificate, hash, dataFile, signatureFile),
        gpki(SYMBOL(GPKI_CRYPT_Verify_File), certificate, hash, dataFile, signatureFile));
}

int CRYPTAsymEncrypt(void* handle, int option, BINSTR* key, BINSTR* data, BINSTR* cipher)
{
    return secretRow(handle, {need(key), need(data)},
        maker(SYMBOL(HVTK_CRYPT_AsymEncrypt), option, key, data, cipher),
        gpki(SYMBOL(GPKI_CRYPT_AsymEncrypt), option, key, data, cipher));
}

int CRYPTAsymDecrypt(void* handle, int option, BINSTR* key, BINSTR* cipher, BINSTR* data)
{
    return secretRow(handle, {need(key), need(cipher)},
        maker(SYMBOL(HVTK_CRYPT_AsymDecrypt), option, key, cipher, data),
        gpki(SYMBOL(GPKI_CRYPT_AsymDecrypt), option, key, cipher, data));
}

int CRYPTHash(void* handle, int hash, BINSTR* data, BINSTR* digest)
{
    return row(handle, {need(data)}, maker(SYMBOL(HVTK_CRYPT_Hash), hash, data, digest),
        gpki(SYMBOL(GPKI_CRYPT_Hash), hash, data, digest));
}

int CRYPTHashFile(void* handle, int hash, char* inputFile, BINSTR* digest)
{
    return row(handle, {need(inputFile)}, maker(SYMBOL(HVTK_CRYPT_HashFile), hash, inputFile, digest), absent);
}

int CRYPTGenMAC(void* handle, int algorithm, char* password, BINSTR* data, BINSTR* mac)
{
    return secretRow(handle, {need(password), need(data)},
        maker(SYMBOL(HVTK_CRYPT_GenMAC), algorithm, password, data, mac),
        gpki(SYMBOL(GPKI_CRYPT_GenMAC), algorithm, password, data, mac));
}

int CRYPTGenMAC2(void* handle, int algorithm, BINSTR* key, BINSTR* data, BINSTR* mac)
{
    return secretRow(
        handle, {need(key), need(data)}, maker(SYMBOL(HVTK_CRYPT_GenMAC2), algorithm, key, data, mac), absent);
}

int CRYPTVerifyMAC(void* handle, int algorithm, char* password, BINSTR* data, BINSTR* mac)
{
    return secretRow(handle, {need(password), need(data)},
        maker(SYMBOL(HVTK_CRYPT_VerifyMAC), algorithm, password, data, mac),
        gpki(SYMBOL(GPKI_CRYPT_VerifyMAC), algorithm, password, data, mac));
}

int CRYPTGenSharedKey(void* handle, int algorithm, BINSTR* privateKey, BINSTR* publicKey, BINSTR* key)
{
    return secretRow(handle, {need(privateKey), need(publicKey)},
        maker(SYMBOL(HVTK_CRYPT_GenSharedKey), algorithm, privateKey, publicKey, key), absent);
}
