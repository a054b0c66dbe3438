// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Any bytes in the place of a certificate or a key: their kind, and where they are damaged.

#include "doctor/certificate_damage.h"
#include "fuzz/target.h"

FUZZ_TARGET(doctor_damage, input)
{
    const std::string bytes = fuzz::text(input);
    require((sigil::contentOf(bytes) == sigil::Content::Empty) == bytes.empty(), "only nothing is empty");
    const auto damage = sigil::damagedPlace(bytes);
    if (!damage)
        return;
    require(damage->offset <= bytes.size(), "a damaged place lies within the bytes");
    require(damage->left <= bytes.size() - damage->offset, "what is left lies within the bytes");
}
