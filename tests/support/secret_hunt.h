// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Finding copies of a secret in the memory of the process.
 */
#pragma once

#include <string>
#include <string_view>
#include <vector>

/** Finds copies of a secret, without being one: the secret is kept in disguise. Memory that can be written and is the
 *  process's own is searched, what was released included; files mapped to be shared are not. */
class SecretHunt {
public:
    enum class Order { Forwards, Backwards };

    /** @param order of the bytes in memory: numbers to be reckoned with lie backwards */
    explicit SecretHunt(std::string_view secret, Order order = Order::Forwards);

    /** Each copy, as "0x5581d0e2f010 in [heap]". */
    std::vector<std::string> places() const;
    int copies() const { return static_cast<int>(places().size()); }

private:
    const char* next(const char* start, const char* end) const;

    std::string m_disguised;
};
