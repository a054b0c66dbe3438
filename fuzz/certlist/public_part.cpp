// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Any bytes as a certificate and as a key: what they have in common lies within them.

#include "certlist/public_part.h"
#include "fuzz/target.h"

namespace {

void requireWithin(std::string_view part, std::string_view whole)
{
    require(
        part.empty() || (part.data() >= whole.data() && part.data() + part.size() <= whole.data() + whole.size()),
        "a part lies within the whole");
}

} // namespace

FUZZ_TARGET(certlist_public_part, input)
{
    const std::string bytes = fuzz::text(input);
    requireWithin(sigil::publicPartOfCertificate(bytes), bytes);
    requireWithin(sigil::publicPartOfKey(bytes), bytes);
}
