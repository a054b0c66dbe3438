// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Encrypted private key files: EncryptedPrivateKeyInfo of PKCS#8 (RFC 5208) in all encryptions that real certificate
 *  stores use.
 *
 *  Two of them are particular to Korea. Both derive DK = PBKDF1-SHA1(password, salt, count), 20 bytes, and encrypt with
 *  SEED-CBC (RFC 4269) under DK[0..15]: seedCBCWithSHA1 (1.2.410.200004.1.15) takes SHA1(DK[16..19])[0..15] as the
 *  initial vector, the older plain SEED-CBC identifier (1.2.410.200004.1.4) the fixed text "0123456789012345". The
 *  others are PBES2 of RFC 8018 and the PKCS#12 schemes of RFC 7292.
 */
#pragma once

#include "toolkit/engine/base/bytes.h"
#include "toolkit/engine/base/library.h"
#include "toolkit/engine/keys/work_budget.h"

#include <string_view>

namespace toolkit {

/** Opens a key file; what follows its first element is ignored.
 *  @param password bytes as typed, without terminator
 *  @return the PrivateKeyInfo with all its attributes
 *  Throws SIGIL_TK_KEY_MALFORMED, SIGIL_TK_KEY_UNSUPPORTED, and SIGIL_TK_KEY_WRONG_PASSWORD when the padding is wrong or
 *  the content is not a PrivateKeyInfo: damage inside the encrypted bytes looks the same. */
Secret decryptKeyFile(const Library& library, View file, std::string_view password);
/** The same as a part of a file whose work is bounded as a whole. */
Secret decryptKeyFile(const Library& library, View file, std::string_view password, WorkBudget& budget);

/** Makes a key file with a random salt of 8 bytes and 2048 rounds.
 *  @param algorithm a SigilToolkitKeyEncryption; throws SIGIL_TK_KEY_OPTION for another
 *  @param keyInfo PrivateKeyInfo; its attributes are kept, bytes after it dropped. Throws SIGIL_TK_KEY_UNUSABLE. */
Bytes encryptKeyFile(const Library& library, int algorithm, View keyInfo, std::string_view password);

/** A key file under a new password and in the same encryption scheme, with fresh salt. A scheme that the toolkit reads but
 *  does not write becomes SIGIL_TK_KEY_DEFAULT. Codes as decryptKeyFile. */
Bytes changePassword(const Library& library, View file, std::string_view oldPassword, std::string_view newPassword);

} // namespace toolkit
