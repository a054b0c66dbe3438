// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  What a context knows of tokens: the modules, once it used one, and its session.
 */
#pragma once

#include "toolkit/engine/tokens/token_session.h"

#include <memory>
#include <optional>

namespace toolkit {

class TokenState {
public:
    /** The modules, loaded at the first call. */
    const std::shared_ptr<TokenModules>& modules();

    /** Opens the context's session; the one before ends first, and with it its login. */
    void open(const Slot& slot, int flags);
    void close() { m_session.reset(); }
    bool isOpen() const { return m_session.has_value(); }
    /** Throws SIGIL_TK_TOKEN_SESSION. */
    TokenSession& session();

private:
    std::shared_ptr<TokenModules> m_modules;
    std::optional<TokenSession> m_session;
};

} // namespace toolkit
