// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "tests/toolkit/odd_module.h"

#include <p11-kit/pkcs11.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string_view>
#include <unistd.h>

namespace {

using toolkit_test::OddBehaviour;

OddBehaviour behaviour;
bool loggedIn = false;

constexpr CK_SLOT_ID onlySlot = 0;
constexpr CK_SESSION_HANDLE onlySession = 7;
constexpr std::string_view pin = "1234";

template <class... Arguments>
CK_RV unsupported(Arguments... /*unused*/)
{
    return CKR_FUNCTION_NOT_SUPPORTED;
}

template <std::size_t size>
void fill(unsigned char (&field)[size], std::string_view text)
{
    std::memset(field, ' ', size);
    text.copy(reinterpret_cast<char*>(field), size);
}

CK_RV initialise(void* arguments)
{
    const auto* const given = static_cast<const CK_C_INITIALIZE_ARGS*>(arguments);
    const std::string_view wish = given && given->pReserved ? static_cast<const char*>(given->pReserved) : "";
    if (wish == "crash")
        std::abort();
    if (wish == "hang")
        for (;;)
            pause();
    if (wish == "chatter")
        std::puts("not now");
    std::fflush(stdout);
    behaviour.failing = wish == "slotless";
    ++behaviour.starts;
    return wish == "refuse" || wish == "chatter" ? CKR_GENERAL_ERROR : CKR_OK;
}

CK_RV finalise(void* /*reserved*/)
{
    behaviour = {};
    loggedIn = false;
    return CKR_OK;
}

CK_RV slotList(CK_BBOOL present, CK_SLOT_ID* slots, unsigned long* count)
{
    if (behaviour.failing)
        return CKR_DEVICE_ERROR;
    const unsigned long number = present && behaviour.pulled ? 0 : 1;
    if (slots && *count < number)
        return CKR_BUFFER_TOO_SMALL;
    if (slots && number > 0)
        slots[0] = onlySlot;
    *count = number;
    return CKR_OK;
}

CK_RV slotInfo(CK_SLOT_ID slot, CK_SLOT_INFO* info)
{
    if (slot != onlySlot)
        return CKR_SLOT_ID_INVALID;
    *info = {};
    info->flags = CKF_REMOVABLE_DEVICE | (behaviour.pulled ? 0 : CKF_TOKEN_PRESENT);
    return CKR_OK;
}

CK_RV tokenInfo(CK_SLOT_ID slot, CK_TOKEN_INFO* info)
{
    if (slot != onlySlot)
        return CKR_SLOT_ID_INVALID;
    if (behaviour.pulled)
        return CKR_TOKEN_NOT_PRESENT;
    *info = {};
    fill(info->label, "odd");
    fill(info->manufacturerID, "tests");
    fill(info->model, "odd");
    fill(info->serialNumber, "1");
    info->flags = CKF_TOKEN_INITIALIZED | CKF_LOGIN_REQUIRED | CKF_USER_PIN_INITIALIZED |
        (behaviour.triesLeft == 1 ? CKF_USER_PIN_FINAL_TRY : 0) |
        (behaviour.triesLeft == 0 ? CKF_USER_PIN_LOCKED : 0);
    return CKR_OK;
}

CK_RV openSession(
    CK_SLOT_ID slot, CK_FLAGS /*flags*/, void* /*data*/, CK_NOTIFY /*notify*/, CK_SESSION_HANDLE* session)
{
    if (slot != onlySlot || behaviour.pulled)
        return CKR_TOKEN_NOT_PRESENT;
    ++behaviour.sessions;
    *session = onlySession;
    return CKR_OK;
}

CK_RV closeSession(CK_SESSION_HANDLE /*session*/)
{
    --behaviour.sessions;
    loggedIn = false;
    return behaviour.pulled ? CKR_SESSION_HANDLE_INVALID : CKR_OK;
}

CK_RV sessionInfo(CK_SESSION_HANDLE /*session*/, CK_SESSION_INFO* info)
{
    if (behaviour.pulled)
        return CKR_DEVICE_REMOVED;
    *info = {
        onlySlot, loggedIn ? CKS_RW_USER_FUNCTIONS : CKS_RW_PUBLIC_SESSION, CKF_RW_SESSION | CKF_SERIAL_SESSION, 0};
    return CKR_OK;
}

CK_RV login(CK_SESSION_HANDLE /*session*/, CK_USER_TYPE /*user*/, unsigned char* given, unsigned long length)
{
    if (behaviour.pulled)
        return CKR_SESSION_HANDLE_INVALID;
    if (behaviour.triesLeft == 0)
        return CKR_PIN_LOCKED;
    loggedIn = std::string_view(reinterpret_cast<const char*>(given), length) == pin;
    behaviour.triesLeft = loggedIn ? 3 : behaviour.triesLeft - 1;
    return loggedIn ? CKR_OK : CKR_PIN_INCORRECT;
}

CK_RV logout(CK_SESSION_HANDLE /*session*/)
{
    loggedIn = false;
    return CKR_OK;
}

CK_RV createObject(
    CK_SESSION_HANDLE /*session*/, CK_ATTRIBUTE* /*attributes*/, unsigned long /*count*/, CK_OBJECT_HANDLE* object)
{
    *object = 1;
    if (behaviour.guarded && !loggedIn)
        return CKR_USER_NOT_LOGGED_IN;
    return behaviour.full ? CKR_DEVICE_MEMORY : CKR_OK;
}

CK_RV findObjectsInit(CK_SESSION_HANDLE /*session*/, CK_ATTRIBUTE* /*attributes*/, unsigned long /*count*/)
{
    return behaviour.pulled ? CKR_SESSION_HANDLE_INVALID : CKR_OK;
}

CK_RV findObjects(
    CK_SESSION_HANDLE /*session*/, CK_OBJECT_HANDLE* objects, unsigned long room, unsigned long* count)
{
    static bool handedOut = false;
    *count = behaviour.endless ? room : 0;
    if (behaviour.lyingLengths && !handedOut)
        *count = 1;
    handedOut = *count == 1;
    for (unsigned long i = 0; i < *count; ++i)
        objects[i] = i + 1;
    return CKR_OK;
}

CK_RV findObjectsFinal(CK_SESSION_HANDLE /*session*/) { return CKR_OK; }

CK_RV attributeValue(
    CK_SESSION_HANDLE /*session*/, CK_OBJECT_HANDLE /*object*/, CK_ATTRIBUTE* attributes, unsigned long count)
{
    constexpr unsigned long larger = 1UL << 60U;
    for (unsigned long i = 0; i < count; ++i)
        attributes[i].ulValueLen = behaviour.lyingLengths ? larger : CK_UNAVAILABLE_INFORMATION;
    return behaviour.lyingLengths ? CKR_OK : CKR_ATTRIBUTE_TYPE_INVALID;
}

CK_FUNCTION_LIST makeList()
{
    CK_FUNCTION_LIST list{};
    list.version = {2, 40};
    // Every place holds a function: what the module cannot do answers so.
#define CK_PKCS11_FUNCTION_INFO(name) list.name = unsupported;
    CK_PKCS11_FUNCTION_INFO(C_GetInfo)
    CK_PKCS11_FUNCTION_INFO(C_GetMechanismList)
    CK_PKCS11_FUNCTION_INFO(C_GetMechanismInfo)
    CK_PKCS11_FUNCTION_INFO(C_InitToken)
    CK_PKCS11_FUNCTION_INFO(C_InitPIN)
    CK_PKCS11_FUNCTION_INFO(C_SetPIN)
    CK_PKCS11_FUNCTION_INFO(C_CloseAllSessions)
    CK_PKCS11_FUNCTION_INFO(C_DestroyObject)
    CK_PKCS11_FUNCTION_INFO(C_SignInit)
    CK_PKCS11_FUNCTION_INFO(C_DecryptInit)
    CK_PKCS11_FUNCTION_INFO(C_GenerateKeyPair)
    CK_PKCS11_FUNCTION_INFO(C_DeriveKey)
#undef CK_PKCS11_FUNCTION_INFO
    list.C_Initialize = initialise;
    list.C_Finalize = finalise;
    list.C_GetSlotList = slotList;
    list.C_GetSlotInfo = slotInfo;
    list.C_GetTokenInfo = tokenInfo;
    list.C_OpenSession = openSession;
    list.C_CloseSession = closeSession;
    list.C_GetSessionInfo = sessionInfo;
    list.C_Login = login;
    list.C_Logout = logout;
    list.C_CreateObject = createObject;
    list.C_FindObjectsInit = findObjectsInit;
    list.C_FindObjects = findObjects;
    list.C_FindObjectsFinal = findObjectsFinal;
    list.C_GetAttributeValue = attributeValue;
    return list;
}

} // namespace

extern "C" __attribute__((visibility("default"))) OddBehaviour* odd_behaviour() { return &behaviour; }

extern "C" __attribute__((visibility("default"))) CK_RV C_GetFunctionList(CK_FUNCTION_LIST** list)
{
    static CK_FUNCTION_LIST functions = makeList();
    functions.C_GetFunctionList = C_GetFunctionList;
    const char* const given = std::getenv("ODD_MODULE_LIST");
    const std::string_view wish = given ? given : "";
    *list = wish == "none" ? nullptr : &functions;
    return wish == "refuse" ? CKR_GENERAL_ERROR : CKR_OK;
}
