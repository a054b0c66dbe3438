// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Identity data: the proof that a certificate belongs to the holder of an identity number, without showing the number.
 *
 *  The certificate holds a virtual identifier VID = H(H(DER(HashContent))), where HashContent is the identity number and
 *  a random value R of 160 bits; R lies in the private key. Whoever knows number and R can check the VID.
 *
 *      IdentifyData ::= SEQUENCE { realName UTF8String, userInfo SEQUENCE OF AttributeTypeAndValue OPTIONAL }
 *      VID          ::= SEQUENCE { hashAlg AlgorithmIdentifier, virtualID [0] EXPLICIT OCTET STRING }
 *      HashContent  ::= SEQUENCE { idn PrintableString, randomNum BIT STRING }
 */
#pragma once

#include "toolkit/engine/base/bytes.h"
#include "toolkit/engine/base/library.h"
#include "toolkit/engine/x509/certificate.h"

#include <optional>
#include <string>
#include <string_view>

namespace toolkit {

struct VirtualId {
    std::string hashOid; ///< dotted
    Bytes value;
};

struct IdentifyData {
    std::string realName;         ///< UTF-8
    std::optional<VirtualId> vid; ///< certificates of authorities have none
};

/** Nothing when the bytes are not IdentifyData. */
std::optional<IdentifyData> parseIdentifyData(View der);
Bytes encodeIdentifyData(const IdentifyData& data);

/** The virtual identifier. Blanks and hyphens of @p idn are not part of the number.
 *  @param hashOid dotted; SHA-256 is 2.16.840.1.101.3.4.2.1. Throws SIGIL_TK_ALGORITHM for an unknown one. */
VirtualId computeVid(const Library& library, const std::string& hashOid, std::string_view idn, View random);

/** Checks an identity number. Throws SIGIL_TK_VID_NO_DATA when the certificate has no virtual identifier and
 *  SIGIL_TK_VID_MISMATCH when number or random value are wrong. */
void verifyIdentity(const Library& library, const Certificate& certificate, View random, std::string_view idn);

} // namespace toolkit
