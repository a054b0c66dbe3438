// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Any bytes as a list of objects: what is read can be written and read again.

#include "toolkit/engine/x509/object_list.h"
#include "fuzz/toolkit/input.h"

#include <algorithm>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const toolkit::Bytes bytes = fuzz::input(data, size);
    fuzz::attempt([&] {
        const toolkit::ObjectList list(bytes);
        const toolkit::ObjectList again(list.encode());
        if (!std::equal(list.begin(), list.end(), again.begin(), again.end()))
            std::abort();
    });
    fuzz::attempt([&] { toolkit::certificatesOf(fuzz::library(), bytes); });
    return 0;
}
