// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Challenge and response.
 */
#pragma once

#include <sigildesk/binstr.h>

extern "C" {

int GPKI_SIGEA_MakeChallenge(void* context, BINSTR* challenge);
int GPKI_SIGEA_MakeResponse(
    void* context, BINSTR* challenge, BINSTR* certificate, BINSTR* privateKey, BINSTR* response);
int GPKI_SIGEA_VerifyResponse(void* context, BINSTR* challenge, BINSTR* response, BINSTR* certificate);

} // extern "C"
