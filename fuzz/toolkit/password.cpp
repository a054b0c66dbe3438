// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Any bytes as a password, and as the parameters that a key is protected with.

#include "toolkit/engine/keys/password.h"
#include "fuzz/toolkit/input.h"
#include "toolkit/engine/keys/pbe.h"
#include "toolkit/engine/x509/text.h"

FUZZ_TARGET(toolkit_password, input)
{
    using namespace toolkit;
    const std::string text = fuzz::text(input);
    const std::vector<Secret> readings = readingsOf(text);
    require(!readings.empty(), "every password can be read");
    for (const Secret& reading : readings)
        require(isUtf8({chars(reading), reading.size()}), "a reading is UTF-8");
    for (const Secret& form : bmpForms(text))
        require(form.size() % 2 == 0, "a BMPString has two bytes a character");
    const Bytes bytes = fuzz::der(input);
    fuzz::attempt([&] {
        const PbeAlgorithm algorithm = parsePbeAlgorithm(bytes);
        fuzz::attempt([&] { pbeCode(fuzz::library(), algorithm); });
        const unsigned long rounds = iterationsOf(algorithm);
        require(rounds >= 1 && rounds <= 10'000'000, "rounds are bounded");
    });
}
