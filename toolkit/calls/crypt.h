// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Signatures, hashes, codes and encryption: bodies of the functions that both faces export.
 */
#pragma once

#include "toolkit/engine/base/digest.h"
#include "toolkit/engine/base/face.h"
#include "toolkit/engine/base/file.h"
#include "toolkit/engine/base/settings.h"
#include "toolkit/engine/keys/asymmetric.h"
#include "toolkit/engine/keys/private_key.h"

namespace toolkit::calls {

inline void cryptSetRSAVersion(Context& state, int version) { setRsaVersion(state, version); }

inline void cryptSetPaddingType(Context& state, int padding) { setPadding(state, padding); }

inline void cryptSetEnvChangeIV(Context& state) { state.sessionCipher.freshVectors(); }

/** @param publicKey SubjectPublicKeyInfo; @p privateKey PrivateKeyInfo */
inline void cryptGenKeyPair(Context& state, int kind, BINSTR* publicKey, BINSTR* privateKey)
{
    const KeyPair pair = generateKeyPair(state.library(), kind);
    put({{pair.publicKey, publicKey}, {pair.privateKey, privateKey}});
}

inline void cryptHashFile(Context& state, int algorithm, char* path, BINSTR* out)
{
    put(hashFile(state.library(), resolveHash(state, algorithm), inPath(state, path)), out);
}

/** HMAC under the bytes of a key. */
inline void cryptGenMAC2(Context& state, int algorithm, BINSTR* key, BINSTR* data, BINSTR* out)
{
    put(hmac(state.library(), resolveHash(state, algorithm), in(key), in(data)), out);
}

inline void cryptGenSharedKey(Context& state, int hash, BINSTR* privateKey, BINSTR* peer, BINSTR* out)
{
    put(sharedKey(state.library(), hash, in(privateKey), in(peer)), out);
}

inline void cryptGenRandom(Context& state, int length, BINSTR* out)
{
    put(randomBytes(state.library(), length), out);
}

inline void cryptGenKeyAndIV(Context& state, int algorithm)
{
    state.sessionCipher.generate(state.library(), algorithm);
}

inline void cryptSetKeyAndIV(Context& state, int algorithm, BINSTR* key, BINSTR* vector)
{
    state.sessionCipher.set(state.library(), algorithm, in(key), in(vector));
}

inline void cryptGetKeyAndIV(Context& state, int* algorithm, BINSTR* key, BINSTR* vector)
{
    require(algorithm != nullptr, SIGIL_TK_ARGUMENT);
    put({{state.sessionCipher.key(), key}, {state.sessionCipher.vector(), vector}});
    *algorithm = state.sessionCipher.algorithm();
}

inline void cryptClearKeyAndIV(Context& state) { state.sessionCipher.clear(); }

inline void cryptEncrypt(Context& state, BINSTR* data, BINSTR* out)
{
    put(state.sessionCipher.encrypt(state.library(), in(data)), out);
}

inline void cryptDecrypt(Context& state, BINSTR* data, BINSTR* out)
{
    put(state.sessionCipher.decrypt(state.library(), in(data)), out);
}

inline void cryptEncryptFile(Context& state, char* source, char* target)
{
    state.sessionCipher.encryptFile(state.library(), inPath(state, source), inPath(state, target));
}

inline void cryptDecryptFile(Context& state, char* source, char* target)
{
    state.sessionCipher.decryptFile(state.library(), inPath(state, source), inPath(state, target));
}

/** The certificate must belong to the key: a signature under the wrong one would verify nowhere. */
inline void cryptSign(Context& state, BINSTR* certificate, BINSTR* key, int hash, BINSTR* data, BINSTR* signature)
{
    checkKeyPair(state.library(), {state.library(), in(certificate)}, in(key));
    put(sign(state.library(), signatureScheme(state, hash), in(key), in(data)), signature);
}

/** Writes the bare signature bytes into a file of their own. */
inline void cryptSignFile(
    Context& state, BINSTR* certificate, BINSTR* key, int hash, char* path, char* signaturePath)
{
    checkKeyPair(state.library(), {state.library(), in(certificate)}, in(key));
    const std::string target = inPath(state, signaturePath);
    writeFile(target, signFile(state.library(), signatureScheme(state, hash), in(key), inPath(state, path)));
}

inline void cryptVerify(Context& state, BINSTR* certificate, int hash, BINSTR* data, BINSTR* signature)
{
    verify(
        state.library(), signatureScheme(state, hash), {state.library(), in(certificate)}, in(data), in(signature));
}

inline void cryptVerifyFile(Context& state, BINSTR* certificate, int hash, char* path, char* signaturePath)
{
    verifyFile(state.library(), signatureScheme(state, hash), {state.library(), in(certificate)},
        inPath(state, path), readFile(inPath(state, signaturePath)));
}

inline void cryptAsymEncrypt(Context& state, int keyKind, BINSTR* key, BINSTR* data, BINSTR* out)
{
    put(asymmetricEncrypt(state.library(), encryptionScheme(state), keyKind, in(key), in(data)), out);
}

inline void cryptAsymDecrypt(Context& state, int keyKind, BINSTR* key, BINSTR* data, BINSTR* out)
{
    put(asymmetricDecrypt(state.library(), encryptionScheme(state), keyKind, in(key), in(data)), out);
}

inline void cryptHash(Context& state, int algorithm, BINSTR* data, BINSTR* out)
{
    put(hash(state.library(), resolveHash(state, algorithm), in(data)), out);
}

/** HMAC under the bytes of a password. */
inline void cryptGenMAC(Context& state, int algorithm, char* password, BINSTR* data, BINSTR* out)
{
    put(hmac(state.library(), resolveHash(state, algorithm), view(in(password)), in(data)), out);
}

inline void cryptVerifyMAC(Context& state, int algorithm, char* password, BINSTR* data, BINSTR* mac)
{
    verifyHmac(state.library(), resolveHash(state, algorithm), view(in(password)), in(data), in(mac));
}

} // namespace toolkit::calls
