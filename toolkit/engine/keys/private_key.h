// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Private keys: PrivateKeyInfo of PKCS#8 (RFC 5208) and the random value that it may hold.
 */
#pragma once

#include "toolkit/engine/base/bytes.h"
#include "toolkit/engine/base/library.h"
#include "toolkit/engine/x509/certificate.h"

namespace toolkit {

/** Whether @p der is SEQUENCE { INTEGER 0 or 1, AlgorithmIdentifier, OCTET STRING, ... } and nothing more. */
bool isPrivateKeyInfo(View der);

/** Throws SIGIL_TK_KEY_UNUSABLE. */
KeyHandle loadPrivateKey(const Library& library, View keyInfo);
/** PrivateKeyInfo without attributes. */
Secret encodePrivateKey(const EVP_PKEY* key);

/** The identity random value R. Throws SIGIL_TK_KEY_UNUSABLE when @p keyInfo is not a PrivateKeyInfo and
 *  SIGIL_TK_VID_NO_RANDOM when it holds none. */
Secret identityRandom(View keyInfo);
/** The same; empty when it holds none. */
Secret heldIdentityRandom(View keyInfo);
/** @p keyInfo with the identity random value as its attribute; another attribute of that kind is replaced. */
Secret withIdentityRandom(View keyInfo, View random);

/** Throws SIGIL_TK_KEY_MISMATCH. */
void checkKeyPair(const Library& library, const Certificate& certificate, View keyInfo);

} // namespace toolkit
