// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Any bytes as a PKCS#12 file.

#include "toolkit/engine/pkcs12/pkcs12.h"
#include "fuzz/toolkit/input.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const toolkit::Bytes bytes = fuzz::input(data, size);
    for (const int mode : {SIGIL_TK_PFX_STRICT, SIGIL_TK_PFX_WITHOUT_MAC})
        fuzz::attempt([&] { toolkit::readPkcs12(fuzz::library(), bytes, "password", mode); });
    return 0;
}
