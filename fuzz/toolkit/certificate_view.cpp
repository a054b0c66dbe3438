// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Any bytes as a certificate, read twice: what the toolkit reads without OpenSSL must be what OpenSSL reads.

#include "fuzz/toolkit/input.h"
#include "fuzz/toolkit/two_readings.h"

#include <cstdio>

FUZZ_TARGET(toolkit_certificate_view, input)
{
    const toolkit::Bytes bytes = fuzz::der(input);
    if (bytes.empty() || bytes.front() == '-') // PEM in PEM is not OpenSSL's to read
        return;
    if (const auto difference = fuzz::TwoReadings(fuzz::library(), bytes).difference()) {
        std::fprintf(stderr, "the readings differ: %s\n", difference->c_str());
        std::abort();
    }
}
