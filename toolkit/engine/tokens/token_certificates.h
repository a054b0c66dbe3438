// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  The certificates on a token.
 */
#pragma once

#include "toolkit/engine/base/library.h"
#include "toolkit/engine/tokens/token_session.h"
#include "toolkit/engine/x509/certificate.h"

#include <optional>
#include <string_view>
#include <vector>

namespace toolkit {

struct TokenCertificate {
    CK_OBJECT_HANDLE object;
    Bytes id;
    Certificate certificate;
};

/** Those that can be read, in the order of the token. */
std::vector<TokenCertificate> tokenCertificates(const Library& library, const TokenSession& session);
/** The first one with this CKA_LABEL, in UTF-8. */
std::optional<TokenCertificate> labelledCertificate(
    const Library& library, const TokenSession& session, std::string_view label);
/** The first one with this CKA_ID. Throws SIGIL_TK_TOKEN_OBJECT. */
Certificate tokenCertificate(const Library& library, const TokenSession& session, View id);
/** SigilToolkitTokenCertificate, by key usage. */
int kindOf(const Certificate& certificate);

} // namespace toolkit
