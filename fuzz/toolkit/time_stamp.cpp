// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Any bytes as a time-stamp token, and as the response of an authority.

#include "toolkit/engine/time/time_stamp.h"
#include "fuzz/toolkit/input.h"

namespace {

/** As a context that made a request like the one of the seeds. */
void verifyResponse(const toolkit::Bytes& bytes)
{
    toolkit::TimeStampExchange exchange;
    exchange.makeRequest(fuzz::library(), {SIGIL_TK_HASH_SHA256, toolkit::Bytes(32, 0x11), {}, false});
    exchange.verify(fuzz::library(), {}, bytes);
}

} // namespace

FUZZ_TARGET(toolkit_time_stamp, input)
{
    const toolkit::Bytes bytes = fuzz::der(input);
    fuzz::attempt([&] { verifyResponse(bytes); });
    fuzz::attempt([&] {
        const toolkit::TimeStampToken token(fuzz::library(), bytes);
        fuzz::attempt([&] { token.verify(fuzz::library(), {}); });
        fuzz::attempt([&] { token.requireAbout(fuzz::library(), bytes); });
        fuzz::attempt([&] { token.authority(fuzz::library()); });
        fuzz::attempt([&] { token.texts(); });
    });
}
