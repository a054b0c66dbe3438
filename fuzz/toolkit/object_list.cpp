// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Any bytes as a list of objects: what is read can be written and read again.

#include "toolkit/engine/x509/object_list.h"
#include "fuzz/toolkit/input.h"

#include <algorithm>

FUZZ_TARGET(toolkit_object_list, input)
{
    const toolkit::Bytes bytes = fuzz::der(input);
    fuzz::attempt([&] {
        const toolkit::ObjectList list(bytes);
        const toolkit::ObjectList again(list.encode());
        if (!std::equal(list.begin(), list.end(), again.begin(), again.end()))
            std::abort();
    });
    fuzz::attempt([&] { toolkit::certificatesOf(fuzz::library(), bytes); });
}
