// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Any text as an address, on a machine without a network: it is refused, or nobody answers.

#include "fuzz/toolkit/input.h"
#include "toolkit/engine/net/directory.h"
#include "toolkit/engine/net/fetch.h"

FUZZ_TARGET(toolkit_addresses, input)
{
    using namespace toolkit;
    const std::string text = fuzz::text(input);
    fuzz::attempt([&] { fetch(text, SIGIL_TK_FETCH_ANY); });
    fuzz::attempt([&] { fetch("ldap://127.0.0.1/" + text, SIGIL_TK_FETCH_CRL); });
    fuzz::attempt([&] { fetchAttribute(text, text); });
    fuzz::attempt([&] { post(text, "text/plain", {}, 1); });
    fuzz::attempt([&] { require(!webAddress(text, 0).empty(), "a server has an address"); });
    const std::string escaped = escapedFilterValue(text);
    require(escaped.find_first_of("*()") == escaped.npos, "no value changes the filter that it stands in");
}
