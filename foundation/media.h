// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Kinds of media, by the numbers of <sigildesk/codes.h>.
 */
#pragma once

#include <sigildesk/codes.h>

namespace sigil {

inline bool isDisk(int medium) { return medium == SIGIL_MEDIUM_HARD_DISK || medium == SIGIL_MEDIUM_REMOVABLE_DISK; }

inline bool isToken(int medium) { return medium == SIGIL_MEDIUM_TOKEN_FIRST || medium == SIGIL_MEDIUM_TOKEN_LAST; }

/** Also the reserved number, which can never be chosen. */
inline bool isMemory(int medium) { return medium == SIGIL_MEDIUM_MEMORY_RESERVED || medium == SIGIL_MEDIUM_MEMORY; }

/** What can neither be chosen nor copied from. */
inline bool isRefused(int medium) { return isToken(medium) || medium == SIGIL_MEDIUM_MEMORY_RESERVED; }

} // namespace sigil
