// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Any bytes as a PKCS#12 file.

#include "toolkit/engine/pkcs12/pkcs12.h"
#include "fuzz/toolkit/input.h"

FUZZ_TARGET(toolkit_pkcs12, input)
{
    const toolkit::Bytes bytes = fuzz::der(input);
    for (const int mode : {SIGIL_TK_PFX_STRICT, SIGIL_TK_PFX_WITHOUT_MAC})
        fuzz::attempt([&] { toolkit::readPkcs12(fuzz::library(), bytes, "password", mode); });
}
