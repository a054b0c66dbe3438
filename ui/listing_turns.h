// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  When a listing hands the time back to its window.
 */
#pragma once

#include "foundation/environment.h"

#include <chrono>

namespace sigil {

/** Begins with the listing. A short one hands nothing back, so that its window opens with the whole list at once. */
class ListingTurns {
public:
    /** Whether the window should be given the time now. */
    bool isDue() const { return environment().uptime() >= m_next; }
    /** The window had the time. */
    void taken() { m_next = environment().uptime() + apart; }

private:
    static constexpr std::chrono::milliseconds patience{100};
    static constexpr std::chrono::milliseconds apart{30}; ///< far from what a user notices, also after a slow file

    std::chrono::milliseconds m_next = environment().uptime() + patience;
};

} // namespace sigil
