// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Symmetric encryption with the key that a context holds: CBC mode with PKCS#7 padding (SEED of RFC 4269, ARIA of
 *  RFC 5794, AES, 3DES).
 */
#pragma once

#include "toolkit/engine/base/bytes.h"
#include "toolkit/engine/base/library.h"

#include <string>

namespace toolkit {

/** OpenSSL's cipher for a SigilToolkitCipher. Throws SIGIL_TK_ALGORITHM. */
CipherHandle cipherFor(const Library& library, int algorithm);

class SessionCipher {
public:
    /** Takes a random key and vector. @param algorithm SigilToolkitCipher; throws SIGIL_TK_ALGORITHM. */
    void generate(const Library& library, int algorithm);
    /** Throws SIGIL_TK_ALGORITHM for an unknown algorithm or a key or vector of the wrong size. */
    void set(const Library& library, int algorithm, View key, View vector);
    /** Forgets the key, wiped, and the choice of freshVectors(). */
    void clear() { *this = {}; }
    /** From now on every encryption takes a new random vector, which vector() tells. */
    void freshVectors() { m_freshVectors = true; }

    int algorithm() const;
    const Secret& key() const;
    const Secret& vector() const;

    /** All throw SIGIL_TK_NO_SESSION_KEY before a key is there. */
    Bytes encrypt(const Library& library, View data);
    /** Throws SIGIL_TK_DECRYPT. */
    Secret decrypt(const Library& library, View data) const;
    /** Files of any size; the target appears only when all went well. */
    void encryptFile(const Library& library, const std::string& source, const std::string& target);
    void decryptFile(const Library& library, const std::string& source, const std::string& target) const;

private:
    void takeFreshVector(const Library& library);
    CipherContextHandle start(const Library& library, bool encrypting) const;
    void transformFile(EVP_CIPHER_CTX* cipher, const std::string& source, const std::string& target) const;

    int m_algorithm = 0;
    bool m_freshVectors = false;
    Secret m_key;
    Secret m_vector;
};

} // namespace toolkit
