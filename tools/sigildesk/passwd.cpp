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

/** The key under the new password: the key itself, and the random value of the identity check in it, stay. */
int change(const Crypto& crypto, std::optional<std::string>& content, Secret& from, Secret& to)
{
    if (!content)
        return SIGIL_SUCCESS;
    Bytes old(crypto.handle());
    Bytes fresh(crypto.handle());
    set(crypto, old, *content);
    const int code = PriKeyChangePasswd(crypto.handle(), from.chars(), to.chars(), old.get(), fresh.get());
    if (code == SIGIL_SUCCESS)
        content = view(fresh);
    return code;
}

/** @return a result of the library */
int opens(const Crypto& crypto, const std::optional<std::string>& content, Secret& password)
{
    if (!content)
        return SIGIL_SUCCESS;
    Bytes stored(crypto.handle());
    Bytes key(crypto.handle());
    set(crypto, stored, *content);
    return PriKeyDecrypt(crypto.handle(), password.chars(), stored.get(), key.get());
}

} // namespace

int runPasswd(Session& session)
{
    const Certificate certificate = chosenWithPairs(session);
    PairContents contents = contentsOf(certificate);
    const Crypto crypto(session);
    Secret old;
    crypto.check(withPassword(session, certificate.name, [&](Secret& password) {
        const int code = opens(crypto, contents.key, password);
        const int both = code == SIGIL_SUCCESS ? opens(crypto, contents.kmKey, password) : code;
        old = std::move(password);
        return both;
    }));
    Secret fresh = askNewPassword(session, certificate.name);
    crypto.check(change(crypto, contents.key, old, fresh));
    crypto.check(change(crypto, contents.kmKey, old, fresh));
    changePairs(certificate.files, contents);
    session.output.document({{"changed", true}, {"certificate", jsonOf(certificate)}});
    session.output.line(session.say(changed, {certificate.name}));
    return done;
}

} // namespace host
