// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Settings of a context.
 */
#pragma once

#include "toolkit/engine/base/context.h"
#include "toolkit/engine/keys/asymmetric.h"

#include <string>
#include <string_view>

namespace toolkit {

/** Bytes that the version texts need at most. */
constexpr int versionCapacity = 64;

/** "OpenSSL 3.0.2 15 Mar 2022". */
std::string_view opensslVersion();

/** Reads the settings file of a context, so that a mistyped path shows: "Nonce" of section [OCSP], where 0 accepts responses
 *  without one. An empty path is accepted and changes nothing. */
void readConfFile(Context& context, std::string_view path);

/** A value of a settings file: lines "key = value" below a line "[section]", blanks around each do not count, a line that
 *  begins with "#" is a comment. Empty when it is not there. */
std::string settingOf(std::string_view content, std::string_view section, std::string_view key);

/** Throws SIGIL_TK_ALGORITHM for an unknown hash; SIGIL_TK_HASH_DEFAULT goes back to SHA-256. */
void setHashAlgorithm(Context& context, int algorithm);

/** The hash that @p algorithm stands for in this context. */
int resolveHash(const Context& context, int algorithm);

/** @p algorithm with the context's RSA scheme. */
SignatureScheme signatureScheme(const Context& context, int algorithm);

EncryptionScheme encryptionScheme(const Context& context);

/** @param version SigilToolkitRsaVersion; throws SIGIL_TK_OPTION for another. */
void setRsaVersion(Context& context, int version);
/** @param padding SigilToolkitPadding; throws SIGIL_TK_OPTION for another. */
void setPadding(Context& context, int padding);

} // namespace toolkit
