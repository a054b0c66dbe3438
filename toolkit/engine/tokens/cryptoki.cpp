// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "toolkit/engine/tokens/cryptoki.h"

#include "toolkit/engine/base/error.h"

#include <algorithm>
#include <array>
#include <cstdio>

namespace toolkit {
namespace {

struct Meaning {
    CK_RV answer;
    int code;
    const char* detail;
};

constexpr std::array meanings{
    Meaning{CKR_HOST_MEMORY, SIGIL_TK_NO_MEMORY, ""},
    Meaning{CKR_ENCRYPTED_DATA_INVALID, SIGIL_TK_DECRYPT, ""},
    Meaning{CKR_ENCRYPTED_DATA_LEN_RANGE, SIGIL_TK_DECRYPT, ""},
    Meaning{CKR_DATA_LEN_RANGE, SIGIL_TK_ALGORITHM, "too much for the key"},
    Meaning{CKR_KEY_SIZE_RANGE, SIGIL_TK_ALGORITHM, "size of the key"},
    Meaning{CKR_CURVE_NOT_SUPPORTED, SIGIL_TK_ALGORITHM, "curve"},
    Meaning{CKR_KEY_FUNCTION_NOT_PERMITTED, SIGIL_TK_KEY_UNUSABLE, "not meant for this"},
    Meaning{CKR_KEY_TYPE_INCONSISTENT, SIGIL_TK_ALGORITHM, "another kind of key"},
    Meaning{CKR_TOKEN_NOT_PRESENT, SIGIL_TK_TOKEN_ABSENT, ""},
    Meaning{CKR_SLOT_ID_INVALID, SIGIL_TK_TOKEN_ABSENT, ""},
    Meaning{CKR_DEVICE_REMOVED, SIGIL_TK_TOKEN_ABSENT, "it was taken out"},
    Meaning{CKR_TOKEN_NOT_RECOGNIZED, SIGIL_TK_TOKEN_ABSENT, "the module does not know it"},
    Meaning{CKR_PIN_INCORRECT, SIGIL_TK_TOKEN_PIN, ""},
    Meaning{CKR_PIN_INVALID, SIGIL_TK_TOKEN_PIN, "the token does not take it"},
    Meaning{CKR_PIN_LEN_RANGE, SIGIL_TK_TOKEN_PIN, "too short or too long"},
    Meaning{CKR_PIN_EXPIRED, SIGIL_TK_TOKEN_PIN, "it has expired"},
    Meaning{CKR_USER_PIN_NOT_INITIALIZED, SIGIL_TK_TOKEN_PIN, "it was never set"},
    Meaning{CKR_PIN_LOCKED, SIGIL_TK_TOKEN_LOCKED, ""},
    Meaning{CKR_USER_NOT_LOGGED_IN, SIGIL_TK_TOKEN_LOGIN, ""},
    Meaning{CKR_OBJECT_HANDLE_INVALID, SIGIL_TK_TOKEN_OBJECT, ""},
    Meaning{CKR_KEY_HANDLE_INVALID, SIGIL_TK_TOKEN_OBJECT, ""},
    Meaning{CKR_TOKEN_WRITE_PROTECTED, SIGIL_TK_TOKEN_FULL, "write-protected"},
    Meaning{CKR_SESSION_READ_ONLY, SIGIL_TK_TOKEN_FULL, "the session is for reading only"},
    Meaning{CKR_SESSION_READ_ONLY_EXISTS, SIGIL_TK_TOKEN_FULL, "a session is for reading only"},
    Meaning{CKR_DEVICE_MEMORY, SIGIL_TK_TOKEN_FULL, "full"},
    Meaning{CKR_MECHANISM_INVALID, SIGIL_TK_TOKEN_MECHANISM, ""},
    Meaning{CKR_MECHANISM_PARAM_INVALID, SIGIL_TK_TOKEN_MECHANISM, "with these parameters"},
    Meaning{CKR_FUNCTION_NOT_SUPPORTED, SIGIL_TK_TOKEN_MECHANISM, ""},
    Meaning{CKR_SESSION_HANDLE_INVALID, SIGIL_TK_TOKEN_SESSION, "the token ended it"},
    Meaning{CKR_SESSION_CLOSED, SIGIL_TK_TOKEN_SESSION, "the token ended it"},
    Meaning{CKR_SESSION_COUNT, SIGIL_TK_TOKEN_SESSION, "too many are open"},
    Meaning{CKR_SESSION_EXISTS, SIGIL_TK_TOKEN_MODULE, "another session is open on the token"},
};

} // namespace

void checkAnswer(CK_RV answer, const char* function)
{
    if (answer == CKR_OK)
        return;
    const auto* const known = std::find_if(
        meanings.begin(), meanings.end(), [&](const Meaning& meaning) { return meaning.answer == answer; });
    if (known != meanings.end())
        fail(known->code, known->detail);
    std::array<char, 80> text{};
    const int length = std::snprintf(text.data(), text.size(), "%s answers 0x%08lX", function, answer);
    fail(SIGIL_TK_TOKEN_MODULE, length > 0 ? text.data() : function);
}

Template& Template::add(CK_ATTRIBUTE_TYPE type, View value)
{
    Secret& kept = m_values.emplace_back(value.begin(), value.end());
    m_attributes.push_back({type, kept.data(), kept.size()});
    return *this;
}

Template& Template::add(CK_ATTRIBUTE_TYPE type, unsigned long value)
{
    return add(type, View(reinterpret_cast<const unsigned char*>(&value), sizeof value));
}

Template& Template::flag(CK_ATTRIBUTE_TYPE type, bool value)
{
    const CK_BBOOL byte = value ? CK_TRUE : CK_FALSE;
    return add(type, View(&byte, 1));
}

} // namespace toolkit
