// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  A piece of work with a token that is named by its label, after which the token is as it was found.
 */
#pragma once

#include "toolkit/engine/tokens/token_state.h"

#include <optional>
#include <string_view>

namespace toolkit {

class TokenVisit {
public:
    /** Logs in, on the session of the context when that is with this token, else on one for the time of the visit.
     *  Throws as slotOfToken() and TokenSession. */
    TokenVisit(TokenState& state, std::string_view label, std::string_view pin);
    ~TokenVisit();
    TokenVisit(const TokenVisit&) = delete;
    TokenVisit& operator=(const TokenVisit&) = delete;

    const TokenSession& session() const { return m_session; }

private:
    std::optional<TokenSession> m_own;
    TokenSession& m_session;
    bool m_logsOut;
};

} // namespace toolkit
