// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Private keys.

#include "facade/row.h"

#include <sigildesk/crypto/prikey.h>

using namespace sigil;

int PriKeyEncrypt(void* handle, int algorithm, char* password, BINSTR* privateKey, BINSTR* encryptedKey)
{
    return secretRow(handle, {need(password), need(privateKey)},
        maker(SYMBOL(HVTK_PRIKEY_Encrypt), algorithm, password, privateKey, encryptedKey),
        gpki(SYMBOL(GPKI_PRIKEY_Encrypt), algorithm, password, privateKey, encryptedKey));
}

int PriKeyDecrypt(void* handle, char* password, BINSTR* encryptedKey, BINSTR* privateKey)
{
    return secretRow(handle, {need(password), need(encryptedKey)},
        maker(SYMBOL(HVTK_PRIKEY_Decrypt), password, encryptedKey, privateKey),
        gpki(SYMBOL(GPKI_PRIKEY_Decrypt), password, encryptedKey, privateKey));
}

int PriKeyChangePasswd(void* handle, char* oldPassword, char* newPassword, BINSTR* encryptedKey, BINSTR* changedKey)
{
    return secretRow(handle, {need(oldPassword), need(newPassword), need(encryptedKey)},
        maker(SYMBOL(HVTK_PRIKEY_ChangePasswd), oldPassword, newPassword, encryptedKey, changedKey),
        gpki(SYMBOL(GPKI_PRIKEY_ChangePasswd), oldPassword, newPassword, encryptedKey, changedKey));
}

int PriKeyCheckKeyPair(void* handle, BINSTR* certificate, BINSTR* privateKey)
{
    return secretRow(handle, {need(certificate), need(privateKey)},
        maker(SYMBOL(HVTK_PRIKEY_CheckKeyPair), certificate, privateKey),
        gpki(SYMBOL(GPKI_PRIKEY_CheckKeyPair), certificate, privateKey));
}
