// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Any bytes as what a web server answers: headers, redirections, pieces, and the body.

#include "toolkit/engine/net/web.h"
#include "fuzz/network.h"
#include "fuzz/toolkit/input.h"
#include "toolkit/engine/net/fetch.h"

FUZZ_TARGET(toolkit_web, input)
{
    using namespace toolkit;
    const fuzz::Server server(input);
    constexpr std::size_t most = 16;
    fuzz::attempt([&] { fetch("http://127.0.0.1/x", SIGIL_TK_FETCH_ANY); });
    fuzz::attempt([&] {
        const Bytes answer = post("http://127.0.0.1/x", "application/ocsp-request", view("question"), most);
        require(answer.size() <= most, "no answer is longer than it may be");
    });
}
