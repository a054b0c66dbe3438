// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Any bytes as identity data: what is read can be written and read again; and as the number and the random value behind it.

#include "toolkit/engine/keys/identity.h"
#include "fuzz/toolkit/input.h"

FUZZ_TARGET(toolkit_identity, input)
{
    using namespace toolkit;
    const Bytes bytes = fuzz::der(input);
    if (const auto data = parseIdentifyData(bytes))
        fuzz::attempt([&] {
            const auto again = parseIdentifyData(encodeIdentifyData(*data));
            require(again && again->realName == data->realName, "a name that is written is read as the same name");
            require(again->vid.has_value() == data->vid.has_value(), "an identifier stays");
            require(!data->vid || again->vid->value == data->vid->value, "an identifier stays the same");
        });
    const std::string text = fuzz::text(input);
    fuzz::attempt([&] { computeVid(fuzz::library(), "2.16.840.1.101.3.4.2.1", text, bytes); });
    fuzz::attempt([&] { computeVid(fuzz::library(), text, "1", bytes); });
}
