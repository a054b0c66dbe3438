// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "toolkit/engine/tokens/token_state.h"

#include "toolkit/engine/base/error.h"

namespace toolkit {

const std::shared_ptr<TokenModules>& TokenState::modules()
{
    if (!m_modules)
        m_modules = TokenModules::instance();
    return m_modules;
}

void TokenState::open(const Slot& slot, int flags)
{
    close();
    m_session.emplace(modules(), slot, flags);
}

TokenSession& TokenState::session()
{
    require(m_session.has_value(), SIGIL_TK_TOKEN_SESSION, "none was opened");
    return *m_session;
}

} // namespace toolkit
