// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Any bytes as PEM and as base64: what decodes encodes to the same again.

#include "fuzz/toolkit/input.h"

FUZZ_TARGET(parsers_pem, bytes)
{
    fuzz::attempt([&] { toolkit::pemDecode(bytes); });
    fuzz::attempt([&] {
        const toolkit::Secret decoded = toolkit::fromBase64(bytes);
        if (toolkit::fromBase64(toolkit::view(toolkit::base64(decoded))) != decoded)
            std::abort();
    });
    const std::string text = toolkit::pemEncode(SIGIL_TK_PEM_CERTIFICATE, bytes);
    if (toolkit::pemDecode(toolkit::view(text)) != toolkit::toSecret(bytes))
        std::abort();
}
