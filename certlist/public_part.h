// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  What a certificate and its private key have in common, told from their bytes alone.
 */
#pragma once

#include <string_view>

namespace sigil {

/** The part of the public key that identifies it: the modulus of an RSA key, the x coordinate of one on a
 *  curve.
 *  @param certificate  X.509 certificate in DER
 *  @return a view into @p certificate; empty when it is of another kind or cannot be read */
std::string_view publicPartOfCertificate(std::string_view certificate);

/** The same part as a private key carries it; a key on a curve may leave it out.
 *  @param keyInfo  PKCS#8 PrivateKeyInfo in DER
 *  @return a view into @p keyInfo; empty when the key does not tell */
std::string_view publicPartOfKey(std::string_view keyInfo);

} // namespace sigil
