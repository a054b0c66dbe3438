// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  An input that is read as a script: numbers, texts and bytes, one after another. What is wanted behind its end is zero and empty.
 */
#pragma once

#include "fuzz/target.h"

#include <algorithm>
#include <cstddef>

namespace fuzz {

class Script {
public:
    explicit Script(Input input)
        : m_left(input)
    {
    }

    bool atEnd() const { return m_left.empty(); }
    unsigned number() { return taken(1).empty() ? 0 : m_last.front(); }
    /** Below @p count. */
    std::size_t number(std::size_t count) { return number() % count; }
    /** Two octets of length, and then as many. */
    Input bytes()
    {
        const std::size_t high = number();
        const std::size_t low = number();
        return taken(high << 8U | low);
    }
    /** A length below 64, and then as many. */
    Input word() { return taken(number(64)); }
    Input rest() { return taken(m_left.size()); }
    template <class Container>
    const auto& oneOf(const Container& all)
    {
        return all[number(std::size(all))];
    }

private:
    Input taken(std::size_t length)
    {
        m_last = m_left.first(std::min(length, m_left.size()));
        m_left = m_left.subspan(m_last.size());
        return m_last;
    }

    Input m_left;
    Input m_last;
};

} // namespace fuzz
