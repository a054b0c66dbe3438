// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  The extensions of Korean certificates, as the accredited authorities fill them (profile of KCAC.TS.CERTPROF on
 *  RFC 3280). Each function adds one extension to a certificate under construction and throws std::runtime_error when
 *  OpenSSL refuses.
 */
#pragma once

#include "toolkit/engine/base/bytes.h"

#include <openssl/x509.h>

#include <initializer_list>
#include <span>
#include <string_view>

namespace sample {

/** Bits of the key usage, numbered as in RFC 5280. */
enum KeyUsage {
    DigitalSignature = 0,
    NonRepudiation = 1,
    KeyEncipherment = 2,
    DataEncipherment = 3,
    KeyCertSign = 5,
    CrlSign = 6
};

/** Critical. */
void addKeyUsage(X509* cert, std::initializer_list<KeyUsage> bits);

/** certificatePolicies. Each policy carries the practice statement's address (IA5String) and a notice (BMPString);
 *  with an empty address neither. Empty OIDs are left out. */
void addPolicies(X509* cert, std::span<const std::string_view> oids, std::string_view cpsUrl, bool critical);

/** SHA-1 of the public key, 20 bytes. */
void addSubjectKeyId(X509* cert);

/** Key identifier, issuer and serial number of the issuer's certificate, all three. */
void addAuthorityKeyId(X509* cert, const X509* issuer);

/** One distribution point, an LDAP URL. */
void addCrlDistributionPoint(X509* cert, std::string_view url);

/** authorityInfoAccess: the status responder. */
void addStatusResponder(X509* cert, std::string_view url);

/** subjectAltName: the identity data as otherName. */
void addIdentityData(X509* cert, toolkit::View identifyData);

/** basicConstraints of an authority, critical; a negative @p pathLength sets no limit. */
void addAuthorityConstraints(X509* cert, long pathLength);

/** policyConstraints with requireExplicitPolicy 0, critical. */
void addPolicyConstraints(X509* cert);

} // namespace sample
