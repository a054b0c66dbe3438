// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  A session with a token, and the objects that it shows.
 */
#pragma once

#include "toolkit/engine/tokens/modules.h"

#include <memory>
#include <optional>
#include <string_view>
#include <vector>

namespace toolkit {

using ObjectHandles = std::vector<CK_OBJECT_HANDLE>;

class TokenSession {
public:
    /** Opens a session. @param flags CKF_ bits; 0: read and write if the token allows it.
     *  Throws SIGIL_TK_OPTION for other bits than CKF_RW_SESSION and CKF_SERIAL_SESSION. */
    TokenSession(std::shared_ptr<TokenModules> modules, const Slot& slot, int flags);
    ~TokenSession();
    TokenSession(const TokenSession&) = delete;
    TokenSession& operator=(const TokenSession&) = delete;

    const Slot& slot() const { return m_slot; }

    /** The login is the token's: it holds for every session that the process has with it. A token that the process is logged
     *  in to already does not look at the PIN. */
    void login(std::string_view pin);
    bool loggedIn() const;
    /** Throws SIGIL_TK_TOKEN_LOGIN when nobody is logged in. */
    void logout();
    void changePin(std::string_view oldPin, std::string_view newPin);
    /** Sets the user's PIN of a token that was just initialised. */
    void setFirstPin(std::string_view soPin, std::string_view pin);
    /** Throws SIGIL_TK_TOKEN_LOGIN when the token wants a login and there is none. */
    void requireLogin() const;

    /** Handles of all objects with these attributes. */
    ObjectHandles find(const Template& wanted) const;
    /** A value of an object; nothing when it has none, or does not show it. */
    std::optional<Secret> attribute(CK_OBJECT_HANDLE object, CK_ATTRIBUTE_TYPE type) const;
    CK_OBJECT_HANDLE create(const Template& object) const;
    void destroy(CK_OBJECT_HANDLE object) const;

    /** Calls a function of the module with the session. */
    template <class... Parameters, class... Arguments>
    CK_RV call(
        CK_RV (*_CK_FUNCTION_LIST::*function)(CK_SESSION_HANDLE, Parameters...), Arguments... arguments) const
    {
        return (m_slot.module->*function)(m_handle, arguments...);
    }
    /** The same for one that must succeed. */
    template <class... Parameters, class... Arguments>
    void must(const char* name, CK_RV (*_CK_FUNCTION_LIST::*function)(CK_SESSION_HANDLE, Parameters...),
        Arguments... arguments) const
    {
        check(call(function, arguments...), name);
    }
    /** As checkAnswer(); a session that is gone because its token is gone says that. */
    void check(CK_RV answer, const char* function) const;

private:
    void open(int flags);
    [[noreturn]] void refusePin(CK_RV answer, const char* function) const;

    std::shared_ptr<TokenModules> m_modules;
    Slot m_slot;
    CK_SESSION_HANDLE m_handle = CK_INVALID_HANDLE;
};

/** A function of a module and its name, as TokenSession::must() takes them. */
#define TOKEN_FUNCTION(name) #name, &_CK_FUNCTION_LIST::name

} // namespace toolkit
