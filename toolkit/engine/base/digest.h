// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Hashes (FIPS 180-4) and message authentication codes (HMAC, RFC 2104).
 */
#pragma once

#include "toolkit/engine/base/bytes.h"
#include "toolkit/engine/base/library.h"

#include <string>

namespace toolkit {

/** OpenSSL's digest for a SigilToolkitHash other than SIGIL_TK_HASH_DEFAULT. Throws SIGIL_TK_ALGORITHM. */
DigestHandle hashAlgorithm(const Library& library, int algorithm);

/** A running hash. */
class Hasher {
public:
    /** @param algorithm as above */
    Hasher(const Library& library, int algorithm);
    void update(View data);
    template <class Container = Bytes>
    Container finish()
    {
        Container value(static_cast<std::size_t>(EVP_MD_get_size(m_digest.get())));
        finish(value);
        return value;
    }

private:
    void finish(std::span<unsigned char> value);

    DigestHandle m_digest;
    DigestContextHandle m_context;
};

Bytes hash(const Library& library, int algorithm, View data);
/** For data whose hash is as secret as they are. */
Secret secretHash(const Library& library, int algorithm, View data);
Bytes hashFile(const Library& library, int algorithm, const std::string& path);

Bytes hmac(const Library& library, int algorithm, View key, View data);
/** @param hash OpenSSL's name of the hash */
Bytes hmac(const Library& library, const char* hash, View key, View data);
/** Compares in constant time. Throws SIGIL_TK_MAC. */
void verifyHmac(const Library& library, int algorithm, View key, View data, View mac);

} // namespace toolkit
