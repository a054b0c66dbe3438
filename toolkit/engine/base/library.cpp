// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "toolkit/engine/base/library.h"

#include "toolkit/engine/base/error.h"

#include <openssl/crypto.h>
#include <openssl/decoder.h>
#include <openssl/encoder.h>
#include <openssl/kdf.h>
#include <openssl/rand.h>

#include <new>

namespace toolkit {

namespace {

/** Asks twice: the loader of modules does not say whether it lacked the module or, for a moment, memory. */
OSSL_PROVIDER* provider(OSSL_LIB_CTX* context, const char* name)
{
    OSSL_PROVIDER* loaded = OSSL_PROVIDER_load(context, name);
    if (!loaded)
        loaded = OSSL_PROVIDER_load(context, name);
    require(loaded != nullptr, SIGIL_TK_NO_PROVIDER, name);
    return loaded;
}

template <class Method>
void ignore(Method*, void*)
{
}

/** OpenSSL registers the methods of a kind when one of them is looked for, and never again: one for which memory was short
 *  would be missing for as long as the context is there. Throws std::bad_alloc. */
void registerMethods(OSSL_LIB_CTX* context)
{
    EVP_CIPHER_do_all_provided(context, ignore, nullptr);
    EVP_MD_do_all_provided(context, ignore, nullptr);
    EVP_MAC_do_all_provided(context, ignore, nullptr);
    EVP_KDF_do_all_provided(context, ignore, nullptr);
    EVP_RAND_do_all_provided(context, ignore, nullptr);
    EVP_KEYMGMT_do_all_provided(context, ignore, nullptr);
    EVP_KEYEXCH_do_all_provided(context, ignore, nullptr);
    EVP_SIGNATURE_do_all_provided(context, ignore, nullptr);
    EVP_ASYM_CIPHER_do_all_provided(context, ignore, nullptr);
    OSSL_DECODER_do_all_provided(context, ignore, nullptr);
    OSSL_ENCODER_do_all_provided(context, ignore, nullptr);
    requireMemory();
}

} // namespace

Library::Algorithms::Algorithms()
    : context(OSSL_LIB_CTX_new())
{
    require(context != nullptr, SIGIL_TK_NO_MEMORY);
    standard.reset(provider(context.get(), "default"));
    legacy.reset(provider(context.get(), "legacy"));
}

Library::Library()
    : m_reading(OSSL_LIB_CTX_new())
{
    require(m_reading != nullptr, SIGIL_TK_NO_MEMORY);
    m_none.reset(provider(readingContext(), "null"));
}

OSSL_LIB_CTX* Library::context() const
{
    m_isInThread = true;
    if (m_areRegistered)
        return m_algorithms->context.get();
    if (!m_algorithms)
        m_algorithms.emplace();
    try {
        registerMethods(m_algorithms->context.get());
    } catch (const std::bad_alloc&) {
        m_algorithms.reset();
        throw;
    }
    m_areRegistered = true;
    return m_algorithms->context.get();
}

void Library::leaveThread() const noexcept
{
    if (std::exchange(m_isInThread, false) && m_algorithms)
        OPENSSL_thread_stop_ex(m_algorithms->context.get());
}

CipherHandle Library::cipher(const char* name) const
{
    CipherHandle cipher(EVP_CIPHER_fetch(context(), name, nullptr));
    require(cipher != nullptr, SIGIL_TK_ALGORITHM, name);
    return cipher;
}

DigestHandle Library::digest(const char* name) const
{
    DigestHandle digest(EVP_MD_fetch(context(), name, nullptr));
    require(digest != nullptr, SIGIL_TK_ALGORITHM, name);
    return digest;
}

std::array<unsigned char, 16> Library::nonce() const
{
    std::array<unsigned char, 16> nonce{};
    require(RAND_bytes_ex(context(), nonce.data(), nonce.size(), 0) == 1, SIGIL_TK_INTERNAL, "nonce");
    return nonce;
}

} // namespace toolkit
