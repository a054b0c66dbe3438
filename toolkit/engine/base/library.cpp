// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "toolkit/engine/base/library.h"

#include "toolkit/engine/base/error.h"

#include <openssl/rand.h>

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

} // namespace

Library::Library()
    : m_context(OSSL_LIB_CTX_new())
    , m_reading(OSSL_LIB_CTX_new())
{
    require(m_context && m_reading, SIGIL_TK_NO_MEMORY);
    m_default.reset(provider(context(), "default"));
    m_legacy.reset(provider(context(), "legacy"));
    m_none.reset(provider(readingContext(), "null"));
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
