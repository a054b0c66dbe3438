// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Keys taken apart and put together by their numbers: OpenSSL's decoders and encoders leave whole keys in memory that they
 *  release. RSA keys of two primes, and keys on named curves.
 */
#pragma once

#include "toolkit/engine/base/der.h"
#include "toolkit/engine/base/library.h"

#include <array>
#include <optional>

namespace toolkit {

constexpr int rsaNumberCount = 9;
/** Version, modulus, public exponent, private exponent, primes, their exponents, coefficient. */
using RsaNumbers = std::array<der::Element, rsaNumberCount>;

/** The numbers of an RSAPrivateKey; nothing when that has another form. */
std::optional<RsaNumbers> rsaNumbers(View privateKey);
/** The uncompressed point in an ECPrivateKey; nothing when it has none. */
std::optional<Bytes> ecPublicKey(View privateKey);

/** The key in a PrivateKeyInfo. Null for other kinds and forms, and for what OpenSSL does not take. */
KeyHandle keyOfNumbers(const Library& library, View keyInfo);
/** A PrivateKeyInfo. Nothing for other kinds. */
std::optional<Secret> encodeNumbers(const EVP_PKEY* key);

} // namespace toolkit
