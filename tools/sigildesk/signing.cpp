// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "signing.h"

#include "files.h"

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

/** Puts a time stamp of its signature into a message. Only the government library has the functions for that; it is no
 *  more than the means here. */
std::string stamped(
    const Session& session, const std::string& message, const std::string& content, const std::string& url)
{
    const Crypto gpki(session, SIGIL_TOOLKIT_GPKI);
    Bytes before(gpki.handle());
    Bytes text(gpki.handle());
    Bytes signature(gpki.handle());
    Bytes token(gpki.handle());
    Bytes after(gpki.handle());
    set(gpki, before, message);
    set(gpki, text, content);
    gpki.check(CMSProcessSignedData(gpki.handle(), SIGIL_TK_CHECK_SIGNATURES, before.get(), text.get(), nullptr));
    gpki.check(CMSGetTBTData(gpki.handle(), 0, signature.get()));
    set(gpki, token, stampToken(gpki, url, view(signature)));
    gpki.check(CMSGetTimeStampToken2(gpki.handle(), before.get(), 0, token.get(), after.get()));
    return std::string(view(after));
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

std::string stampToken(const Crypto& crypto, const std::string& url, std::string_view data)
{
    Bytes text(crypto.handle());
    Bytes nobody(crypto.handle()); // requests are not signed, but something must stand there
    Bytes request(crypto.handle());
    Bytes response(crypto.handle());
    Bytes token(crypto.handle());
    Bytes authority(crypto.handle());
    set(crypto, text, data);
    set(crypto, nobody, "-");
    std::string address = url;
    char anyPolicy[] = "";
    crypto.check(TSPMakeReqMsg(crypto.handle(), text.get(), SIGIL_TK_HASH_SHA256, anyPolicy, true, nobody.get(),
        nobody.get(), request.get()));
    crypto.check(TSPSendAndRecv1(crypto.handle(), address.data(), 0, request.get(), response.get()));
    crypto.check(TSPSendAndRecv2(crypto.handle(), response.get(), token.get(), authority.get()));
    return std::string(view(token));
}

} // namespace host
