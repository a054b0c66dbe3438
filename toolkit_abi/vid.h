// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Identity verification with the random value of a key.
 */
#pragma once

#include <sigildesk/binstr.h>

extern "C" {

int HVTK_VID_GetRandomFromPriKey(void* context, BINSTR* privateKey, BINSTR* random);
int HVTK_VID_Verify(void* context, BINSTR* certificate, BINSTR* random, char* identity);
int HVTK_VID_VerifyByIVS(
    void* context, char* confFile, BINSTR* certificate, BINSTR* random, char* identity, BINSTR* ivsCertificate);

int GPKI_VID_GetRandomFromPriKey(void* context, BINSTR* privateKey, BINSTR* random);
int GPKI_VID_Verify(void* context, BINSTR* certificate, BINSTR* random, char* identity);
int GPKI_VID_VerifyByIVS(
    void* context, char* confFile, BINSTR* certificate, BINSTR* random, char* identity, BINSTR* ivsCertificate);

} // extern "C"
