// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  The program's allocator, replaced by one that can refuse.
 */
#pragma once

#include <vector>

/** Which allocations to count, to look at and to refuse. Switched on around a session only. */
struct Allocations {
    bool counting = false;
    long made = 0;
    long refused = -1;                      ///< number of the allocation that fails
    std::vector<bool>* ofLibrary = nullptr; ///< filled when not null: false for those of the doubles
    /** Shown every block that is released, when not null; must not release any. */
    void (*released)(const void* memory) = nullptr;
};
extern Allocations allocations;
