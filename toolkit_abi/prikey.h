// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Private keys.
 */
#pragma once

#include <sigildesk/binstr.h>

extern "C" {

int HVTK_PRIKEY_Encrypt(void* context, int algorithm, char* password, BINSTR* privateKey, BINSTR* encryptedKey);
int HVTK_PRIKEY_Decrypt(void* context, char* password, BINSTR* encryptedKey, BINSTR* privateKey);
int HVTK_PRIKEY_ChangePasswd(
    void* context, char* oldPassword, char* newPassword, BINSTR* encryptedKey, BINSTR* changedKey);
int HVTK_PRIKEY_CheckKeyPair(void* context, BINSTR* certificate, BINSTR* privateKey);

int GPKI_PRIKEY_Encrypt(void* context, int algorithm, char* password, BINSTR* privateKey, BINSTR* encryptedKey);
int GPKI_PRIKEY_Decrypt(void* context, char* password, BINSTR* encryptedKey, BINSTR* privateKey);
int GPKI_PRIKEY_ChangePasswd(
    void* context, char* oldPassword, char* newPassword, BINSTR* encryptedKey, BINSTR* changedKey);
int GPKI_PRIKEY_CheckKeyPair(void* context, BINSTR* certificate, BINSTR* privateKey);

} // extern "C"
