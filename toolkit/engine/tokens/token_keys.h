// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Cryptography with keys on a token: what needs the private key happens there, the rest here.
 */
#pragma once

#include "toolkit/engine/base/library.h"
#include "toolkit/engine/keys/asymmetric.h"
#include "toolkit/engine/tokens/token_session.h"

namespace toolkit {

/** A private key on a token. The session must outlive it. */
class TokenKey {
public:
    /** Throws SIGIL_TK_TOKEN_LOGIN, SIGIL_TK_TOKEN_OBJECT, and SIGIL_TK_ALGORITHM for another kind than RSA and EC. */
    TokenKey(const Library& library, const TokenSession& session, View id);

    /** With an RSA key it pads and signs a DigestInfo (RFC 8017), with an EC key a hash, and then answers DER. */
    Bytes signPlain(View data) const;
    /** Signs a hash; ECDSA signatures are DER. Throws SIGIL_TK_TOKEN_MECHANISM. */
    Bytes signDigest(const SignatureScheme& scheme, View digest) const;
    /** Throws SIGIL_TK_DECRYPT, SIGIL_TK_TOKEN_MECHANISM, and SIGIL_TK_ALGORITHM for a key that is not RSA. */
    Secret decrypt(const EncryptionScheme& scheme, View data) const;
    /** The secret that it shares with the holder of an EC key. @param point the other public key, uncompressed */
    Secret sharedSecret(View point) const;

private:
    CK_OBJECT_HANDLE derive(View point, std::size_t length) const;
    Bytes sign(CK_MECHANISM mechanism, View data) const;

    const Library& m_library;
    const TokenSession& m_session;
    CK_OBJECT_HANDLE m_object;
    CK_KEY_TYPE m_type;
};

/** SubjectPublicKeyInfo of the key with an identifier: of its certificate, its public key, or what its private key shows.
 *  Throws SIGIL_TK_TOKEN_OBJECT. */
Bytes tokenPublicKey(const Library& library, const TokenSession& session, View id);

/** A key pair on a token as others see it. */
struct PublicTokenKey {
    Bytes id;
    Bytes info; ///< SubjectPublicKeyInfo
};

/** Makes a key pair on the token, with the identifier of tokenIdOf().
 *  @param algorithm SigilToolkitTokenKey @param bits SigilToolkitKeyPair */
PublicTokenKey generateTokenKey(const Library& library, const TokenSession& session, int algorithm, int bits);

} // namespace toolkit
