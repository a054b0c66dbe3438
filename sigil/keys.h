// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Keys of an entry and texts of the caller that are secret.
 */
#pragma once

#include "sigil/session.h"

#include "jobs/keys.h"

namespace host {

/** A password or a number of the caller. Throws Failure (1001) when it is null or empty. */
Secret secretOf(const char* text, const char* argument);

/** A key that has been unlocked. Throws Failure: 1600 when there is no such key, 1601 when it is locked. */
const sigil::SecretBytes& keyOf(const Entry& entry, Pair pair);
/** The same in toolkit memory. */
void setKey(const Crypto& crypto, const Entry& entry, Pair pair, Bytes& bytes);

/** The pair of an enum SigilPair. Throws Failure (1001). */
Pair pairNumbered(int pair);

} // namespace host
