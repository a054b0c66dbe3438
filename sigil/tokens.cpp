// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Tokens and what is on them.
#include "sigil/call.h"

#include <algorithm>

using host::need;

namespace {

const host::Token& tokenOf(const SigilSession& session, int index)
{
    need(index >= 0 && static_cast<std::size_t>(index) < session.tokens.size(), "the token");
    return session.tokens[static_cast<std::size_t>(index)];
}

SigilToken recordOf(const host::Token& token)
{
    SigilToken record{};
    record.slot = token.slot;
    record.initialised = token.initialised;
    record.certificates = static_cast<int>(token.certificates.size());
    record.label = token.label.c_str();
    record.maker = token.maker.c_str();
    record.model = token.model.c_str();
    record.serial = token.serial.c_str();
    return record;
}

} // namespace

int sigil_tokens(SigilSession* session, int* count)
{
    return host::run(session, [&](SigilSession& s) {
        std::vector<host::Token> found = host::tokens(s.setting, *s.crypto);
        s.tokens.swap(found);
        if (count)
            *count = static_cast<int>(s.tokens.size());
    });
}

int sigil_token(SigilSession* session, int index, SigilToken* token)
{
    return host::run(session, [&](SigilSession& s) { host::fill(token, recordOf(tokenOf(s, index))); });
}

int sigil_token_certificate(SigilSession* session, int token, int index, SigilBytes* certificate)
{
    return host::run(session, [&](SigilSession& s) {
        need(certificate != nullptr, "the certificate");
        const std::vector<host::Certificate>& all = tokenOf(s, token).certificates;
        need(index >= 0 && static_cast<std::size_t>(index) < all.size(), "the number of the certificate");
        host::give(all[static_cast<std::size_t>(index)].der, certificate);
    });
}
