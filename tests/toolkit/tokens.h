// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Tokens for tests: SoftHSM with a folder of its own, and a module that misbehaves, registered with p11-kit for this
 *  process alone. The machine's own modules and tokens are never touched.
 */
#pragma once

#include "tests/toolkit/odd_module.h"
#include "tests/toolkit/toolkit_library.h"
#include "tests/toolkit/workshop.h"

#include <sigildesk/crypto/pkcs11.h>

#include <gtest/gtest.h>
#include <p11-kit/pkcs11.h>

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace toolkit_test {

constexpr const char* tokenPin = "123456";
constexpr const char* securityPin = "87654321";

/** A folder with SoftHSM's tokens and p11-kit's registrations. Made anew for each test. */
class TokenWorkshop : public Workshop {
public:
    TokenWorkshop();

    /** Registers a module. @param file its library @param start what it is initialised with; empty: nothing */
    void add(const std::string& name, const std::string& file, const std::string& start = {}) const;
    void addSoftHsm() const;
    void addOdd(const std::string& name, const std::string& start = {}) const;
    /** Makes an initialised token in SoftHSM. */
    void token(const std::string& label) const;
    /** Runs `pkcs11-tool` with SoftHSM's module. */
    std::string pkcs11Tool(const std::string& arguments) const;
};

/** Certificates with their keys, for every use: `rsa`, `other` and `ec`. Made once. */
const Workshop& plainPairs();

/** The behaviour of the odd module, which must be loaded. */
OddBehaviour& oddBehaviour();

/** The functions of SoftHSM in this process, which it keeps loaded. p11-kit remembers them when it loads the module. */
class SoftHsmFunctions {
public:
    SoftHsmFunctions();
    ~SoftHsmFunctions();
    SoftHsmFunctions(const SoftHsmFunctions&) = delete;
    SoftHsmFunctions& operator=(const SoftHsmFunctions&) = delete;

    CK_FUNCTION_LIST* operator->() const { return m_list; }

private:
    void* m_library;
    CK_FUNCTION_LIST* m_list = nullptr;
};

/** A function of SoftHSM that answers as the test wants, from before the first call of a token function on. */
template <auto member>
class Instead;

template <class... Parameters, CK_RV (*CK_FUNCTION_LIST::*member)(Parameters...)>
class Instead<member> {
public:
    using Function = CK_RV (*)(Parameters...);

    /** @param answer takes SoftHSM's own function and its arguments */
    explicit Instead(std::function<CK_RV(Function own, Parameters...)> answer)
    {
        s_own = std::exchange(m_functions.operator->()->*member, call);
        s_answer = std::move(answer);
    }
    ~Instead()
    {
        m_functions.operator->()->*member = s_own;
        s_answer = {};
    }
    Instead(const Instead&) = delete;
    Instead& operator=(const Instead&) = delete;

private:
    static CK_RV call(Parameters... parameters)
    {
        return s_answer ? s_answer(s_own, parameters...) : s_own(parameters...);
    }

    static inline Function s_own = nullptr;
    static inline std::function<CK_RV(Function, Parameters...)> s_answer;
    SoftHsmFunctions m_functions;
};

/** A toolkit with SoftHSM and one token "first" in it. */
class TokenTest : public testing::Test {
protected:
    explicit TokenTest(const std::string& prefix);

    bool hvtk() const { return m_hvtk; }
    /** Calls a function of the family, whatever its prefix is. */
    template <class... Arguments>
    int token(const std::string& function, Arguments... arguments) const
    {
        return (*toolkit)((m_hvtk ? "PKCS11_" : "HSM_") + function, arguments...);
    }
    std::vector<unsigned long> slots() const;
    /** The slot of a token; fails the test without one. */
    unsigned long slotOf(const std::string& label) const;
    PKCS11_TOKEN_INFO info(unsigned long slot) const;
    /** Opens a session with a token. */
    int open(const std::string& label, int flags = 0) const;
    /** The same, and logs in. */
    void openAndLogIn(const std::string& label) const;
    int login(const std::string& pin) const { return token("Login", text(pin)); }
    int certificateCount() const;
    /** Writes NAME.crt and NAME.key. */
    int writePair(const Workshop& pairs, const std::string& name) const;
    /** What a function of (id, data) hands out. */
    std::string with(const std::string& function, const std::string& id, const std::string& data);
    /** Objects of the first token that `pkcs11-tool` sees after a login. */
    std::string listed(const std::string& type) const;
    /** What a call hands out, or "code N". */
    template <class Call>
    std::string make(Call call)
    {
        ByteString out(*toolkit);
        const int code = call(out.get());
        return code == 0 ? out.bytes() : "code " + std::to_string(code);
    }

    TokenWorkshop workshop;
    std::unique_ptr<ToolkitLibrary> toolkit;

private:
    bool m_hvtk;
};

/** A fixed-width text of a token, without the blanks behind it. */
template <std::size_t size>
std::string fixedText(const unsigned char (&field)[size])
{
    const std::string whole(field, field + size);
    return whole.substr(0, whole.find_last_not_of(' ') + 1);
}

} // namespace toolkit_test
