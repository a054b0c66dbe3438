// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "toolkit/engine/enrolment/authority.h"

#include "toolkit/engine/base/error.h"
#include "toolkit/engine/net/fetch.h"

#include <algorithm>
#include <string>
#include <thread>

namespace toolkit {
namespace {

Authority::Way wayTo(std::string url)
{
    return [url = std::move(url)](View message, std::chrono::milliseconds time) {
        Visits visits(std::min<std::chrono::milliseconds>(Visits::maximumTime, time));
        return post(url, "application/pkixcmp", message, maximumAnswerSize, visits);
    };
}

} // namespace

Authority::Authority(Way way, std::chrono::milliseconds patience)
    : m_way(std::move(way))
    , m_patience(patience)
{
}

Authority::Authority(std::string_view address, int port, std::chrono::milliseconds patience)
    : Authority(wayTo(webAddress(address, port)), patience)
{
}

Bytes Authority::ask(View message) const
{
    const std::chrono::milliseconds time = remaining();
    require(time.count() > 0, SIGIL_TK_CMP_WAITING, "no answer in time");
    return m_way(message, time);
}

void Authority::wait(std::chrono::seconds time) const
{
    const auto pause = std::max(time, std::chrono::seconds(1));
    require(pause < remaining(), SIGIL_TK_CMP_WAITING, std::to_string(time.count()) + " s more");
    std::this_thread::sleep_for(pause);
}

std::chrono::milliseconds Authority::remaining() const
{
    const Clock::time_point now = Clock::now();
    if (!m_end)
        m_end = now + m_patience;
    return std::chrono::duration_cast<std::chrono::milliseconds>(*m_end - now);
}

} // namespace toolkit
