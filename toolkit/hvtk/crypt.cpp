// HVTK_CRYPT_: signatures, hashes, codes and encryption.

#include "toolkit/engine/base/digest.h"
#include "toolkit/engine/base/face.h"
#include "toolkit/engine/base/file.h"
#include "toolkit/engine/base/settings.h"
#include "toolkit/engine/keys/asymmetric.h"
#include "toolkit/engine/keys/private_key.h"

using namespace toolkit;

TOOLKIT_FUNCTION HVTK_CRYPT_SetRSAVersion(void* context, int version)
{
    return call(context, [&](Context& state) { setRsaVersion(state, version); });
}

TOOLKIT_FUNCTION HVTK_CRYPT_SetPaddingType(void* context, int padding)
{
    return call(context, [&](Context& state) { setPadding(state, padding); });
}

TOOLKIT_FUNCTION HVTK_CRYPT_SetEnvChangeIV(void* context)
{
    return call(context, [](Context& state) { state.sessionCipher.freshVectors(); });
}

/** @param publicKey SubjectPublicKeyInfo; @p privateKey PrivateKeyInfo */
TOOLKIT_FUNCTION HVTK_CRYPT_GenKeyPair(void* context, int kind, BINSTR* publicKey, BINSTR* privateKey)
{
    return call(context, [&](Context& state) {
        const KeyPair pair = generateKeyPair(state.library(), kind);
        put({{pair.publicKey, publicKey}, {pair.privateKey, privateKey}});
    });
}

TOOLKIT_FUNCTION HVTK_CRYPT_HashFile(void* context, int algorithm, char* path, BINSTR* out)
{
    return call(context, [&](Context& state) {
        put(hashFile(state.library(), resolveHash(state, algorithm), inPath(state, path)), out);
    });
}

/** HMAC under the bytes of a key. */
TOOLKIT_FUNCTION HVTK_CRYPT_GenMAC2(void* context, int algorithm, BINSTR* key, BINSTR* data, BINSTR* out)
{
    return call(context,
        [&](Context& state) { put(hmac(state.library(), resolveHash(state, algorithm), in(key), in(data)), out); });
}

TOOLKIT_FUNCTION HVTK_CRYPT_GenSharedKey(void* context, int hash, BINSTR* privateKey, BINSTR* peer, BINSTR* out)
{
    return call(
        context, [&](Context& state) { put(sharedKey(state.library(), hash, in(privateKey), in(peer)), out); });
}

TOOLKIT_FUNCTION HVTK_CRYPT_GenRandom(void* context, int length, BINSTR* out)
{
    return call(context, [&](Context& state) { put(randomBytes(state.library(), length), out); });
}

TOOLKIT_FUNCTION HVTK_CRYPT_GenKeyAndIV(void* context, int algorithm)
{
    return call(context, [&](Context& state) { state.sessionCipher.generate(state.library(), algorithm); });
}

TOOLKIT_FUNCTION HVTK_CRYPT_SetKeyAndIV(void* context, int algorithm, BINSTR* key, BINSTR* vector)
{
    return call(
        context, [&](Context& state) { state.sessionCipher.set(state.library(), algorithm, in(key), in(vector)); });
}

TOOLKIT_FUNCTION HVTK_CRYPT_GetKeyAndIV(void* context, int* algorithm, BINSTR* key, BINSTR* vector)
{
    return call(context, [&](Context& state) {
        require(algorithm != nullptr, SIGIL_TK_ARGUMENT);
        put({{state.sessionCipher.key(), key}, {state.sessionCipher.vector(), vector}});
        *algorithm = state.sessionCipher.algorithm();
    });
}

TOOLKIT_FUNCTION HVTK_CRYPT_ClearKeyAndIV(void* context)
{
    return call(context, [](Context& state) { state.sessionCipher.clear(); });
}

TOOLKIT_FUNCTION HVTK_CRYPT_Encrypt(void* context, BINSTR* data, BINSTR* out)
{
    return call(context, [&](Context& state) { put(state.sessionCipher.encrypt(state.library(), in(data)), out); });
}

TOOLKIT_FUNCTION HVTK_CRYPT_Decrypt(void* context, BINSTR* data, BINSTR* out)
{
    return call(context, [&](Context& state) { put(state.sessionCipher.decrypt(state.library(), in(data)), out); });
}

TOOLKIT_FUNCTION HVTK_CRYPT_EncryptFile(void* context, char* source, char* target)
{
    return call(context, [&](Context& state) {
        state.sessionCipher.encryptFile(state.library(), inPath(state, source), inPath(state, target));
    });
}

TOOLKIT_FUNCTION HVTK_CRYPT_DecryptFile(void* context, char* source, char* target)
{
    return call(context, [&](Context& state) {
        state.sessionCipher.decryptFile(state.library(), inPath(state, source), inPath(state, target));
    });
}

/** The certificate must belong to the key: a signature under the wrong one would verify nowhere. */
TOOLKIT_FUNCTION HVTK_CRYPT_Sign(
    void* context, BINSTR* certificate, BINSTR* key, int hash, BINSTR* data, BINSTR* signature)
{
    return call(context, [&](Context& state) {
        checkKeyPair(state.library(), {state.library(), in(certificate)}, in(key));
        put(sign(state.library(), signatureScheme(state, hash), in(key), in(data)), signature);
    });
}

/** Writes the bare signature bytes into a file of their own. */
TOOLKIT_FUNCTION HVTK_CRYPT_SignFile(
    void* context, BINSTR* certificate, BINSTR* key, int hash, char* path, char* signaturePath)
{
    return call(context, [&](Context& state) {
        checkKeyPair(state.library(), {state.library(), in(certificate)}, in(key));
        const std::string target = inPath(state, signaturePath);
        writeFile(target, signFile(state.library(), signatureScheme(state, hash), in(key), inPath(state, path)));
    });
}

TOOLKIT_FUNCTION HVTK_CRYPT_Verify(void* context, BINSTR* certificate, int hash, BINSTR* data, BINSTR* signature)
{
    return call(context, [&](Context& state) {
        verify(state.library(), signatureScheme(state, hash), {state.library(), in(certificate)}, in(data),
            in(signature));
    });
}

TOOLKIT_FUNCTION HVTK_CRYPT_VerifyFile(
    void* context, BINSTR* certificate, int hash, char* path, char* signaturePath)
{
    return call(context, [&](Context& state) {
        verifyFile(state.library(), signatureScheme(state, hash), {state.library(), in(certificate)},
            inPath(state, path), readFile(inPath(state, signaturePath)));
    });
}

TOOLKIT_FUNCTION HVTK_CRYPT_AsymEncrypt(void* context, int keyKind, BINSTR* key, BINSTR* data, BINSTR* out)
{
    return call(context, [&](Context& state) {
        put(asymmetricEncrypt(state.library(), encryptionScheme(state), keyKind, in(key), in(data)), out);
    });
}

TOOLKIT_FUNCTION HVTK_CRYPT_AsymDecrypt(void* context, int keyKind, BINSTR* key, BINSTR* data, BINSTR* out)
{
    return call(context, [&](Context& state) {
        put(asymmetricDecrypt(state.library(), encryptionScheme(state), keyKind, in(key), in(data)), out);
    });
}

TOOLKIT_FUNCTION HVTK_CRYPT_Hash(void* context, int algorithm, BINSTR* data, BINSTR* out)
{
    return call(
        context, [&](Context& state) { put(hash(state.library(), resolveHash(state, algorithm), in(data)), out); });
}

/** HMAC under the bytes of a password. */
TOOLKIT_FUNCTION HVTK_CRYPT_GenMAC(void* context, int algorithm, char* password, BINSTR* data, BINSTR* out)
{
    return call(context, [&](Context& state) {
        put(hmac(state.library(), resolveHash(state, algorithm), view(in(password)), in(data)), out);
    });
}

TOOLKIT_FUNCTION HVTK_CRYPT_VerifyMAC(void* context, int algorithm, char* password, BINSTR* data, BINSTR* mac)
{
    return call(context, [&](Context& state) {
        verifyHmac(state.library(), resolveHash(state, algorithm), view(in(password)), in(data), in(mac));
    });
}
