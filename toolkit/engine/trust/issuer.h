// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Who issued a certificate. Authorities may share a name, so only the signature tells.
 */
#pragma once

#include "toolkit/engine/trust/trust.h"
#include "toolkit/engine/x509/certificate.h"

namespace toolkit {

/** Whether the names and key identifiers of two certificates say so; no signature is verified. */
bool issued(const Certificate& issuer, const Certificate& subject);

/** Throws SIGIL_TK_VERIFY_SIGNATURE unless the key of @p issuer made the signature of @p subject, and
 *  SIGIL_TK_VERIFY_FAILED when anybody could have made it. */
void requireSigned(const Certificate& issuer, const Certificate& subject);
/** Whether it has nothing to say. */
bool hasSigned(const X509* issuer, X509* subject);

/** The issuer of a certificate among the trusted ones and the authorities; null when none of them has its name.
 *  @param other looked at after them; may be null
 *  Throws as requireSigned() when one has the name and none signed. */
const Certificate* findIssuer(
    const TrustStore& store, const Certificate& certificate, const Certificate* other = nullptr);

/** The same; throws SIGIL_TK_VERIFY_NO_ISSUER when there is none. */
const Certificate& issuerOf(
    const TrustStore& store, const Certificate& certificate, const Certificate* other = nullptr);

} // namespace toolkit
