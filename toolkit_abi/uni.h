// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Viewing and verification.
 */
#pragma once

#include <sigildesk/binstr.h>

extern "C" {

int HVTK_UNI_ViewCert(void* context, BINSTR* certificate, char* text);
int HVTK_UNI_VerifySignData(void* context, BINSTR* message, BINSTR* data, BINSTR* certificate);
int HVTK_UNI_DecryptEnvData(void* context, BINSTR* certificate, BINSTR* privateKey, BINSTR* message, BINSTR* data);

} // extern "C"
