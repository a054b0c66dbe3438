// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Keys from passwords: PBKDF1 and PBKDF2 of RFC 8018, the derivation of PKCS#12 (RFC 7292, appendix B) and scrypt
 *  (RFC 7914). None leaves a copy of password or key behind.
 */
#pragma once

#include "toolkit/engine/base/bytes.h"
#include "toolkit/engine/base/library.h"
#include "toolkit/engine/keys/work_budget.h"

#include <string>

namespace toolkit {

struct SaltAndCount {
    View salt;
    unsigned long iterations;
};

enum class OldHash { Md5, Sha1 };

Secret sha1(View data);
/** All bytes of the last hash. */
Secret pbkdf1(OldHash hash, View password, const SaltAndCount& parameters, WorkBudget& budget);

/** @param hash OpenSSL's name of the hash in HMAC. Throws SIGIL_TK_ALGORITHM. */
Secret pbkdf2(const Library& library, const std::string& hash, View password, const SaltAndCount& parameters,
    std::size_t length, WorkBudget& budget);

/** What the bytes are for. */
enum class Pkcs12Purpose : unsigned char { Key = 1, Vector = 2, Mac = 3 };

/** @param bmpPassword with the two zero bytes at its end, or empty for no password */
Secret pkcs12Derive(const EVP_MD* hash, Pkcs12Purpose purpose, View bmpPassword, const SaltAndCount& parameters,
    std::size_t length, WorkBudget& budget);

struct ScryptCost {
    unsigned long n;
    unsigned long r;
    unsigned long p;
};

/** Throws SIGIL_TK_KEY_UNSUPPORTED when more than 64 MiB of memory or about a second would be needed. */
Secret scrypt(const Library& library, View password, View salt, const ScryptCost& cost, std::size_t length);

} // namespace toolkit
