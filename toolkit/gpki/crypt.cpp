// GPKI_CRYPT_: signatures, hashes, codes and encryption.

#include "toolkit/calls/crypt.h"
#include "toolkit/engine/base/face.h"
#include "toolkit_abi/gpki.h"

using namespace toolkit;

TOOLKIT_FUNCTION GPKI_CRYPT_GenRandom(void* context, int length, BINSTR* out)
{
    return call(context, calls::cryptGenRandom, length, out);
}

TOOLKIT_FUNCTION GPKI_CRYPT_GenKeyAndIV(void* context, int algorithm)
{
    return call(context, calls::cryptGenKeyAndIV, algorithm);
}

TOOLKIT_FUNCTION GPKI_CRYPT_SetKeyAndIV(void* context, int algorithm, BINSTR* key, BINSTR* vector)
{
    return call(context, calls::cryptSetKeyAndIV, algorithm, key, vector);
}

TOOLKIT_FUNCTION GPKI_CRYPT_GetKeyAndIV(void* context, int* algorithm, BINSTR* key, BINSTR* vector)
{
    return call(context, calls::cryptGetKeyAndIV, algorithm, key, vector);
}

TOOLKIT_FUNCTION GPKI_CRYPT_ClearKeyAndIV(void* context) { return call(context, calls::cryptClearKeyAndIV); }

TOOLKIT_FUNCTION GPKI_CRYPT_Encrypt(void* context, BINSTR* data, BINSTR* out)
{
    return call(context, calls::cryptEncrypt, data, out);
}

TOOLKIT_FUNCTION GPKI_CRYPT_Decrypt(void* context, BINSTR* data, BINSTR* out)
{
    return call(context, calls::cryptDecrypt, data, out);
}

TOOLKIT_FUNCTION GPKI_CRYPT_Encrypt_File(void* context, char* source, char* target)
{
    return call(context, calls::cryptEncryptFile, source, target);
}

TOOLKIT_FUNCTION GPKI_CRYPT_Decrypt_File(void* context, char* source, char* target)
{
    return call(context, calls::cryptDecryptFile, source, target);
}

TOOLKIT_FUNCTION GPKI_CRYPT_Sign(
    void* context, BINSTR* certificate, BINSTR* key, int hash, BINSTR* data, BINSTR* signature)
{
    return call(context, calls::cryptSign, certificate, key, hash, data, signature);
}

TOOLKIT_FUNCTION GPKI_CRYPT_Sign_File(
    void* context, BINSTR* certificate, BINSTR* key, int hash, char* path, char* signaturePath)
{
    return call(context, calls::cryptSignFile, certificate, key, hash, path, signaturePath);
}

TOOLKIT_FUNCTION GPKI_CRYPT_Verify(void* context, BINSTR* certificate, int hash, BINSTR* data, BINSTR* signature)
{
    return call(context, calls::cryptVerify, certificate, hash, data, signature);
}

TOOLKIT_FUNCTION GPKI_CRYPT_Verify_File(
    void* context, BINSTR* certificate, int hash, char* path, char* signaturePath)
{
    return call(context, calls::cryptVerifyFile, certificate, hash, path, signaturePath);
}

TOOLKIT_FUNCTION GPKI_CRYPT_AsymEncrypt(void* context, int keyKind, BINSTR* key, BINSTR* data, BINSTR* out)
{
    return call(context, calls::cryptAsymEncrypt, keyKind, key, data, out);
}

TOOLKIT_FUNCTION GPKI_CRYPT_AsymDecrypt(void* context, int keyKind, BINSTR* key, BINSTR* data, BINSTR* out)
{
    return call(context, calls::cryptAsymDecrypt, keyKind, key, data, out);
}

TOOLKIT_FUNCTION GPKI_CRYPT_Hash(void* context, int algorithm, BINSTR* data, BINSTR* out)
{
    return call(context, calls::cryptHash, algorithm, data, out);
}

TOOLKIT_FUNCTION GPKI_CRYPT_GenMAC(void* context, int algorithm, char* password, BINSTR* data, BINSTR* out)
{
    return call(context, calls::cryptGenMAC, algorithm, password, data, out);
}

TOOLKIT_FUNCTION GPKI_CRYPT_VerifyMAC(void* context, int algorithm, char* password, BINSTR* data, BINSTR* mac)
{
    return call(context, calls::cryptVerifyMAC, algorithm, password, data, mac);
}
