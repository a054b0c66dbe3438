// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// sign: a CMS message, or the bare signature.
#include "commands.h"
#include "files.h"
#include "keys.h"
#include "selection.h"
#include "signing.h"

#include <nlohmann/json.hpp>

namespace host {

namespace {

constexpr Words oneForm{
    "--attached, --detached and --raw exclude each other", "--attached, --detached, --raw는 함께 쓸 수 없습니다"};
constexpr Words rawHasNoStamp{
    "a bare signature has no room for a time stamp", "서명 값만으로는 시점확인을 담을 수 없습니다"};

SignatureForm formOf(const Arguments& arguments)
{
    if (arguments.has("--attached") + arguments.has("--detached") + arguments.has("--raw") > 1)
        throw Failure(wrongUse, "wrong_use", oneForm);
    if (arguments.has("--raw") && arguments.has("--timestamp"))
        throw Failure(wrongUse, "wrong_use", rawHasNoStamp);
    if (arguments.has("--raw"))
        return SignatureForm::Raw;
    return arguments.has("--detached") ? SignatureForm::Detached : SignatureForm::Attached;
}

const char* nameOf(SignatureForm form)
{
    return form == SignatureForm::Raw ? "raw" : form == SignatureForm::Detached ? "detached" : "attached";
}

} // namespace

int runSign(Session& session)
{
    const SignatureForm form = formOf(session.arguments);
    const std::string file = session.arguments.text("FILE");
    mustExist(file);
    const Certificate certificate = chosen(session, session.arguments.text("CERT"));
    WrittenFile target(session, outputPath(session, file + endingOf(form)));
    const Crypto crypto(session);
    Bytes key(crypto.handle());
    Bytes signer(crypto.handle());
    unlock(session, crypto, certificate, Pair::Sign, key);
    setCertificate(crypto, certificate, Pair::Sign, signer);
    signFile(session, crypto, signer, key, form, file, target, session.arguments.text("--timestamp"));
    session.output.document(
        {{"file", target.path()}, {"form", nameOf(form)}, {"certificate", jsonOf(certificate)}});
    session.output.line(target.path());
    return done;
}

} // namespace host
