// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Any bytes as a certificate, read twice: what the toolkit reads without OpenSSL must be what OpenSSL reads.

#include "fuzz/toolkit/input.h"
#include "fuzz/toolkit/two_readings.h"

#include <cstdio>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const toolkit::Bytes bytes = fuzz::input(data, size);
    if (bytes.empty() || bytes.front() == '-') // PEM in PEM is not OpenSSL's to read
        return 0;
    if (const auto difference = fuzz::TwoReadings(fuzz::library(), bytes).difference()) {
        std::fprintf(stderr, "the readings differ: %s\n", difference->c_str());
        std::abort();
    }
    return 0;
}
