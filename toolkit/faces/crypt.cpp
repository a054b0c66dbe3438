// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// CRYPT_: signatures, hashes, codes and encryption.

#include "toolkit/calls/crypt.h"
#include "toolkit/engine/base/face.h"
#include "toolkit_abi/gpki.h"
#include "toolkit_abi/hvtk.h"

using namespace toolkit;

TOOLKIT_FUNCTION HVTK_CRYPT_SetRSAVersion(void* context, int version)
{
    return call(context, calls::cryptSetRSAVersion, version);
}

TOOLKIT_FUNCTION HVTK_CRYPT_SetPaddingType(void* context, int padding)
{
    return call(context, calls::cryptSetPaddingType, padding);
}

TOOLKIT_FUNCTION HVTK_CRYPT_SetEnvChangeIV(void* context) { return call(context, calls::cryptSetEnvChangeIV); }

TOOLKIT_FUNCTION HVTK_CRYPT_GenKeyPair(void* context, int kind, BINSTR* publicKey, BINSTR* privateKey)
{
    return call(context, calls::cryptGenKeyPair, kind, publicKey, privateKey);
}

TOOLKIT_FUNCTION HVTK_CRYPT_HashFile(void* context, int algorithm, char* path, BINSTR* out)
{
    return call(context, calls::cryptHashFile, algorithm, path, out);
}

TOOLKIT_FUNCTION HVTK_CRYPT_GenMAC2(void* context, int algorithm, BINSTR* key, BINSTR* data, BINSTR* out)
{
    return call(context, calls::cryptGenMAC2, algorithm, key, data, out);
}

TOOLKIT_FUNCTION HVTK_CRYPT_GenSharedKey(void* context, int hash, BINSTR* privateKey, BINSTR* peer, BINSTR* out)
{
    return call(context, calls::cryptGenSharedKey, hash, privateKey, peer, out);
}

TOOLKIT_FUNCTION HVTK_CRYPT_GenRandom(void* context, int length, BINSTR* out)
{
    return call(context, calls::cryptGenRandom, length, out);
}
SAME_FUNCTION(GPKI_CRYPT_GenRandom, HVTK_CRYPT_GenRandom);

TOOLKIT_FUNCTION HVTK_CRYPT_GenKeyAndIV(void* context, int algorithm)
{
    return call(context, calls::cryptGenKeyAndIV, algorithm);
}
SAME_FUNCTION(GPKI_CRYPT_GenKeyAndIV, HVTK_CRYPT_GenKeyAndIV);

TOOLKIT_FUNCTION HVTK_CRYPT_SetKeyAndIV(void* context, int algorithm, BINSTR* key, BINSTR* vector)
{
    return call(context, calls::cryptSetKeyAndIV, algorithm, key, vector);
}
SAME_FUNCTION(GPKI_CRYPT_SetKeyAndIV, HVTK_CRYPT_SetKeyAndIV);

TOOLKIT_FUNCTION HVTK_CRYPT_GetKeyAndIV(void* context, int* algorithm, BINSTR* key, BINSTR* vector)
{
    return call(context, calls::cryptGetKeyAndIV, algorithm, key, vector);
}
SAME_FUNCTION(GPKI_CRYPT_GetKeyAndIV, HVTK_CRYPT_GetKeyAndIV);

TOOLKIT_FUNCTION HVTK_CRYPT_ClearKeyAndIV(void* context) { return call(context, calls::cryptClearKeyAndIV); }
SAME_FUNCTION(GPKI_CRYPT_ClearKeyAndIV, HVTK_CRYPT_ClearKeyAndIV);

TOOLKIT_FUNCTION HVTK_CRYPT_Encrypt(void* context, BINSTR* data, BINSTR* out)
{
    return call(context, calls::cryptEncrypt, data, out);
}
SAME_FUNCTION(GPKI_CRYPT_Encrypt, HVTK_CRYPT_Encrypt);

TOOLKIT_FUNCTION HVTK_CRYPT_Decrypt(void* context, BINSTR* data, BINSTR* out)
{
    return call(context, calls::cryptDecrypt, data, out);
}
SAME_FUNCTION(GPKI_CRYPT_Decrypt, HVTK_CRYPT_Decrypt);

TOOLKIT_FUNCTION HVTK_CRYPT_EncryptFile(void* context, char* source, char* target)
{
    return call(context, calls::cryptEncryptFile, source, target);
}
SAME_FUNCTION(GPKI_CRYPT_Encrypt_File, HVTK_CRYPT_EncryptFile);

TOOLKIT_FUNCTION HVTK_CRYPT_DecryptFile(void* context, char* source, char* target)
{
    return call(context, calls::cryptDecryptFile, source, target);
}
SAME_FUNCTION(GPKI_CRYPT_Decrypt_File, HVTK_CRYPT_DecryptFile);

TOOLKIT_FUNCTION HVTK_CRYPT_Sign(
    void* context, BINSTR* certificate, BINSTR* key, int hash, BINSTR* data, BINSTR* signature)
{
    return call(context, calls::cryptSign, certificate, key, hash, data, signature);
}
SAME_FUNCTION(GPKI_CRYPT_Sign, HVTK_CRYPT_Sign);

TOOLKIT_FUNCTION HVTK_CRYPT_SignFile(
    void* context, BINSTR* certificate, BINSTR* key, int hash, char* path, char* signaturePath)
{
    return call(context, calls::cryptSignFile, certificate, key, hash, path, signaturePath);
}
SAME_FUNCTION(GPKI_CRYPT_Sign_File, HVTK_CRYPT_SignFile);

TOOLKIT_FUNCTION HVTK_CRYPT_Verify(void* context, BINSTR* certificate, int hash, BINSTR* data, BINSTR* signature)
{
    return call(context, calls::cryptVerify, certificate, hash, data, signature);
}
SAME_FUNCTION(GPKI_CRYPT_Verify, HVTK_CRYPT_Verify);

TOOLKIT_FUNCTION HVTK_CRYPT_VerifyFile(
    void* context, BINSTR* certificate, int hash, char* path, char* signaturePath)
{
    return call(context, calls::cryptVerifyFile, certificate, hash, path, signaturePath);
}
SAME_FUNCTION(GPKI_CRYPT_Verify_File, HVTK_CRYPT_VerifyFile);

TOOLKIT_FUNCTION HVTK_CRYPT_AsymEncrypt(void* context, int keyKind, BINSTR* key, BINSTR* data, BINSTR* out)
{
    return call(context, calls::cryptAsymEncrypt, keyKind, key, data, out);
}
SAME_FUNCTION(GPKI_CRYPT_AsymEncrypt, HVTK_CRYPT_AsymEncrypt);

TOOLKIT_FUNCTION HVTK_CRYPT_AsymDecrypt(void* context, int keyKind, BINSTR* key, BINSTR* data, BINSTR* out)
{
    return call(context, calls::cryptAsymDecrypt, keyKind, key, data, out);
}
SAME_FUNCTION(GPKI_CRYPT_AsymDecrypt, HVTK_CRYPT_AsymDecrypt);

TOOLKIT_FUNCTION HVTK_CRYPT_Hash(void* context, int algorithm, BINSTR* data, BINSTR* out)
{
    return call(context, calls::cryptHash, algorithm, data, out);
}
SAME_FUNCTION(GPKI_CRYPT_Hash, HVTK_CRYPT_Hash);

TOOLKIT_FUNCTION HVTK_CRYPT_GenMAC(void* context, int algorithm, char* password, BINSTR* data, BINSTR* out)
{
    return call(context, calls::cryptGenMAC, algorithm, password, data, out);
}
SAME_FUNCTION(GPKI_CRYPT_GenMAC, HVTK_CRYPT_GenMAC);

TOOLKIT_FUNCTION HVTK_CRYPT_VerifyMAC(void* context, int algorithm, char* password, BINSTR* data, BINSTR* mac)
{
    return call(context, calls::cryptVerifyMAC, algorithm, password, data, mac);
}
SAME_FUNCTION(GPKI_CRYPT_VerifyMAC, HVTK_CRYPT_VerifyMAC);
