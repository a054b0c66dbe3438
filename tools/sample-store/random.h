// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  The numbers that a seed stands for: names, serial numbers and dates come from here, keys never do.
 */
#pragma once

#include <cstdint>
#include <iterator>
#include <random>

namespace sample {

/** Gives the same numbers for the same seed on every machine (the standard fixes the engine, not its distributions). */
class Random {
public:
    explicit Random(std::uint64_t seed)
        : m_engine(seed)
    {
    }

    /** A number from 0 to @p bound - 1. */
    std::uint64_t below(std::uint64_t bound) { return m_engine() % bound; }

    /** A number from @p first to @p last, both included. */
    int between(int first, int last)
    {
        return first + static_cast<int>(below(static_cast<unsigned>(last - first + 1)));
    }

    template <class Table>
    const auto& pick(const Table& table)
    {
        return table[below(std::size(table))];
    }

private:
    std::mt19937_64 m_engine;
};

} // namespace sample
