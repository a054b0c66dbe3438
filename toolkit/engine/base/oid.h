// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Object identifiers of Korean certificates and keys, and of a few messages. OpenSSL's table of names is shared by
 *  the whole process, so the engine adds nothing to it and compares dotted texts.
 */
#pragma once

#include "toolkit/engine/base/bytes.h"

#include <openssl/asn1.h>

#include <optional>
#include <string>

namespace toolkit {

namespace oid {
constexpr const char* identifyData = "1.2.410.200004.10.1.1";
constexpr const char* virtualId = "1.2.410.200004.10.1.1.1";
constexpr const char* randomNumber = "1.2.410.200004.10.1.1.3";
constexpr const char* seedCbcWithSha1 = "1.2.410.200004.1.15";
constexpr const char* seedCbc = "1.2.410.200004.1.4";
constexpr const char* pbes2 = "1.2.840.113549.1.5.13";
constexpr const char* pbkdf2 = "1.2.840.113549.1.5.12";
constexpr const char* rc2Cbc = "1.2.840.113549.3.2";
constexpr const char* scrypt = "1.3.6.1.4.1.11591.4.11";
constexpr const char* pkcs12Pbe = "1.2.840.113549.1.12.1.";
constexpr const char* pbes1 = "1.2.840.113549.1.5.";
constexpr const char* rsa = "1.2.840.113549.1.1.1";
constexpr const char* ec = "1.2.840.10045.2.1";
constexpr const char* sha1 = "1.3.14.3.2.26";
constexpr const char* sha256 = "2.16.840.1.101.3.4.2.1";
// RFC 5652, RFC 2315
constexpr const char* data = "1.2.840.113549.1.7.1";
constexpr const char* signedData = "1.2.840.113549.1.7.2";
constexpr const char* envelopedData = "1.2.840.113549.1.7.3";
constexpr const char* signedAndEnvelopedData = "1.2.840.113549.1.7.4";
constexpr const char* encryptedData = "1.2.840.113549.1.7.6";
// RFC 7292
constexpr const char* shroudedKeyBag = "1.2.840.113549.1.12.10.1.2";
constexpr const char* certificateBag = "1.2.840.113549.1.12.10.1.3";
constexpr const char* x509Certificate = "1.2.840.113549.1.9.22.1";
constexpr const char* localKeyId = "1.2.840.113549.1.9.21";
// RFC 5055
constexpr const char* scvpRequest = "1.2.840.113549.1.9.16.1.10";
constexpr const char* scvpResponse = "1.2.840.113549.1.9.16.1.11";
constexpr const char* scvpStatusCheckedPath = "1.3.6.1.5.5.7.17.3"; ///< built, valid and nothing in it revoked
constexpr const char* scvpDefaultPolicy = "1.3.6.1.5.5.7.19.1";
} // namespace oid

/** Dotted text of an object identifier. */
std::string dottedOid(const ASN1_OBJECT* object);

/** Dotted text of an object identifier's content, X.690 8.19, without asking OpenSSL, which takes long numbers apart with
 *  its arithmetic for any size; nothing for what is malformed, and for identifiers and numbers longer than any in use. */
std::optional<std::string> commonOid(View content);

} // namespace toolkit
