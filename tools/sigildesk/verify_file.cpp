// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// verify-file: a CMS message, with its content in it or beside it, or a bare signature.
#include "commands.h"
#include "files.h"
#include "selection.h"
#include "stamps.h"
#include "steps.h"
#include "trust.h"

#include <sigildesk/open_toolkit.h>

#include <nlohmann/json.hpp>

#include <array>
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

/** What is verified: the message and, when it stands beside it, the content. */
struct Input {
    std::string messageFile, contentFile; ///< the second is empty when the content is in the message
    std::string message, content;
};

Input inputOf(const Session& session)
{
    const std::string file = session.arguments.text("FILE");
    if (session.arguments.has("--signature") && session.arguments.has("--content"))
        throw Failure(wrongUse, "wrong_use", twoContents);
    const bool isContent = session.arguments.has("--signature");
    Input input{isContent ? session.arguments.text("--signature") : file,
        isContent ? file : session.arguments.text("--content"), {}, {}};
    input.message = readFile(input.messageFile);
    if (!input.contentFile.empty())
        input.content = readFile(input.contentFile);
    return input;
}

bool answersNo(int code) { return exitOf(code) == no; }

/** One signer of the message that was processed last. */
struct Signer {
    Certificate certificate;
    std::string time;  ///< ISO 8601; empty when the message says none
    std::string stamp; ///< of its time stamp; empty for none
};

/** A message verified with one handle. */
class Message {
public:
    Message(const Session& session, int toolkit, const Input& input)
        : m_session(session)
        , m_input(input)
        , m_crypto(session, toolkit)
        , m_message(m_crypto.handle())
        , m_content(m_crypto.handle())
    {
        set(m_crypto, m_message, input.message);
        set(m_crypto, m_content, input.content);
        m_code = CMSProcessSignedData(
            m_crypto.handle(), SIGIL_TK_CHECK_SIGNATURES, m_message.get(), m_content.get(), &m_signers);
        if (m_code == SIGIL_TK_CMS_CONTENT && !input.contentFile.empty() && input.content.empty())
            verifyWithEmptyFile();
    }

    /** Result of the verification; throws Failure for what is no signed message at all. */
    int code() const
    {
        if (m_code != SIGIL_SUCCESS && !answersNo(m_code))
            m_crypto.check(m_code);
        return m_code;
    }
    int signers() const { return m_signers; }
    /** The content that stands beside the message is not the one in it: what was verified says nothing of it. */
    bool holdsOtherContent() const { return !m_input.contentFile.empty() && content() != m_input.content; }
    std::string_view content() const { return view(m_content); }
    const Crypto& crypto() const { return m_crypto; }

    Signer signer(int index) const
    {
        std::array<char, 64> time{};
        Bytes certificate(m_crypto.handle());
        m_crypto.check(CMSGetSignerCert(m_crypto.handle(), index, certificate.get(), time.data()));
        return {readCertificate(m_session, m_crypto, std::string(view(certificate))),
            time[0] ? isoTime(timeOf(time.data())) : std::string(), {}};
    }

    /** Judges the time stamp of a signer; only the government library hands it out. False when there is none. */
    bool addStamp(int index, Steps& steps, Signer& signer) const
    {
        Bytes token(m_crypto.handle());
        Bytes stamped(m_crypto.handle());
        Bytes authority(m_crypto.handle());
        if (CMSGetTimeStampToken1(m_crypto.handle(), index, token.get()) != SIGIL_SUCCESS)
            return false;
        int code = CMSGetTBTData(m_crypto.handle(), index, stamped.get());
        if (code == SIGIL_SUCCESS)
            code = TSPVerifyToken2(m_crypto.handle(), nullptr, stamped.get(), token.get(), authority.get());
        const std::string said = code == SIGIL_SUCCESS ? std::string() : m_crypto.errorText();
        signer.stamp = stampOf(m_crypto, token).time;
        steps.addCode(m_session, "timestamp", stampWords, code, code == SIGIL_SUCCESS ? signer.stamp : said);
        return true;
    }

private:
    /** An empty record means no content at all; a file can be empty. */
    void verifyWithEmptyFile()
    {
        std::string content = m_input.contentFile;
        std::string message = m_input.messageFile;
        m_code = CMSProcessSignedDataFile(m_crypto.handle(), content.data(), message.data(), nullptr, nullptr);
        for (m_signers = 0; m_code == SIGIL_SUCCESS; ++m_signers) {
            Bytes certificate(m_crypto.handle());
            if (CMSGetSignerCert(m_crypto.handle(), m_signers, certificate.get(), nullptr) != SIGIL_SUCCESS)
                return;
        }
    }

    const Session& m_session;
    const Input& m_input;
    Crypto m_crypto;
    Bytes m_message;
    Bytes m_content;
    int m_signers = 0;
    int m_code = 0;
};

void addPath(const Session& session, const Crypto& crypto, const Signer& signer, Steps& steps)
{
    Trust trust(session, crypto, signer.certificate.der, Network::None);
    const int code = trust.judge(SIGIL_TK_USAGE_ANY, SIGIL_TK_REVOCATION_NONE, std::time(nullptr));
    steps.addCode(
        session, "path", pathWords, code, code == SIGIL_SUCCESS ? signer.certificate.issuer : crypto.errorText());
}

std::string described(const Session& session, const Signer& signer)
{
    return signer.time.empty() ? session.say(signedByAtUnknownTime, {signer.certificate.name})
                               : session.say(signedBy, {signer.certificate.name, signer.time});
}

Json jsonOf(const Signer& signer)
{
    const auto orNull = [](const std::string& text) { return text.empty() ? Json() : Json(text); };
    return {{"certificate", jsonOf(signer.certificate)}, {"signing_time", orNull(signer.time)},
        {"timestamp", orNull(signer.stamp)}};
}

void addSignature(const Session& session, const Message& message, const Input& input, Steps& steps)
{
    if (message.code() == SIGIL_SUCCESS && message.holdsOtherContent())
        steps.add("signature", signatureWords, false, session.say(otherContent, {input.contentFile}));
    else
        steps.addCode(session, "signature", signatureWords, message.code(),
            message.code() == SIGIL_SUCCESS ? std::string() : message.crypto().errorText());
}

Json judgeSigners(const Session& session, const Message& message, const Input& input, Steps& steps)
{
    Json list = Json::array();
    const Message stamps(session, SIGIL_TOOLKIT_GPKI, input);
    for (int i = 0; i < message.signers(); ++i) {
        Signer signer = message.signer(i);
        steps.add("signer", signerWords, true, described(session, signer));
        if (session.arguments.has("--trust"))
            addPath(session, message.crypto(), signer, steps);
        stamps.addStamp(i, steps, signer);
        list.push_back(jsonOf(signer));
    }
    return list;
}

int tell(Session& session, const Steps& steps, const Json& signers, const std::string& target)
{
    session.output.document({{"valid", steps.valid()}, {"steps", steps.json()}, {"signers", signers},
        {"content", target.empty() ? Json() : Json(target)}});
    steps.print(session);
    return steps.valid() ? done : no;
}

int verifyMessage(Session& session)
{
    const Input input = inputOf(session);
    std::optional<WrittenFile> target;
    if (session.arguments.has("--out"))
        target.emplace(session, session.arguments.text("--out"));
    const Message message(session, session.toolkit, input);
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
    const Input input = inputOf(session);
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
    if (code != SIGIL_SUCCESS && !answersNo(code))
        crypto.check(code);
    Steps steps;
    steps.addCode(session, "signature", signatureWords, code, code == SIGIL_SUCCESS ? "" : crypto.errorText());
    const Signer signer{certificate, {}, {}};
    if (code == SIGIL_SUCCESS) {
        steps.add("signer", signerWords, true, certificate.name);
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
