// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Any bytes as an OCSP response about the certificate that comes with it.

#include "toolkit/engine/status/ocsp.h"
#include "fuzz/toolkit/input.h"

FUZZ_TARGET(toolkit_ocsp, input)
{
    constexpr std::time_t now = 1'800'000'000; // 2027: the same in every run
    const toolkit::Bytes bytes = fuzz::der(input);
    fuzz::attempt([&] {
        const toolkit::OcspResponse response(bytes);
        for (const toolkit::Certificate& own : response.certificates(fuzz::library())) {
            fuzz::attempt([&] { response.requireSigner(fuzz::library(), own, own, now); });
            fuzz::attempt([&] { response.answer(fuzz::library(), own, own, now); });
            fuzz::attempt(
                [&] { response.requireNonce(toolkit::makeOcspRequest(fuzz::library(), own, own, nullptr).get()); });
        }
    });
}
