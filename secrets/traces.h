// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  What is left of secrets where no type wipes it: in the processor's registers, and on the stack where calls that have
 *  returned had their frames.
 */
#pragma once

#include <cstddef>

namespace sigil {

/** How far below its caller's frame clearTraces() overwrites the stack, in bytes. */
constexpr std::size_t clearedStack = 32 << 10;

/** Zeroes the vector registers and those that calls may change: copying leaves bytes there, and whoever saves the registers
 *  next, the loader at the first call of a function for one, writes them to the stack. Nothing on other processors than
 *  x86-64. */
void clearRegisters();

/** The same, and overwrites the stack below the caller. Called last, before control goes back to foreign code. */
void clearTraces();

/** Calls clearTraces() at the end of a scope. What worked on secrets in the function itself must have been called: the
 *  frame of the function stays as it is. */
struct TracesCleared {
    TracesCleared() = default;
    ~TracesCleared() { clearTraces(); }
    TracesCleared(const TracesCleared&) = delete;
    TracesCleared& operator=(const TracesCleared&) = delete;
};

} // namespace sigil
