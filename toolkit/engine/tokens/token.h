// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Whole tokens: which there are, by number and by name, and making them ready for use.
 */
#pragma once

#include "toolkit/engine/tokens/token_state.h"

#include <string>
#include <string_view>

namespace toolkit {

/** A label as tokens store it: UTF-8, from that or CP949. Throws SIGIL_TK_ARGUMENT when it is neither. */
std::string utf8Label(std::string_view label);
/** The same for the label of a whole token. Throws SIGIL_TK_ARGUMENT when it is longer than a token's. */
std::string labelText(std::string_view label);

/** The slot of the first token with this label. Throws SIGIL_TK_TOKEN_ABSENT. */
Slot slotOfToken(TokenState& state, std::string_view label);
/** The slot of the first token. Throws SIGIL_TK_TOKEN_ABSENT. */
Slot firstToken(TokenState& state);

/** Gives the first token that was never initialised a label and a security officer's PIN. Throws SIGIL_TK_TOKEN_ABSENT. */
void initialiseToken(TokenState& state, std::string_view soPin, std::string_view label);
/** Initialises the token in a slot, whatever it holds, and sets its user's PIN too. */
void initialiseToken(
    TokenState& state, const Slot& slot, std::string_view soPin, std::string_view pin, std::string_view label);

} // namespace toolkit
