// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Memory for secrets: the system leaves it out of cores, and out of the swap as far as its limit of locked memory allows.
 */
#pragma once

#include <cstddef>

namespace sigil {

/** Overwrites @p size bytes with @p value in a way that the optimiser cannot remove. A null @p data is ignored. */
void wipe(void* data, std::size_t size, unsigned char value = 0);

/** Ordinary memory when the arena is full, or when the block is large. Throws std::bad_alloc. */
void* takeSecretMemory(std::size_t size);
/** Wipes the block.
 *  @param size  as it was taken */
void releaseSecretMemory(void* memory, std::size_t size) noexcept;

} // namespace sigil
