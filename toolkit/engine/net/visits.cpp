// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "toolkit/engine/net/visits.h"

#include "toolkit/engine/base/error.h"

#include <algorithm>

namespace toolkit {

void Visits::begin(std::string_view url)
{
    require(left() > 0, SIGIL_TK_FETCH, "enough addresses were tried");
    static_cast<void>(remaining());
    m_urls.emplace_back(url);
    ++m_count;
}

bool Visits::contains(std::string_view url) const
{
    return std::find(m_urls.begin(), m_urls.end(), url) != m_urls.end();
}

std::chrono::milliseconds Visits::remaining() const
{
    const auto rest =
        std::chrono::duration_cast<std::chrono::milliseconds>(m_end - std::chrono::steady_clock::now());
    require(rest.count() > 0, SIGIL_TK_FETCH, "the time is over");
    return rest;
}

} // namespace toolkit
