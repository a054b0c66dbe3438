// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "toolkit/engine/tokens/token_visit.h"

#include "toolkit/engine/tokens/token.h"

namespace toolkit {
namespace {

TokenSession& sessionWith(TokenState& state, const Slot& slot, std::optional<TokenSession>& own)
{
    if (state.isOpen() && state.session().slot() == slot)
        return state.session();
    return own.emplace(state.modules(), slot, 0);
}

} // namespace

TokenVisit::TokenVisit(TokenState& state, std::string_view label, std::string_view pin)
    : m_session(sessionWith(state, slotOfToken(state, label), m_own))
    , m_logsOut(!m_session.loggedIn())
{
    m_session.login(pin);
}

TokenVisit::~TokenVisit()
{
    if (m_logsOut)
        m_session.call(&_CK_FUNCTION_LIST::C_Logout);
}

} // namespace toolkit
