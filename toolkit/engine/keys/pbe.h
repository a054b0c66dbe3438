// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Password-based encryption: from a password and the AlgorithmIdentifier in a file to a cipher ready to run.
 */
#pragma once

#include "toolkit/engine/base/bytes.h"
#include "toolkit/engine/base/library.h"
#include "toolkit/engine/keys/work_budget.h"

#include <functional>
#include <string>
#include <string_view>

namespace toolkit {

/** An AlgorithmIdentifier of password-based encryption taken apart. */
struct PbeAlgorithm {
    View whole;
    std::string oid;
    View parameters; ///< content of the parameters' SEQUENCE
};

/** Throws SIGIL_TK_KEY_MALFORMED. */
PbeAlgorithm parsePbeAlgorithm(View algorithmIdentifier);

/** Rounds of the key derivation, bounded to 1 ... 10,000,000; the salt must not be empty. Throws SIGIL_TK_KEY_MALFORMED and
 *  SIGIL_TK_KEY_UNSUPPORTED. */
unsigned long iterationsOf(const PbeAlgorithm& algorithm);

Secret pbeEncrypt(const Library& library, const PbeAlgorithm& algorithm, View plain, std::string_view password);

/** Tries the forms of the password until @p accept takes what comes out: a wrong password gives valid padding about once in
 *  256 times, and the content is noise then. Throws SIGIL_TK_KEY_MALFORMED, SIGIL_TK_KEY_UNSUPPORTED and
 *  SIGIL_TK_KEY_WRONG_PASSWORD. */
Secret pbeDecrypt(const Library& library, const PbeAlgorithm& algorithm, View encrypted, std::string_view password,
    WorkBudget& budget, const std::function<bool(View)>& accept);

/** AlgorithmIdentifier for writing, with a fresh random salt.
 *  @param code a SigilToolkitKeyEncryption; throws SIGIL_TK_KEY_OPTION for another */
Bytes makePbeAlgorithm(const Library& library, int code);

/** The SigilToolkitKeyEncryption that writes such an algorithm; SIGIL_TK_KEY_DEFAULT when there is none. */
int pbeCode(const Library& library, const PbeAlgorithm& algorithm);

/** Runs @p cipher over @p data. False when the padding is wrong. */
bool runCipher(EVP_CIPHER_CTX* cipher, View data, Secret& out);

} // namespace toolkit
