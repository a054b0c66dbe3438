// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "toolkit/engine/base/digest.h"

#include "toolkit/engine/base/error.h"
#include "toolkit/engine/base/file.h"

#include <openssl/core_names.h>
#include <openssl/params.h>

#include <array>

namespace toolkit {
namespace {

struct HashName {
    int code;
    const char* name;
};

constexpr std::array hashNames{
    HashName{SIGIL_TK_HASH_SHA1, "SHA1"},
    HashName{SIGIL_TK_HASH_SHA224, "SHA224"},
    HashName{SIGIL_TK_HASH_SHA256, "SHA256"},
    HashName{SIGIL_TK_HASH_SHA384, "SHA384"},
    HashName{SIGIL_TK_HASH_SHA512, "SHA512"},
    HashName{SIGIL_TK_HASH_MD5, "MD5"},
};

const char* hashName(int algorithm)
{
    for (const HashName& hash : hashNames)
        if (hash.code == algorithm)
            return hash.name;
    fail(SIGIL_TK_ALGORITHM, "hash " + std::to_string(algorithm));
}

} // namespace

Hasher::Hasher(const Library& library, int algorithm)
    : m_digest(hashAlgorithm(library, algorithm))
    , m_context(EVP_MD_CTX_new())
{
    require(m_context && EVP_DigestInit_ex(m_context.get(), m_digest.get(), nullptr) == 1, SIGIL_TK_INTERNAL);
}

void Hasher::update(View data)
{
    require(EVP_DigestUpdate(m_context.get(), data.data(), data.size()) == 1, SIGIL_TK_INTERNAL);
}

void Hasher::finish(std::span<unsigned char> value)
{
    require(EVP_DigestFinal_ex(m_context.get(), value.data(), nullptr) == 1, SIGIL_TK_INTERNAL);
}

DigestHandle hashAlgorithm(const Library& library, int algorithm) { return library.digest(hashName(algorithm)); }

Bytes hash(const Library& library, int algorithm, View data)
{
    Hasher hasher(library, algorithm);
    hasher.update(data);
    return hasher.finish();
}

Secret secretHash(const Library& library, int algorithm, View data)
{
    Hasher hasher(library, algorithm);
    hasher.update(data);
    return hasher.finish<Secret>();
}

Bytes hashFile(const Library& library, int algorithm, const std::string& path)
{
    Hasher hasher(library, algorithm);
    readPieces(path, [&](View piece) { hasher.update(piece); });
    return hasher.finish();
}

Bytes hmac(const Library& library, int algorithm, View key, View data)
{
    return hmac(library, hashName(algorithm), key, data);
}

Bytes hmac(const Library& library, const char* hash, View key, View data)
{
    const MacHandle mac(EVP_MAC_fetch(library.context(), "HMAC", nullptr));
    const MacContextHandle context(mac ? EVP_MAC_CTX_new(mac.get()) : nullptr);
    std::string name = hash;
    const OSSL_PARAM parameters[]{
        OSSL_PARAM_construct_utf8_string(OSSL_MAC_PARAM_DIGEST, name.data(), 0), OSSL_PARAM_construct_end()};
    Bytes value(EVP_MAX_MD_SIZE);
    std::size_t length = 0;
    const bool done = context && EVP_MAC_init(context.get(), key.data(), key.size(), parameters) == 1 &&
        EVP_MAC_update(context.get(), data.data(), data.size()) == 1 &&
        EVP_MAC_final(context.get(), value.data(), &length, value.size()) == 1;
    require(done, SIGIL_TK_INTERNAL, "HMAC");
    value.resize(length);
    return value;
}

void verifyHmac(const Library& library, int algorithm, View key, View data, View mac)
{
    const Bytes expected = hmac(library, algorithm, key, data);
    require(
        mac.size() == expected.size() && CRYPTO_memcmp(mac.data(), expected.data(), mac.size()) == 0, SIGIL_TK_MAC);
}

} // namespace toolkit
