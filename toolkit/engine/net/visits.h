// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  What one call may spend on servers. Addresses stand in certificates, and servers answer as they like; neither may keep the
 *  host waiting or make it knock at one door after another.
 */
#pragma once

#include <chrono>
#include <string>
#include <string_view>
#include <vector>

namespace toolkit {

class Visits {
public:
    /** @param time at most maximumTime, for all addresses together */
    explicit Visits(std::chrono::milliseconds time = maximumTime)
        : m_end(std::chrono::steady_clock::now() + time)
    {
    }

    /** Addresses of one call, redirections among them. */
    static constexpr int maximumAddresses = 4;
    /** For all of them together. */
    static constexpr std::chrono::seconds maximumTime{20};

    /** Counts one more address. Throws SIGIL_TK_FETCH when there were enough, or when the time is over. */
    void begin(std::string_view url);
    bool contains(std::string_view url) const;
    /** How often a server may still send on to another address. */
    int left() const { return maximumAddresses - m_count; }
    /** Counts the addresses to which a server sent on. */
    void countRedirections(int number) { m_count += number; }
    /** What is left of the time, more than nothing. Throws SIGIL_TK_FETCH when it is over. */
    std::chrono::milliseconds remaining() const;

private:
    std::chrono::steady_clock::time_point m_end;
    std::vector<std::string> m_urls;
    int m_count = 0;
};

} // namespace toolkit
