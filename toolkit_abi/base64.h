// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Base64 and PEM texts.
 */
#pragma once

#include <sigildesk/binstr.h>

extern "C" {

int HVTK_BASE64_Encode(void* context, BINSTR* data, BINSTR* text);
int HVTK_BASE64_Decode(void* context, BINSTR* text, BINSTR* data);
int HVTK_PEM_Encode(void* context, int kind, BINSTR* data, BINSTR* text);
int HVTK_PEM_Decode(void* context, BINSTR* text, BINSTR* data);

int GPKI_BASE64_Encode(void* context, BINSTR* data, BINSTR* text);
int GPKI_BASE64_Decode(void* context, BINSTR* text, BINSTR* data);

} // extern "C"
