// HVTK_CRYPT_: signatures, hashes, codes and encryption.

#include "toolkit/calls/crypt.h"
#include "toolkit/engine/base/face.h"
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

TOOLKIT_FUNCTION HVTK_CRYPT_GenKeyAndIV(void* context, int algorithm)
{
    return call(context, calls::cryptGenKeyAndIV, algorithm);
}

TOOLKIT_FUNCTION HVTK_CRYPT_SetKeyAndIV(void* context, int algorithm, BINSTR* key, BINSTR* vector)
{
    return call(context, calls::cryptSetKeyAndIV, algorithm, key, vector);
}

TOOLKIT_FUNCTION HVTK_CRYPT_GetKeyAndIV(void* context, int* algorithm, BINSTR* key, BINSTR* vector)
{
    return call(context, calls::cryptGetKeyAndIV, algorithm, key, vector);
}

TOOLKIT_FUNCTION HVTK_CRYPT_ClearKeyAndIV(void* context) { return call(context, calls::cryptClearKeyAndIV); }

TOOLKIT_FUNCTION HVTK_CRYPT_Encrypt(void* context, BINSTR* data, BINSTR* out)
{
    return call(context, calls::cryptEncrypt, data, out);
}

TOOLKIT_FUNCTION HVTK_CRYPT_Decrypt(void* context, BINSTR* data, BINSTR* out)
{
    return call(context, calls::cryptDecrypt, data, out);
}

TOOLKIT_FUNCTION HVTK_CRYPT_EncryptFile(void* context, char* source, char* target)
{
    return call(context, calls::cryptEncryptFile, source, target);
}

TOOLKIT_FUNCTION HVTK_CRYPT_DecryptFile(void* context, char* source, char* target)
{
    return call(context, calls::cryptDecryptFile, source, target);
}

TOOLKIT_FUNCTION HVTK_CRYPT_Sign(
    void* context, BINSTR* certificate, BINSTR* key, int hash, BINSTR* data, BINSTR* signature)
{
    return call(context, calls::cryptSign, certificate, key, hash, data, signature);
}

TOOLKIT_FUNCTION HVTK_CRYPT_SignFile(
    void* context, BINSTR* certificate, BINSTR* key, int hash, char* path, char* signaturePath)
{
    return call(context, calls::cryptSignFile, certificate, key, hash, path, signaturePath);
}

TOOLKIT_FUNCTION HVTK_CRYPT_Verify(void* context, BINSTR* certificate, int hash, BINSTR* data, BINSTR* signature)
{
    return call(context, calls::cryptVerify, certificate, hash, data, signature);
}

TOOLKIT_FUNCTION HVTK_CRYPT_VerifyFile(
    void* context, BINSTR* certificate, int hash, char* path, char* signaturePath)
{
    return call(context, calls::cryptVerifyFile, certificate, hash, path, signaturePath);
}

TOOLKIT_FUNCTION HVTK_CRYPT_AsymEncrypt(void* context, int keyKind, BINSTR* key, BINSTR* data, BINSTR* out)
{
    return call(context, calls::cryptAsymEncrypt, keyKind, key, data, out);
}

TOOLKIT_FUNCTION HVTK_CRYPT_AsymDecrypt(void* context, int keyKind, BINSTR* key, BINSTR* data, BINSTR* out)
{
    return call(context, calls::cryptAsymDecrypt, keyKind, key, data, out);
}

TOOLKIT_FUNCTION HVTK_CRYPT_Hash(void* context, int algorithm, BINSTR* data, BINSTR* out)
{
    return call(context, calls::cryptHash, algorithm, data, out);
}

TOOLKIT_FUNCTION HVTK_CRYPT_GenMAC(void* context, int algorithm, char* password, BINSTR* data, BINSTR* out)
{
    return call(context, calls::cryptGenMAC, algorithm, password, data, out);
}

TOOLKIT_FUNCTION HVTK_CRYPT_VerifyMAC(void* context, int algorithm, char* password, BINSTR* data, BINSTR* mac)
{
    return call(context, calls::cryptVerifyMAC, algorithm, password, data, mac);
}
