// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Cards: tokens whose objects have names, as files have paths. Each call has a session of its own, which ends with it.
 *  Everything here throws SIGIL_TK_MEDIUM when no card is in the slot.
 */
#pragma once

#include "toolkit/engine/base/library.h"
#include "toolkit/engine/tokens/token_state.h"

#include <string_view>

namespace toolkit {

/** An object on a card. */
struct CardPath {
    int slot;              ///< one of TokenModules::slots()
    std::string_view name; ///< its CKA_LABEL, in UTF-8 or CP949
};

/** The first certificate of this name. Throws SIGIL_TK_TOKEN_OBJECT. */
Bytes readCardCertificate(const Library& library, TokenState& tokens, const CardPath& path);

/** Replaces the certificate of this name. Throws SIGIL_TK_TOKEN_LOGIN when the card wants a login for it. */
void writeCardCertificate(const Library& library, TokenState& tokens, const CardPath& path, View certificate);

/** Replaces the private key of this name, which belongs to the certificate of this name when there is one: else
 *  SIGIL_TK_KEY_MISMATCH.
 *  @param pin for the time of the call; empty: the process is logged in already, or SIGIL_TK_TOKEN_LOGIN */
void writeCardKey(
    const Library& library, TokenState& tokens, const CardPath& path, std::string_view pin, View keyInfo);

/** Removing throws SIGIL_TK_TOKEN_OBJECT when there is nothing of this name, and SIGIL_TK_ARGUMENT, as replacing does,
 *  when there are several: which of them is meant cannot be told. */
void deleteCardCertificate(TokenState& tokens, const CardPath& path);
/** Removes what stands beside the key, too. @param pin as above */
void deleteCardKey(TokenState& tokens, const CardPath& path, std::string_view pin);

} // namespace toolkit
