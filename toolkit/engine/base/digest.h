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
    Bytes finish();

private:
    DigestHandle m_digest;
    DigestContextHandle m_context;
};

Bytes hash(const Library& library, int algorithm, View data);
Bytes hashFile(const Library& library, int algorithm, const std::string& path);

Bytes hmac(const Library& library, int algorithm, View key, View data);
/** Compares in constant time. Throws SIGIL_TK_MAC. */
void verifyHmac(const Library& library, int algorithm, View key, View data, View mac);

} // namespace toolkit
