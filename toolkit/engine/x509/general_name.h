// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  General names of RFC 5280 as texts.
 */
#pragma once

#include "toolkit/engine/base/bytes.h"

#include <openssl/x509v3.h>

#include <optional>
#include <string>
#include <vector>

namespace toolkit {

/** An address as it is; a directory name as nameText prints it; identity data as "identifyData(realName, vid=...)"; other
 *  kinds as "dns=...", "email=...", "ip=...", "otherName=OID". */
std::string generalName(const GENERAL_NAME* name);
std::vector<std::string> generalNames(const GENERAL_NAMES* names);

/** "identifyData(realName, vid=...)" of the DER of IdentifyData. */
std::string identityText(View der);
/** An address, or in constraints an address and its mask; bytes of another length in hexadecimal. */
std::string addressesText(View bytes);

/** DER of IdentifyData when @p name is such an otherName. */
std::optional<Bytes> identifyData(const GENERAL_NAME* name);

} // namespace toolkit
