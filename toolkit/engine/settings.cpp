#include "toolkit/engine/settings.h"

#include "toolkit/engine/digest.h"
#include "toolkit/engine/file.h"

#include <openssl/crypto.h>

namespace toolkit {

std::string_view opensslVersion() { return OpenSSL_version(OPENSSL_VERSION); }

void requireConfFile(std::string_view path)
{
    if (!path.empty())
        readFile(std::string(path));
}

void setHashAlgorithm(Context& context, int algorithm)
{
    const int chosen = algorithm == SIGIL_TK_HASH_DEFAULT ? static_cast<int>(SIGIL_TK_HASH_SHA256) : algorithm;
    hashAlgorithm(context.library(), chosen);
    context.hashAlgorithm = chosen;
}

int resolveHash(const Context& context, int algorithm)
{
    return algorithm == SIGIL_TK_HASH_DEFAULT ? context.hashAlgorithm : algorithm;
}

SignatureScheme signatureScheme(const Context& context, int algorithm)
{
    return {resolveHash(context, algorithm), context.rsaVersion};
}

} // namespace toolkit
