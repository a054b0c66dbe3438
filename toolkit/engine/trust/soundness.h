// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  What is refused in spite of a matching signature: certificates that RFC 5280 forbids and OpenSSL lets pass, and algorithms
 *  with which anybody can forge one.
 */
#pragma once

#include "toolkit/engine/x509/certificate.h"

namespace toolkit {

/** Throws SIGIL_TK_VERIFY_FAILED for an unknown version, extensions of a version that has none, a malformed or repeated
 *  extension, and an RSA key below 1024 bits. */
void requireSound(const Certificate& certificate);

/** Whether a hash, as OpenSSL numbers it, is MD2, MD4 or MD5. */
bool isBrokenDigest(int nid);

/** Whether a key is so short that anybody can sign with it: RSA below 1024 bits. */
bool isShortKey(const EVP_PKEY* key);

/** Whether a signature is made with MD2, MD4 or MD5. SHA-1 is good enough: old certificates have it. */
bool isForgeable(const X509_ALGOR* signature);
/** The same, or with a short key. */
bool isForgeable(const X509_ALGOR* signature, const EVP_PKEY* key);

} // namespace toolkit
