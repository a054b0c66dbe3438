// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Making signatures with a key that has been unlocked.
 */
#pragma once

#include "files.h"
#include "jobs/crypto.h"

#include <string>

namespace host {

enum class SignatureForm { Attached, Detached, Raw };

/** ".p7m", ".p7s", ".sig". */
const char* endingOf(SignatureForm form);

/** Signs a file and puts the result in its place. A CMS message is stamped when @p stampUrl names an authority. */
void signFile(const Session& session, const Crypto& crypto, Bytes& certificate, Bytes& key, SignatureForm form,
    const std::string& file, WrittenFile& target, const std::string& stampUrl);

} // namespace host
