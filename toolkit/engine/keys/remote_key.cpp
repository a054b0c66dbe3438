// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// A program takes over a key's operations through the methods of RSA and EC keys, which OpenSSL calls deprecated. What is to
// replace them is a provider, with encoders and decoders of its own for the same.
#define OPENSSL_SUPPRESS_DEPRECATED

#include "toolkit/engine/keys/remote_key.h"

#include "toolkit/engine/base/error.h"

#include <openssl/ec.h>
#include <openssl/rsa.h>

#include <algorithm>
#include <utility>

namespace toolkit {
namespace {

using RsaHandle = Handle<RSA, RSA_free>;
using EcHandle = Handle<EC_KEY, EC_KEY_free>;
using RsaMethod = Handle<RSA_METHOD, RSA_meth_free>;
using EcMethod = Handle<EC_KEY_METHOD, EC_KEY_METHOD_free>;

/** Where a key keeps its RemoteKey: the index that OpenSSL leaves to applications. */
constexpr int ownData = 0;

int signRsa(int length, const unsigned char* data, unsigned char* out, RSA* key, int padding)
{
    auto& remote = *static_cast<RemoteKey*>(RSA_get_ex_data(key, ownData));
    const auto room = static_cast<std::size_t>(RSA_size(key));
    const std::size_t made =
        padding == RSA_PKCS1_PADDING ? remote.signInto({data, static_cast<std::size_t>(length)}, out, room) : 0;
    return made > 0 ? static_cast<int>(made) : -1;
}

int signEc(int, const unsigned char* hash, int length, unsigned char* out, unsigned int* outLength, const BIGNUM*,
    const BIGNUM*, EC_KEY* key)
{
    auto& remote = *static_cast<RemoteKey*>(EC_KEY_get_ex_data(key, ownData));
    const auto room = static_cast<std::size_t>(ECDSA_size(key));
    *outLength = static_cast<unsigned int>(remote.signInto({hash, static_cast<std::size_t>(length)}, out, room));
    return *outLength > 0 ? 1 : 0;
}

const RSA_METHOD* rsaMethod()
{
    static const RsaMethod method = [] {
        RsaMethod made(RSA_meth_dup(RSA_PKCS1_OpenSSL()));
        require(made && RSA_meth_set_priv_enc(made.get(), signRsa) == 1, SIGIL_TK_NO_MEMORY);
        return made;
    }();
    return method.get();
}

const EC_KEY_METHOD* ecMethod()
{
    static const EcMethod method = [] {
        EcMethod made(EC_KEY_METHOD_new(EC_KEY_OpenSSL()));
        require(made != nullptr, SIGIL_TK_NO_MEMORY);
        EC_KEY_METHOD_set_sign(made.get(), signEc, nullptr, nullptr);
        return made;
    }();
    return method.get();
}

KeyHandle parsePublicKey(const Library& library, View der)
{
    const unsigned char* at = der.data();
    KeyHandle key(d2i_PUBKEY_ex(nullptr, &at, static_cast<long>(der.size()), library.context(), nullptr));
    const bool known = key && (EVP_PKEY_is_a(key.get(), "RSA") == 1 || EVP_PKEY_is_a(key.get(), "EC") == 1);
    require(known, SIGIL_TK_ALGORITHM, "kind of key");
    return key;
}

} // namespace

RemoteKey::RemoteKey(const Library& library, View publicKey, Signer signer)
    : m_library(library)
    , m_signer(std::move(signer))
    , m_public(parsePublicKey(library, publicKey))
    , m_key(EVP_PKEY_is_a(m_public.get(), "RSA") == 1 ? rsaKey() : ecKey())
{
}

KeyHandle RemoteKey::rsaKey()
{
    const RsaHandle rsa(RSAPublicKey_dup(EVP_PKEY_get0_RSA(m_public.get())));
    KeyHandle key(EVP_PKEY_new());
    const bool made = rsa && key && RSA_set_method(rsa.get(), rsaMethod()) == 1 &&
        RSA_set_ex_data(rsa.get(), ownData, this) == 1 && EVP_PKEY_set1_RSA(key.get(), rsa.get()) == 1;
    require(made, SIGIL_TK_NO_MEMORY);
    return key;
}

KeyHandle RemoteKey::ecKey()
{
    const EcHandle ec(EC_KEY_dup(EVP_PKEY_get0_EC_KEY(m_public.get())));
    KeyHandle key(EVP_PKEY_new());
    const bool made = ec && key && EC_KEY_set_method(ec.get(), ecMethod()) == 1 &&
        EC_KEY_set_ex_data(ec.get(), ownData, this) == 1 && EVP_PKEY_set1_EC_KEY(key.get(), ec.get()) == 1;
    require(made, SIGIL_TK_NO_MEMORY);
    return key;
}

Bytes RemoteKey::verifiedSignature(View data) const
{
    Bytes signature = m_signer(data);
    const KeyContextHandle context(EVP_PKEY_CTX_new_from_pkey(m_library.context(), m_public.get(), nullptr));
    require(context && EVP_PKEY_verify_init(context.get()) == 1, SIGIL_TK_NO_MEMORY);
    const int verified =
        EVP_PKEY_verify(context.get(), signature.data(), signature.size(), data.data(), data.size());
    require(verified == 1, SIGIL_TK_KEY_MISMATCH);
    return signature;
}

std::size_t RemoteKey::signInto(View data, unsigned char* out, std::size_t room) noexcept
{
    // No exception may pass through OpenSSL.
    try {
        const Bytes signature = verifiedSignature(data);
        require(signature.size() <= room, SIGIL_TK_KEY_MISMATCH);
        std::copy(signature.begin(), signature.end(), out);
        return signature.size();
    } catch (...) {
        m_failure = std::current_exception();
        return 0;
    }
}

void RemoteKey::rethrowFailure() const
{
    if (m_failure)
        std::rethrow_exception(m_failure);
}

} // namespace toolkit
