// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Wireless PKI and its messages.
 */
#pragma once

#include <sigildesk/binstr.h>

extern "C" {

int HVTK_WPKI_SignData(void* context, BINSTR* certificate, BINSTR* privateKey, BINSTR* data, BINSTR* message);
int HVTK_WPKI_VerifyData(void* context, BINSTR* message, BINSTR* data, BINSTR* certificate);
int HVTK_WPKI_EncryptData(void* context, BINSTR* certificate, BINSTR* privateKey, int algorithm, BINSTR* recipient,
    BINSTR* data, BINSTR* message);
int HVTK_WPKI_DecryptData(void* context, BINSTR* certificate, BINSTR* privateKey, BINSTR* message, BINSTR* data);
int HVTK_WPKI_VerifyCert(void* context, BINSTR* certificate);

int GPKI_WCMS_MakeSignedContent(
    void* context, BINSTR* certificate, BINSTR* privateKey, BINSTR* content, BINSTR* message);
int GPKI_WCMS_ProcessSignedContent(void* context, BINSTR* message, BINSTR* content, BINSTR* certificate);
int GPKI_WCMS_MakeWapEnvelopedData(
    void* context, BINSTR* recipient, BINSTR* content, int algorithm, BINSTR* message);
int GPKI_WCMS_ProcessWapEnvelopedData(
    void* context, BINSTR* certificate, BINSTR* privateKey, BINSTR* message, BINSTR* content);

} // extern "C"
