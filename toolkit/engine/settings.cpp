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

EncryptionScheme encryptionScheme(const Context& context) { return {context.padding, context.hashAlgorithm}; }

void setRsaVersion(Context& context, int version)
{
    require(version == SIGIL_TK_RSA_V15 || version == SIGIL_TK_RSA_PSS, SIGIL_TK_OPTION, "RSA version");
    context.rsaVersion = version;
}

void setPadding(Context& context, int padding)
{
    require(padding == SIGIL_TK_PADDING_V15 || padding == SIGIL_TK_PADDING_OAEP, SIGIL_TK_OPTION, "padding");
    context.padding = padding;
}

} // namespace toolkit
