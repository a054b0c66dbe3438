// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  The way to a certification authority: certificate management messages (RFC 4210) over HTTP (RFC 6712).
 */
#pragma once

#include "toolkit/engine/base/bytes.h"

#include <chrono>
#include <functional>
#include <optional>
#include <string_view>

namespace toolkit {

/** What one call may spend on an authority: its answers, the waiting that it asks for, and all. */
constexpr std::chrono::seconds maximumPatience{30};

class Authority {
public:
    /** The answer to a message, within a time. */
    using Way = std::function<Bytes(View message, std::chrono::milliseconds time)>;

    /** The time begins to run with the first message: a token may make a key for long before. */
    explicit Authority(Way way, std::chrono::milliseconds patience = maximumPatience);
    /** @param address "http://host[:port]/path", or a host alone, which is asked on @p port (0: 80)
     *  Throws SIGIL_TK_ARGUMENT. */
    Authority(std::string_view address, int port, std::chrono::milliseconds patience = maximumPatience);

    /** The answer to one message. Throws what post() throws, and SIGIL_TK_CMP_WAITING when the time is over: an authority may
     *  promise an answer again and again. */
    Bytes ask(View message) const;
    /** Waits as long as the authority wants, at least a second. Throws SIGIL_TK_CMP_WAITING at once when the time will be over
     *  by then. */
    void wait(std::chrono::seconds time) const;

private:
    using Clock = std::chrono::steady_clock;

    std::chrono::milliseconds remaining() const;

    Way m_way;
    std::chrono::milliseconds m_patience;
    mutable std::optional<Clock::time_point> m_end;
};

} // namespace toolkit
