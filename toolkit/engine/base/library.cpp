#include "toolkit/engine/base/library.h"

#include "toolkit/engine/base/error.h"

namespace toolkit {

Library::Library()
    : m_context(OSSL_LIB_CTX_new())
{
    require(m_context != nullptr, SIGIL_TK_NO_MEMORY);
    m_default.reset(OSSL_PROVIDER_load(context(), "default"));
    require(m_default != nullptr, SIGIL_TK_NO_PROVIDER, "default");
    m_legacy.reset(OSSL_PROVIDER_load(context(), "legacy"));
    require(m_legacy != nullptr, SIGIL_TK_NO_PROVIDER, "legacy");
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

} // namespace toolkit
