// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// A token that answers any bytes: handles, attributes, certificates, keys and signatures.

#include "fuzz/script.h"
#include "fuzz/toolkit/input.h"
#include "toolkit/engine/tokens/token_certificates.h"
#include "toolkit/engine/tokens/token_keys.h"
#include "toolkit/engine/tokens/token_objects.h"

#include <algorithm>
#include <array>

using namespace toolkit;

namespace {

/** What the token says. */
class Sayings : public fuzz::Script {
public:
    using Script::Script;
    CK_RV answer()
    {
        constexpr std::array answers{CKR_OK, CKR_ATTRIBUTE_TYPE_INVALID, CKR_ATTRIBUTE_SENSITIVE, CKR_GENERAL_ERROR,
            CKR_DEVICE_REMOVED, CKR_MECHANISM_INVALID, CKR_BUFFER_TOO_SMALL, CKR_DATA_LEN_RANGE};
        return oneOf(answers);
    }
};
Sayings script(fuzz::Input{});

CK_RV findInit(CK_SESSION_HANDLE, CK_ATTRIBUTE*, CK_ULONG) { return CKR_OK; }
CK_RV findFinal(CK_SESSION_HANDLE) { return CKR_OK; }
CK_RV close(CK_SESSION_HANDLE) { return CKR_OK; }
CK_RV destroy(CK_SESSION_HANDLE, CK_OBJECT_HANDLE) { return CKR_OK; }
CK_RV signInit(CK_SESSION_HANDLE, CK_MECHANISM*, CK_OBJECT_HANDLE) { return CKR_OK; }

CK_RV open(CK_SLOT_ID, CK_FLAGS, void*, CK_NOTIFY, CK_SESSION_HANDLE* session)
{
    *session = 1;
    return CKR_OK;
}

/** As many objects as it says, more than there is room for included. */
CK_RV find(CK_SESSION_HANDLE, CK_OBJECT_HANDLE* objects, CK_ULONG room, CK_ULONG* count)
{
    *count = script.number();
    std::fill_n(objects, std::min(*count, room), 1);
    return CKR_OK;
}

/** What fits is written; how long it is said to be is another matter. */
CK_RV write(unsigned char* out, CK_ULONG* length)
{
    const View value = script.bytes();
    const unsigned lie = script.number();
    if (out)
        std::copy_n(value.begin(), std::min<std::size_t>(value.size(), *length), out);
    *length = lie == 0 ? value.size() : lie == 255 ? CK_UNAVAILABLE_INFORMATION : CK_ULONG{1} << lie % 64;
    return CKR_OK;
}

/** Asked for a length it looks ahead: the value comes again when there is room for it. */
CK_RV attribute(CK_SESSION_HANDLE, CK_OBJECT_HANDLE, CK_ATTRIBUTE* wanted, CK_ULONG)
{
    if (wanted->pValue)
        return write(static_cast<unsigned char*>(wanted->pValue), &wanted->ulValueLen);
    const CK_RV answer = script.answer();
    const Sayings here = script;
    write(nullptr, &wanted->ulValueLen);
    script = here;
    return answer;
}

CK_RV sign(CK_SESSION_HANDLE, unsigned char*, CK_ULONG, unsigned char* out, CK_ULONG* length)
{
    const CK_RV answer = script.answer();
    return answer == CKR_OK ? write(out, length) : answer;
}

CK_RV derive(CK_SESSION_HANDLE, CK_MECHANISM*, CK_OBJECT_HANDLE, CK_ATTRIBUTE*, CK_ULONG, CK_OBJECT_HANDLE* object)
{
    *object = 1;
    return script.answer();
}

CK_RV sessionInfo(CK_SESSION_HANDLE, CK_SESSION_INFO* info)
{
    info->state = CKS_RW_USER_FUNCTIONS;
    return CKR_OK;
}

CK_RV slotInfo(CK_SLOT_ID, CK_SLOT_INFO* info)
{
    info->flags = CKF_TOKEN_PRESENT;
    return CKR_OK;
}

CK_RV about(CK_SLOT_ID, CK_TOKEN_INFO* info)
{
    const View value = script.bytes();
    std::copy_n(value.begin(), std::min(value.size(), sizeof *info), reinterpret_cast<unsigned char*>(info));
    return CKR_OK;
}

Cryptoki module()
{
    Cryptoki functions{};
    functions.C_OpenSession = open;
    functions.C_CloseSession = close;
    functions.C_FindObjectsInit = findInit;
    functions.C_FindObjects = find;
    functions.C_FindObjectsFinal = findFinal;
    functions.C_GetAttributeValue = attribute;
    functions.C_DestroyObject = destroy;
    functions.C_SignInit = signInit;
    functions.C_Sign = sign;
    functions.C_DecryptInit = signInit;
    functions.C_Decrypt = sign;
    functions.C_DeriveKey = derive;
    functions.C_GetSessionInfo = sessionInfo;
    functions.C_GetSlotInfo = slotInfo;
    functions.C_GetTokenInfo = about;
    return functions;
}

void useKey(const TokenSession& session, View id)
{
    const TokenKey key(fuzz::library(), session, id);
    const std::string digest(32, '1');
    const std::string point(65, '\4');
    fuzz::attempt([&] { key.signDigest({SIGIL_TK_HASH_SHA256, SIGIL_TK_RSA_V15}, view(digest)); });
    fuzz::attempt([&] { key.decrypt({SIGIL_TK_PADDING_V15, SIGIL_TK_HASH_SHA1}, view(digest)); });
    fuzz::attempt([&] { key.sharedSecret(view(point)); });
}

} // namespace

FUZZ_TARGET(toolkit_token, input)
{
    const Bytes said = fuzz::der(input);
    script = Sayings(said);
    Cryptoki functions = module();
    const Slot slot{&functions, 0};
    const TokenSession session(nullptr, slot, 0);
    const View id = view("id");
    fuzz::attempt([&] { useKey(session, id); });
    fuzz::attempt([&] { tokenPublicKey(fuzz::library(), session, id); });
    fuzz::attempt([&] {
        for (const TokenCertificate& found : tokenCertificates(fuzz::library(), session))
            kindOf(found.certificate);
    });
    fuzz::attempt([&] { tokenRandom(session, id); });
    fuzz::attempt([&] { fieldText(tokenInfo(slot).label); });
}
