// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "signing.h"

#include "files.h"
#include "jobs/stamping.h"

#include <sigildesk/open_toolkit.h>

namespace host {

namespace {

constexpr Words stamping{"Waiting for the time-stamping authority ...", "시점확인 기관의 응답을 기다립니다 ..."};
constexpr Words signingWords{"Signing ...", "서명합니다 ..."};

/** The signature alone. */
void writeRaw(const Crypto& crypto, Bytes& certificate, Bytes& key, const std::string& file, WrittenFile& target)
{
    Bytes text(crypto.handle());
    Bytes signature(crypto.handle());
    set(crypto, text, readContent(file));
    crypto.check(CRYPTSign(
        crypto.handle(), certificate.get(), key.get(), SIGIL_TK_HASH_SHA256, text.get(), signature.get()));
    target.write(view(signature));
}

void writeMessage(const Crypto& crypto, Bytes& certificate, Bytes& key, SignatureForm form, const std::string& file,
    const WrittenFile& target)
{
    const auto make = form == SignatureForm::Attached ? CMSMakeSignedDataFileWithContent : CMSMakeSignedDataFile;
    std::string content = file;
    std::string message = target.temporaryPath();
    char now[] = "";
    crypto.check(make(crypto.handle(), certificate.get(), key.get(), content.data(), now, message.data()));
}

} // namespace

const char* endingOf(SignatureForm form)
{
    switch (form) {
    case SignatureForm::Detached:
        return ".p7s";
    case SignatureForm::Raw:
        return ".sig";
    default:
        return ".p7m";
    }
}

void signFile(const Session& session, const Crypto& crypto, Bytes& certificate, Bytes& key, SignatureForm form,
    const std::string& file, WrittenFile& target, const std::string& stampUrl)
{
    const Progress progress(session.output, stampUrl.empty() ? signingWords : stamping);
    if (form == SignatureForm::Raw)
        writeRaw(crypto, certificate, key, file, target);
    else
        writeMessage(crypto, certificate, key, form, file, target);
    if (!stampUrl.empty()) {
        const std::string content = form == SignatureForm::Detached ? readFile(file) : std::string();
        target.write(stamped(session, readFile(target.temporaryPath()), content, stampUrl));
    }
    target.commit();
}

} // namespace host
