// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "ui/tellings.h"

#include <algorithm>
#include <iterator>

namespace sigil {

namespace {

constexpr char dialog[] = "DLG_SELCERT_CAPITON";
constexpr char import[] = "MSG_MANAGEUSER_ALERT_TITLE_IMPORT";
constexpr const char* statusLine = nullptr;

constexpr Telling tellings[] = {
    {Step::TypePassword, code::missing, "MSG_SELECTCERT_INPUTPASSWORD", dialog},
    {Step::TypePassword, code::tooLong, "MSG_SELECTCERT_PASSWORD_MAX", dialog},
    {Step::TypePassword, SIGIL_WRONG_PASSWORD, "MSG_SELECTCERT_PASSWORD_DIFFERENT", dialog},
    {Step::ChooseRow, code::missing, "MSG_SELECTCERT_NOTSELECTCERT", dialog},
    {Step::UseRow, code::expired, "MSG_SELECTCERT_EXIRED", dialog},
    {Step::DecryptKeys, SIGIL_WRONG_PASSWORD, "MSG_SELECTCERT_PASSWORD_DIFFERENT_KOR", dialog},
    {Step::DecryptKeys, SIGIL_KEY_NOT_AVAILABLE, "MSG_SELECTCERT_GETPRIKEY", dialog},
    {Step::UseKey, SIGIL_KEY_NOT_DECRYPTED, "DLG_CERTPASSWORD_WRONG_PKCS11", dialog},
    {Step::UseKey, code::tooLong, "MSG_SELECTCERT_KEY_MAX", dialog},
    {Step::UseKmKey, code::tooLong, "MSG_SELECTCERT_KMKEY_MAX", dialog},
    {Step::FetchRandom, SIGIL_KEY_NOT_AVAILABLE, "DLG_CERTPASSWORD_WRONG_PKCS11", dialog},
    {Step::FetchRandomOfDisk, SIGIL_KEY_NOT_AVAILABLE, "DLG_CERTPASSWORD_WRONG_PKCS11", dialog},
    {Step::FetchRandomOfDisk, SIGIL_WRONG_PASSWORD, "MSG_SELECTCERT_PASSWORD_DIFFERENT", dialog},
    {Step::ListDrives, SIGIL_FOLDERS_NOT_FORMED, "MSG_SELECTCERT_REMDRIVE_GETINFOFAIL", "DLG_REMOVABLE_CAPTION"},
    {Step::ListDisk, SIGIL_NO_CERTIFICATE, "MSG_SELECTCERT_NOCERT", statusLine},
    {Step::OpenHardDisk, SIGIL_SUCCESS, "MSG_SELECTCERT_SELCERTINPUTPWD", statusLine},
    {Step::TakePair, code::missing, "MSG_SELECTCERT_NOCERT_SIGN", dialog},
    {Step::TakePair, SIGIL_NO_CERTIFICATE, "MSG_SELECTCERT_NOCERT", dialog},
    {Step::TakePair, code::anyOther, "MSG_MANAGEUSER_ALERTFAIL_CERTIMPORT", import},
    {Step::Import, SIGIL_SUCCESS, "MSG_SELECTCERT_SELCERTINPUTPWD", statusLine},
    {Step::Import, SIGIL_WRONG_PASSWORD, "MSG_SELECTCERT_PASSWORD_DIFFERENT", dialog},
    {Step::Import, SIGIL_CANCELLED, "MSG_MANAGEUSER_ALERTCANCEL_CERTIMPORT", import},
    {Step::Import, code::anyOther, "MSG_MANAGEUSER_ALERTFAIL_CERTIMPORT", import},
};

const Telling* lineOf(Step step, int code)
{
    const auto* line = std::find_if(std::begin(tellings), std::end(tellings),
        [&](const Telling& each) { return each.step == step && each.code == code; });
    return line == std::end(tellings) ? nullptr : line;
}

} // namespace

const Telling* tellingOf(Step step, int code)
{
    const Telling* line = lineOf(step, code);
    return line || code == SIGIL_SUCCESS ? line : lineOf(step, code::anyOther);
}

} // namespace sigil
