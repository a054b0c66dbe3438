// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Keys whose private part stays elsewhere, on a token, for the protocols of OpenSSL.
 */
#pragma once

#include "toolkit/engine/base/bytes.h"
#include "toolkit/engine/base/library.h"

#include <exception>
#include <functional>

namespace toolkit {

class RemoteKey {
public:
    /** With an RSA key it pads and signs a DigestInfo (RFC 8017), with an EC key a hash, and then answers DER. */
    using Signer = std::function<Bytes(View)>;

    /** @param publicKey SubjectPublicKeyInfo; signatures that it does not verify fail with SIGIL_TK_KEY_MISMATCH
     *  Throws SIGIL_TK_ALGORITHM for another kind of key than RSA and EC. */
    RemoteKey(const Library& library, View publicKey, Signer signer);
    RemoteKey(const RemoteKey&) = delete;
    RemoteKey& operator=(const RemoteKey&) = delete;

    /** For OpenSSL, as long as this lives. */
    EVP_PKEY* get() const { return m_key.get(); }
    /** Throws what went wrong with the last signature, of which OpenSSL only says that there is none. */
    void rethrowFailure() const;

    /** Signs for OpenSSL. @return the length of the signature; 0 when there is none */
    std::size_t signInto(View data, unsigned char* out, std::size_t room) noexcept;

private:
    Bytes verifiedSignature(View data) const;
    KeyHandle rsaKey();
    KeyHandle ecKey();

    const Library& m_library;
    Signer m_signer;
    KeyHandle m_public;
    KeyHandle m_key;
    std::exception_ptr m_failure;
};

} // namespace toolkit
