// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Key pairs, signatures and encryption with them (RFC 8017 for RSA, FIPS 186-4 for ECDSA).
 */
#pragma once

#include "toolkit/engine/base/bytes.h"
#include "toolkit/engine/base/library.h"
#include "toolkit/engine/x509/certificate.h"

#include <string>

namespace toolkit {

/** A hash and, for RSA keys, the scheme around it. */
struct SignatureScheme {
    int hash;       ///< SigilToolkitHash, not the default one
    int rsaVersion; ///< SigilToolkitRsaVersion
};

Bytes sign(const Library& library, const SignatureScheme& scheme, View keyInfo, View data);
/** Throws SIGIL_TK_SIGNATURE. */
void verify(const Library& library, const SignatureScheme& scheme, const Certificate& certificate, View data,
    View signature);
/** The same with a public key. @param publicKey a certificate or SubjectPublicKeyInfo */
void verify(const Library& library, const SignatureScheme& scheme, View publicKey, View data, View signature);
/** The same for data whose hash was taken elsewhere. Throws SIGIL_TK_ARGUMENT for a hash of another size. */
void verifyDigest(const Library& library, const SignatureScheme& scheme, const Certificate& certificate,
    View digest, View signature);
/** The same over the content of a file of any size. */
Bytes signFile(const Library& library, const SignatureScheme& scheme, View keyInfo, const std::string& path);
void verifyFile(const Library& library, const SignatureScheme& scheme, const Certificate& certificate,
    const std::string& path, View signature);

/** Signs a hash that was taken elsewhere. */
Bytes signDigest(const Library& library, const SignatureScheme& scheme, View keyInfo, View digest);
/** Whether a key signs messages with RSASSA-PSS: as the scheme says, or because it is for nothing else. */
bool signsWithPss(const SignatureScheme& scheme, const EVP_PKEY* key);
/** RSASSA-PSS with a salt as long as the hash. */
bool usePss(EVP_PKEY_CTX* options);

/** Padding of RSA encryption. */
struct EncryptionScheme {
    int padding; ///< SigilToolkitPadding
    int hash;    ///< SigilToolkitHash for OAEP
};

/** Throws SIGIL_TK_ALGORITHM. */
void setPadding(EVP_PKEY_CTX* context, const Library& library, const EncryptionScheme& scheme);

/** @param keyKind SigilToolkitAsymKey, telling what @p key is. Throws SIGIL_TK_ALGORITHM. */
Bytes asymmetricEncrypt(const Library& library, const EncryptionScheme& scheme, int keyKind, View key, View data);
/** Throws SIGIL_TK_DECRYPT. */
Secret asymmetricDecrypt(const Library& library, const EncryptionScheme& scheme, int keyKind, View key, View data);

/** Whether a SigilToolkitKeyPair is RSA. */
bool isRsaKeyPair(int kind);
/** A fresh key. @param kind SigilToolkitKeyPair */
KeyHandle generateKey(const Library& library, int kind);
/** The kind of a fresh key in place of @p key: the same curve, or RSA with as many bits, never less than 2048.
 *  @return SigilToolkitKeyPair */
int kindLike(const EVP_PKEY* key);

struct KeyPair {
    Bytes publicKey;   ///< SubjectPublicKeyInfo
    Secret privateKey; ///< PrivateKeyInfo
};

/** @param kind SigilToolkitKeyPair */
KeyPair generateKeyPair(const Library& library, int kind);

/** Diffie-Hellman between a private key and a peer's certificate or public key.
 *  @param hash SIGIL_TK_SHARED_RAW for the secret itself, else the SigilToolkitHash of it */
Secret sharedKey(const Library& library, int hash, View keyInfo, View peer);

Secret randomBytes(const Library& library, int count);

} // namespace toolkit
