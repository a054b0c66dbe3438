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
#include <initializer_list>
#include <mutex>
#include <new>
#include <optional>
#include <utility>
#include <vector>

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

/** A library context with what these modules of OpenSSL provide. */
struct Provided {
    explicit Provided(std::initializer_list<const char*> modules);
    ContextHandle context;
    std::vector<ProviderHandle> providers; ///< released before the context
};

Provided::Provided(std::initializer_list<const char*> modules)
    : context(OSSL_LIB_CTX_new())
{
    require(context != nullptr, SIGIL_TK_NO_MEMORY);
    for (const char* const name : modules)
        providers.push_back(ProviderHandle(provider(context.get(), name)));
}

struct Algorithms : Provided {
    Algorithms()
        : Provided({"default", "legacy"})
    {
        registerMethods(context.get());
    }
};

struct NoAlgorithms : Provided {
    NoAlgorithms()
        : Provided({"null"})
    {
    }
};

/** Made by whoever asks first, of any threads; when that fails, by the next one. */
template <class T>
class MadeAtFirstUse {
public:
    OSSL_LIB_CTX* context()
    {
        if (!m_isMade) {
            const std::lock_guard lock(m_mutex);
            if (!m_made)
                m_made.emplace();
            m_isMade = true;
        }
        return m_made->context.get();
    }
    bool isMade() const { return m_isMade; }

private:
    std::mutex m_mutex;
    std::optional<T> m_made;
    std::atomic<bool> m_isMade = false; ///< and so for everybody to read
};

} // namespace

/** OpenSSL for any number of threads. What a start need not make of it is made at its first use. */
struct Library::OpenSsl {
    OpenSsl();
    MadeAtFirstUse<Algorithms> algorithms;
    MadeAtFirstUse<NoAlgorithms> reading;
    std::atomic<bool> isLast = false;
};

/** From here on OpenSSL stays loaded, which otherwise each start in a host without it would do again, and cleans up at the
 *  process's end: after what is made later. */
Library::OpenSsl::OpenSsl() { require(OPENSSL_init_crypto(0, nullptr) == 1, SIGIL_TK_NO_MEMORY); }

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
    return m_openSsl->algorithms.context();
}

OSSL_LIB_CTX* Library::readingContext() const { return m_openSsl->reading.context(); }

void Library::leaveThread() const noexcept
{
    if (std::exchange(m_isInThread, false) && m_openSsl->algorithms.isMade())
        OPENSSL_thread_stop_ex(m_openSsl->algorithms.context());
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
