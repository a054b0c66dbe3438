// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Certification paths as lists, for hosts that ask for them.
 */
#pragma once

#include "toolkit/engine/trust/trust.h"

#include <string_view>

namespace toolkit {

/** Trusts one more certificate; a second time changes nothing. */
void addTrusted(TrustStore& store, Certificate certificate);

/** Whether a path leads from @p certificate to one of @p anchors, with the authorities of the store in between. */
bool isTrusted(const Library& library, const TrustStore& store, const Certificate& certificate,
    std::vector<Certificate> anchors);

/** Issuers fetched one after another, up to a self-signed one: @p certificate first.
 *  @param directory "ldap://host:port", where each issuer is looked up under its name; empty: the addresses that the
 *                   certificates name. Throws what fetch() throws, and SIGIL_TK_VERIFY_NO_ISSUER. */
std::vector<Bytes> fetchPath(const Library& library, const Certificate& certificate, std::string_view directory);

} // namespace toolkit
