// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  What one file may cost.
 */
#pragma once

#include <cstdint>

namespace toolkit {

/** Bounds the work of one hostile file: two seconds of the calling thread, whatever its counts say. */
class WorkBudget {
public:
    WorkBudget();

    /** To be called in every round of a derivation. Throws SIGIL_TK_KEY_MALFORMED when the time is used up. */
    void round()
    {
        if (++m_rounds % roundsBetweenLooks == 0)
            look();
    }
    /** The same before a step that takes long by itself. */
    void look() const;

private:
    static constexpr std::uint64_t roundsBetweenLooks = 4096;

    std::uint64_t m_rounds = 0;
    std::int64_t m_end;
};

} // namespace toolkit
