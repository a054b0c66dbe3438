// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "toolkit/engine/tokens/token_session.h"

#include "toolkit/engine/base/error.h"

#include <algorithm>
#include <array>
#include <utility>

namespace toolkit {
namespace {

/** Bounds for what a module may claim. */
constexpr std::size_t maximumObjects = 16384;
constexpr unsigned long maximumValue = 1024UL * 1024;

bool tokenIsThere(const Slot& slot)
{
    CK_SLOT_INFO info{};
    return slot.module->C_GetSlotInfo(slot.id, &info) == CKR_OK && (info.flags & CKF_TOKEN_PRESENT) != 0;
}

bool isUnavailable(CK_RV answer)
{
    return answer == CKR_ATTRIBUTE_TYPE_INVALID || answer == CKR_ATTRIBUTE_SENSITIVE;
}

} // namespace

TokenSession::TokenSession(std::shared_ptr<TokenModules> modules, const Slot& slot, int flags)
    : m_modules(std::move(modules))
    , m_slot(slot)
{
    require((flags & ~static_cast<int>(CKF_RW_SESSION | CKF_SERIAL_SESSION)) == 0, SIGIL_TK_OPTION,
        "flags " + std::to_string(flags));
    open(flags);
}

TokenSession::~TokenSession() { m_slot.module->C_CloseSession(m_handle); }

void TokenSession::open(int flags)
{
    const auto openWith = [&](CK_FLAGS wanted) {
        return m_slot.module->C_OpenSession(m_slot.id, wanted | CKF_SERIAL_SESSION, nullptr, nullptr, &m_handle);
    };
    CK_RV answer = openWith(flags == 0 ? CKF_RW_SESSION : static_cast<CK_FLAGS>(flags));
    if (flags == 0 && answer == CKR_TOKEN_WRITE_PROTECTED)
        answer = openWith(0);
    checkAnswer(answer, "C_OpenSession");
}

void TokenSession::check(CK_RV answer, const char* function) const
{
    require(answer == CKR_OK || tokenIsThere(m_slot), SIGIL_TK_TOKEN_ABSENT, "it was taken out");
    checkAnswer(answer, function);
}

void TokenSession::refusePin(CK_RV answer, const char* function) const
{
    CK_TOKEN_INFO info{};
    const bool told = m_slot.module->C_GetTokenInfo(m_slot.id, &info) == CKR_OK;
    if (answer == CKR_PIN_INCORRECT && told && (info.flags & CKF_USER_PIN_LOCKED) != 0)
        fail(SIGIL_TK_TOKEN_PIN, "and the PIN is locked now");
    if (answer == CKR_PIN_INCORRECT && told && (info.flags & CKF_USER_PIN_FINAL_TRY) != 0)
        fail(SIGIL_TK_TOKEN_PIN, "the next wrong one locks it");
    check(answer, function);
    fail(SIGIL_TK_TOKEN_MODULE, function);
}

void TokenSession::login(std::string_view pin)
{
    // A reader with keys of its own asks for the PIN itself, and wants none.
    const bool ownKeys = (tokenInfo(m_slot).flags & CKF_PROTECTED_AUTHENTICATION_PATH) != 0;
    const CK_RV answer =
        call(&_CK_FUNCTION_LIST::C_Login, CKU_USER, ownKeys ? nullptr : bytesFor(pin), ownKeys ? 0 : pin.size());
    if (answer != CKR_OK && answer != CKR_USER_ALREADY_LOGGED_IN)
        refusePin(answer, "C_Login");
}

void TokenSession::logout()
{
    require(loggedIn(), SIGIL_TK_TOKEN_LOGIN);
    must(TOKEN_FUNCTION(C_Logout));
}

void TokenSession::changePin(std::string_view oldPin, std::string_view newPin)
{
    const CK_RV answer =
        call(&_CK_FUNCTION_LIST::C_SetPIN, bytesFor(oldPin), oldPin.size(), bytesFor(newPin), newPin.size());
    if (answer != CKR_OK)
        refusePin(answer, "C_SetPIN");
}

void TokenSession::setFirstPin(std::string_view soPin, std::string_view pin)
{
    must(TOKEN_FUNCTION(C_Login), CKU_SO, bytesFor(soPin), soPin.size());
    must(TOKEN_FUNCTION(C_InitPIN), bytesFor(pin), pin.size());
    must(TOKEN_FUNCTION(C_Logout));
}

bool TokenSession::loggedIn() const
{
    CK_SESSION_INFO info{};
    must(TOKEN_FUNCTION(C_GetSessionInfo), &info);
    return info.state == CKS_RO_USER_FUNCTIONS || info.state == CKS_RW_USER_FUNCTIONS;
}

void TokenSession::requireLogin() const
{
    require(loggedIn() || (tokenInfo(m_slot).flags & CKF_LOGIN_REQUIRED) == 0, SIGIL_TK_TOKEN_LOGIN);
}

ObjectHandles TokenSession::find(const Template& wanted) const
{
    must(TOKEN_FUNCTION(C_FindObjectsInit), wanted.data(), wanted.size());
    ObjectHandles found;
    std::array<CK_OBJECT_HANDLE, 64> some{};
    unsigned long count = 0;
    CK_RV answer = CKR_OK;
    do {
        answer = call(&_CK_FUNCTION_LIST::C_FindObjects, some.data(), some.size(), &count);
        count = answer == CKR_OK ? std::min<unsigned long>(count, some.size()) : 0;
        found.insert(found.end(), some.begin(), some.begin() + static_cast<std::ptrdiff_t>(count));
    } while (count > 0 && found.size() <= maximumObjects);
    call(&_CK_FUNCTION_LIST::C_FindObjectsFinal);
    check(answer, "C_FindObjects");
    require(found.size() <= maximumObjects, SIGIL_TK_TOKEN_MODULE, "too many objects");
    return found;
}

std::optional<Secret> TokenSession::attribute(CK_OBJECT_HANDLE object, CK_ATTRIBUTE_TYPE type) const
{
    CK_ATTRIBUTE wanted{type, nullptr, 0};
    const auto ask = [&] {
        const CK_RV answer =
            call(&_CK_FUNCTION_LIST::C_GetAttributeValue, object, &wanted, static_cast<unsigned long>(1));
        if (!isUnavailable(answer))
            check(answer, "C_GetAttributeValue");
        return !isUnavailable(answer) && wanted.ulValueLen != CK_UNAVAILABLE_INFORMATION;
    };
    if (!ask())
        return {};
    require(wanted.ulValueLen <= maximumValue, SIGIL_TK_TOKEN_MODULE, "size of an attribute");
    Secret value(wanted.ulValueLen);
    wanted.pValue = value.data();
    if (value.empty() || !ask())
        return value.empty() ? std::optional(value) : std::nullopt;
    value.resize(std::min<std::size_t>(wanted.ulValueLen, value.size()));
    return value;
}

CK_OBJECT_HANDLE TokenSession::create(const Template& object) const
{
    CK_OBJECT_HANDLE handle = CK_INVALID_HANDLE;
    must(TOKEN_FUNCTION(C_CreateObject), object.data(), object.size(), &handle);
    return handle;
}

void TokenSession::destroy(CK_OBJECT_HANDLE object) const { must(TOKEN_FUNCTION(C_DestroyObject), object); }

} // namespace toolkit
