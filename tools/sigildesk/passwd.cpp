// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// passwd: a new password for all keys of a certificate.
#include "commands.h"
#include "pairs.h"
#include "secrets.h"

#include <nlohmann/json.hpp>

namespace host {

namespace {

constexpr Words changed{"The password of {} is changed.", "{} 인증서의 비밀번호를 바꿨습니다."};

} // namespace

int runPasswd(Session& session)
{
    const Certificate certificate = chosenWithPairs(session);
    PairContents contents = contentsOf(certificate);
    const Crypto crypto(session);
    Secret old;
    crypto.check(withPassword(session, certificate.name, [&](Secret& password) {
        const int code = opensAll(crypto, contents, password);
        old = std::move(password);
        return code;
    }));
    Secret fresh = askNewPassword(session, certificate.name);
    changePassword(crypto, contents, old, fresh);
    changePairs(certificate.files, contents);
    session.output.document({{"changed", true}, {"certificate", jsonOf(certificate)}});
    session.output.line(session.say(changed, {certificate.name}));
    return done;
}

} // namespace host
