// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "foundation/secret.h"

#include <cstring>

namespace sigil {

void wipe(void* data, std::size_t size, unsigned char value)
{
    if (!data)
        return;
    std::memset(data, value, size);
    // The compiler must assume that the bytes are read here, so it cannot drop the writes above.
    asm volatile("" : : "r"(data) : "memory");
}

} // namespace sigil
