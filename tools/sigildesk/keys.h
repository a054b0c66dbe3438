// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Private keys that are opened with the password of a person.
 */
#pragma once

#include "jobs/keys.h"
#include "secrets.h"

namespace host {

/** Opens the key of a pair. Asks for the password; throws Failure when there is no key or the password does not open it. */
void unlock(const Session& session, const Crypto& crypto, const Certificate& certificate, Pair pair, Bytes& key);

} // namespace host
