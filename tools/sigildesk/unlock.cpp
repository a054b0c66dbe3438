// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// unlock: tests the password; writes the key so that every other program can use it.
#include "commands.h"
#include "files.h"
#include "keys.h"
#include "selection.h"

#include <sigildesk/open_toolkit.h>

#include <nlohmann/json.hpp>

#include <optional>

namespace host {

namespace {

constexpr Words plainWithoutFile{
    "--plain says how --out is written, and --out is missing", "--plain은 --out과 함께 씁니다"};
constexpr Words opens{"The password opens the key of {}.", "비밀번호로 {}의 키가 열립니다."};

/** The key as a PEM block, under the new password unless it is wanted plain. */
sigil::SecretBytes keyText(const Session& session, const Crypto& crypto, const Certificate& certificate, Bytes& key)
{
    if (session.arguments.has("--plain"))
        return pem(crypto, "PRIVATE KEY", key);
    Secret password = askNewPassword(session, certificate.name);
    Bytes encrypted(crypto.handle());
    crypto.check(
        PriKeyEncrypt(crypto.handle(), SIGIL_TK_KEY_PBES2_AES256, password.chars(), key.get(), encrypted.get()));
    return pem(crypto, "ENCRYPTED PRIVATE KEY", encrypted);
}

} // namespace

int runUnlock(Session& session)
{
    const bool writes = session.arguments.has("--out");
    if (session.arguments.has("--plain") && !writes)
        throw Failure(wrongUse, "wrong_use", plainWithoutFile);
    const Certificate certificate = chosen(session, session.arguments.text("CERT"));
    const Pair pair = session.arguments.has("--km") ? Pair::KeyManagement : Pair::Sign;
    mustHave(certificate, pair);
    std::optional<WrittenFile> target;
    if (writes)
        target.emplace(session, session.arguments.text("--out"), Content::PrivateKey);
    const Crypto crypto(session);
    Bytes key(crypto.handle());
    unlock(session, crypto, certificate, pair, key);
    if (target) {
        const sigil::SecretBytes text = keyText(session, crypto, certificate, key);
        target->write({text.data(), text.size()});
        target->commit();
    }
    session.output.document({{"unlocked", true}, {"file", target ? Json(target->path()) : Json()},
        {"certificate", jsonOf(certificate)}});
    session.output.line(target ? target->path() : session.say(opens, {certificate.name}));
    return done;
}

} // namespace host
