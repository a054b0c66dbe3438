// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Any bytes as what a directory answers: to the bind, to the search, and to questions by name.

#include "fuzz/network.h"
#include "fuzz/toolkit/input.h"
#include "toolkit/engine/net/fetch.h"
#include "toolkit/engine/net/web.h"

FUZZ_TARGET(toolkit_directory, input)
{
    using namespace toolkit;
    const Bytes said = fuzz::der(input);
    const fuzz::Server server(said);
    fuzz::attempt([&] {
        const Bytes value = fetch("ldap://127.0.0.1/cn=x", SIGIL_TK_FETCH_ANY);
        require(!value.empty() && value.size() <= maximumFetchSize, "a value is some bytes, and not too many");
    });
    fuzz::attempt([&] { fetchByCommonName("127.0.0.1", 0, "x", SIGIL_TK_FETCH_CRL, "c=kr"); });
}
