// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// verify-file: a CMS message, with its content in it or beside it, or a bare signature.
#include "commands.h"
#include "files.h"
#include "jobs/signed_message.h"
#include "selection.h"
#include "steps.h"
#include "trust.h"

#include <sigildesk/open_toolkit.h>

#include <nlohmann/json.hpp>

#include <optional>

namespace host {

namespace {

constexpr Words signatureWords{"signature", "서명"};
constexpr Words signerWords{"signer", "서명자"};
constexpr Words pathWords{"path", "인증 경로"};
constexpr Words stampWords{"time stamp", "시점확인"};
constexpr Words signedBy{"{}, signed {}", "{}, 서명 시각 {}"};
constexpr Words signedByAtUnknownTime{"{}, the message tells no time", "{}, 서명 시각 없음"};
constexpr Words certificateNeedsSignature{"--certificate is for a bare signature, which --signature names",
    "--certificate는 --signature가 가리키는 서명 값에 씁니다"};
constexpr Words twoContents{
    "--content and --signature exclude each other", "--content와 --signature는 함께 쓸 수 없습니다"};
constexpr Words otherContent{
    "the message holds another content than {}", "메시지에 담긴 내용이 {} 파일의 내용과 다릅니다"};

MessageInput inputOf(const Session& session)
{
    const std::string file = session.arguments.text("FILE");
    if (session.arguments.has("--signature") && session.arguments.has("--content"))
        throw Failure(wrongUse, "wrong_use", twoContents);
    const bool isContent = session.arguments.has("--signature");
    MessageInput input{isContent ? session.arguments.text("--signature") : file,
        isContent ? file : session.arguments.text("--content"), {}, {}, false};
    input.message = readFile(input.messageFile);
    input.beside = !input.contentFile.empty();
    if (input.beside)
        input.content = readFile(input.contentFile);
    return input;
}

/** One signer of a message. */
struct Signer {
    Certificate certificate;
    std::time_t time;  ///< 0 when the message says none
    std::time_t stamp; ///< of its time stamp; 0 for none
};

/** Judges the time stamp of a signer, if it has one. */
void addStamp(const Session& session, const SignedMessage& message, int index, Steps& steps, Signer& signer)
{
    const std::optional<JudgedStamp> judged = message.stamp(index);
    if (!judged)
        return;
    signer.stamp = judged->stamp.time;
    steps.addCode(session, "timestamp", stampWords, judged->code,
        judged->code == SIGIL_SUCCESS ? isoTime(signer.stamp) : judged->said);
}

void addPath(const Session& session, const Crypto& crypto, const Signer& signer, Steps& steps)
{
    Trust trust(session, crypto, signer.certificate.der, Network::None, trusted(session, crypto));
    const int code = trust.judge(SIGIL_TK_USAGE_ANY, SIGIL_TK_REVOCATION_NONE, std::time(nullptr));
    steps.addCode(
        session, "path", pathWords, code, code == SIGIL_SUCCESS ? signer.certificate.issuer : crypto.errorText());
}

std::string described(const Session& session, const Signer& signer)
{
    return signer.time == 0 ? session.say(signedByAtUnknownTime, {signer.certificate.name})
                            : session.say(signedBy, {signer.certificate.name, isoTime(signer.time)});
}

Json jsonOf(const Signer& signer)
{
    const auto orNull = [](std::time_t time) { return time == 0 ? Json() : Json(isoTime(time)); };
    return {{"certificate", jsonOf(signer.certificate)}, {"signing_time", orNull(signer.time)},
        {"timestamp", orNull(signer.stamp)}};
}

void addSignature(const Session& session, const SignedMessage& message, const MessageInput& input, Steps& steps)
{
    if (message.code() == SIGIL_SUCCESS && message.holdsOtherContent())
        steps.add(
            "signature", signatureWords, SIGIL_TK_CMS_CONTENT, session.say(otherContent, {input.contentFile}));
    else
        steps.addCode(session, "signature", signatureWords, message.code(),
            message.code() == SIGIL_SUCCESS ? std::string() : message.crypto().errorText());
}

Json judgeSigners(const Session& session, const SignedMessage& message, const MessageInput& input, Steps& steps)
{
    Json list = Json::array();
    const SignedMessage stamps(session, SIGIL_TOOLKIT_GPKI, input);
    for (int i = 0; i < message.signers(); ++i) {
        const Signature signature = message.signature(i);
        Signer signer{readCertificate(session, message.crypto(), signature.certificate), signature.time, 0};
        steps.add("signer", signerWords, SIGIL_SUCCESS, described(session, signer));
        if (session.arguments.has("--trust"))
            addPath(session, message.crypto(), signer, steps);
        addStamp(session, stamps, i, steps, signer);
        list.push_back(jsonOf(signer));
    }
    return list;
}

int tell(Session& session, const Steps& steps, const Json& signers, const std::string& target)
{
    session.output.document({{"valid", steps.valid()}, {"steps", jsonOf(steps)}, {"signers", signers},
        {"content", target.empty() ? Json() : Json(target)}});
    print(session, steps);
    return steps.valid() ? done : no;
}

int verifyMessage(Session& session)
{
    const MessageInput input = inputOf(session);
    std::optional<WrittenFile> target;
    if (session.arguments.has("--out"))
        target.emplace(session, session.arguments.text("--out"));
    const SignedMessage message(session, session.toolkit, input);
    Steps steps;
    Json signers = Json::array();
    addSignature(session, message, input, steps);
    if (steps.valid())
        signers = judgeSigners(session, message, input, steps);
    if (!target || !steps.valid())
        return tell(session, steps, signers, {});
    target->write(message.content());
    target->commit();
    return tell(session, steps, signers, target->path());
}

int verifyBare(Session& session)
{
    if (!session.arguments.has("--signature"))
        throw Failure(wrongUse, "wrong_use", certificateNeedsSignature);
    const MessageInput input = inputOf(session);
    const Certificate certificate = chosen(session, session.arguments.text("--certificate"));
    const Crypto crypto(session);
    Bytes signerCertificate(crypto.handle());
    Bytes content(crypto.handle());
    Bytes signature(crypto.handle());
    set(crypto, signerCertificate, certificate.der);
    set(crypto, content, input.content);
    set(crypto, signature, input.message);
    const int code =
        CRYPTVerify(crypto.handle(), signerCertificate.get(), SIGIL_TK_HASH_SHA256, content.get(), signature.get());
    if (code != SIGIL_SUCCESS && exitOf(code) != no)
        crypto.check(code);
    Steps steps;
    steps.addCode(session, "signature", signatureWords, code, code == SIGIL_SUCCESS ? "" : crypto.errorText());
    const Signer signer{certificate, 0, 0};
    if (code == SIGIL_SUCCESS) {
        steps.add("signer", signerWords, SIGIL_SUCCESS, certificate.name);
        if (session.arguments.has("--trust"))
            addPath(session, crypto, signer, steps);
    }
    return tell(session, steps, Json::array({jsonOf(signer)}), {});
}

} // namespace

int runVerifyFile(Session& session)
{
    return session.arguments.has("--certificate") ? verifyBare(session) : verifyMessage(session);
}

} // namespace host
