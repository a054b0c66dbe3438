// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  PKCS#12 files (RFC 7292) with one or several pairs of certificate and private key. Keys are handled as PrivateKeyInfo,
 *  so attributes such as the identity random value survive both ways.
 */
#pragma once

#include "toolkit/engine/base/bytes.h"
#include "toolkit/engine/base/library.h"

#include <string_view>
#include <vector>

namespace toolkit {

struct CertifiedKey {
    Bytes certificate;
    Secret keyInfo;
};

struct Pkcs12Content {
    std::vector<CertifiedKey> pairs; ///< in the order of the certificates in the file
    std::vector<Bytes> others;       ///< certificates without a key: those of authorities
};

/** @param password UTF-8 or CP949
 *  @param mode SigilToolkitPfxMode
 *  The iteration counts of all bags together are bounded to 10,000,000, and the work of the whole file to two seconds.
 *  Throws SIGIL_TK_PFX_MALFORMED, _UNSUPPORTED, _NO_MAC, _NO_PAIR and _WRONG_PASSWORD. */
Pkcs12Content readPkcs12(const Library& library, View file, std::string_view password, int mode);

/** @param option SigilToolkitPfxOption; throws SIGIL_TK_OPTION for another, and SIGIL_TK_KEY_MISMATCH when the parts of a
 *  pair do not belong together. Certificates and keys carry the subject key identifier as localKeyId. */
Bytes writePkcs12(const Library& library, const Pkcs12Content& content, std::string_view password, int option);

/** The pair that signs: its certificate's key usage has digitalSignature. The first pair when none has. */
const CertifiedKey& signingPair(const Library& library, const Pkcs12Content& content);
/** The first other pair; null when there is none. */
const CertifiedKey* keyManagementPair(const Library& library, const Pkcs12Content& content);

} // namespace toolkit
