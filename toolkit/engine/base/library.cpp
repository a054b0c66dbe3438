// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "toolkit/engine/base/library.h"

#include "toolkit/engine/base/error.h"

#include <openssl/crypto.h>
#include <openssl/decoder.h>
#include <openssl/encoder.h>
#include <openssl/kdf.h>
#include <openssl/provider.h>
#include <openssl/rand.h>

#include <atomic>
#include <mutex>
#include <new>
#include <optional>
#include <utility>

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

using ContextHandle = Handle<OSSL_LIB_CTX, OSSL_LIB_CTX_free>;
using ProviderHandle = Handle<OSSL_PROVIDER, OSSL_PROVIDER_unload>;

struct Algorithms {
    Algorithms();
    ContextHandle context;
    ProviderHandle standard;
    ProviderHandle legacy;
};

Algorithms::Algorithms()
    : context(OSSL_LIB_CTX_new())
{
    require(context != nullptr, SIGIL_TK_NO_MEMORY);
    standard.reset(provider(context.get(), "default"));
    legacy.reset(provider(context.get(), "legacy"));
}

} // namespace

/** OpenSSL for any number of threads. */
class Library::OpenSsl {
public:
    OpenSsl();

    OSSL_LIB_CTX* context();
    OSSL_LIB_CTX* readingContext() const { return m_reading.get(); }
    void leaveThread() const noexcept;

    std::atomic<bool> isLast = false;

private:
    std::mutex m_mutex; ///< of the algorithms, until they are registered
    std::optional<Algorithms> m_algorithms{std::in_place};
    std::atomic<bool> m_areRegistered = false;
    ContextHandle m_reading;
    ProviderHandle m_none;
};

Library::OpenSsl::OpenSsl()
    : m_reading(OSSL_LIB_CTX_new())
{
    require(m_reading != nullptr, SIGIL_TK_NO_MEMORY);
    m_none.reset(provider(readingContext(), "null"));
}

OSSL_LIB_CTX* Library::OpenSsl::context()
{
    if (m_areRegistered)
        return m_algorithms->context.get();
    const std::lock_guard lock(m_mutex);
    if (m_areRegistered) // by another thread meanwhile, which uses them
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

void Library::OpenSsl::leaveThread() const noexcept
{
    if (m_areRegistered)
        OPENSSL_thread_stop_ex(m_algorithms->context.get());
}

/** Released with the last Library that has it, before OpenSSL's own clean-up. */
std::shared_ptr<Library::OpenSsl> Library::openSsl()
{
    static std::mutex mutex;
    static std::weak_ptr<OpenSsl> latest;
    const std::lock_guard lock(mutex);
    std::shared_ptr<OpenSsl> shared = latest.lock();
    if (!shared || shared->isLast)
        latest = shared = std::make_shared<OpenSsl>();
    return shared;
}

Library::Library()
    : m_openSsl(openSsl())
{
}

OSSL_LIB_CTX* Library::context() const
{
    m_isInThread = true;
    return m_openSsl->context();
}

OSSL_LIB_CTX* Library::readingContext() const { return m_openSsl->readingContext(); }

void Library::leaveThread() const noexcept
{
    if (std::exchange(m_isInThread, false))
        m_openSsl->leaveThread();
}

void Library::beLast() const noexcept { m_openSsl->isLast = true; }

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
