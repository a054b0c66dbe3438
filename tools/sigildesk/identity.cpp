// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// identity: does the identity number belong to the certificate?
#include "commands.h"
#include "keys.h"
#include "selection.h"

#include <sigildesk/open_toolkit.h>

#include <nlohmann/json.hpp>

namespace host {

namespace {

constexpr Words belongs{"The identity number belongs to {}.", "식별번호가 {}의 것입니다."};
constexpr Words doesNot{"The identity number does not belong to {}.", "식별번호가 {}의 것이 아닙니다."};

} // namespace

int runIdentity(Session& session)
{
    const Certificate certificate = chosen(session, session.arguments.text("CERT"));
    const Crypto crypto(session);
    Bytes key(crypto.handle());
    Bytes random(crypto.handle());
    Bytes signer(crypto.handle());
    unlock(session, crypto, certificate, Pair::Sign, key);
    crypto.check(VIDGetRandomFromPriKey(crypto.handle(), key.get(), random.get()));
    setCertificate(crypto, certificate, Pair::Sign, signer);
    Secret number = askIdentity(session, certificate.name);
    const int code = VIDVerify(crypto.handle(), signer.get(), random.get(), number.chars());
    const bool matches = code == SIGIL_SUCCESS;
    if (!matches && code != SIGIL_TK_VID_MISMATCH)
        crypto.check(code);
    session.output.document({{"matches", matches}, {"certificate", jsonOf(certificate)}});
    session.output.line(session.say(matches ? belongs : doesNot, {certificate.name}));
    return matches ? done : no;
}

} // namespace host
