// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Base64 and PEM.

#include "facade/row.h"

#include <sigildesk/crypto/base64.h>

using namespace sigil;

int Base64Encode(void* handle, BINSTR* data, BINSTR* text)
{
    return secretRow(handle, {need(data)}, maker(SYMBOL(HVTK_BASE64_Encode), data, text),
        gpki(SYMBOL(GPKI_BASE64_Encode), data, text));
}

int Base64Decode(void* handle, BINSTR* text, BINSTR* data)
{
    return secretRow(handle, {need(text)}, maker(SYMBOL(HVTK_BASE64_Decode), text, data),
        gpki(SYMBOL(GPKI_BASE64_Decode), text, data));
}

int PEMEncode(void* handle, int kind, BINSTR* data, BINSTR* text)
{
    return secretRow(handle, {need(data)}, maker(SYMBOL(HVTK_PEM_Encode), kind, data, text), absent);
}

int PEMDecode(void* handle, BINSTR* text, BINSTR* data)
{
    return secretRow(handle, {need(data)}, maker(SYMBOL(HVTK_PEM_Decode), text, data), absent);
}
