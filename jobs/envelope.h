// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Encrypted messages (CMS EnvelopedData).
 */
#pragma once

#include "jobs/certificate.h"

#include <string>
#include <string_view>
#include <vector>

namespace host {

/** For whom a message can be encrypted: the key-management certificate is there for that. */
const std::string& encryptionCertificate(const Certificate& certificate);

/** A message that the holders of these certificates can open. Throws Failure.
 *  @param cipher  SigilToolkitCipher */
std::string encrypted(const Setting& setting, const Crypto& crypto, const std::vector<std::string>& certificates,
    std::string_view content, int cipher);

} // namespace host
