// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// status: is the certificate revoked? Asks the responder, else looks into the revocation list.
#include "commands.h"
#include "selection.h"
#include "steps.h"
#include "trust.h"

#include <sigildesk/open_toolkit.h>

#include <nlohmann/json.hpp>

#include <array>

namespace host {

namespace {

constexpr Words working{"Asking for the state of the certificate ...", "인증서 상태를 조회합니다 ..."};
constexpr Words issuerWords{"issuer", "발급자"};
constexpr Words ocspWords{"OCSP", "OCSP"};
constexpr Words listWords{"revocation list", "폐지 목록"};
constexpr Words goodWords{"good", "유효"};
constexpr Words revokedWords{"revoked", "폐지됨"};
constexpr Words revokedAt{"revoked at {}", "{}에 폐지됨"};
constexpr Words noIssuer{
    "not found: neither --trust, nor the settings file, nor an address in the certificate has it",
    "찾지 못했습니다: --trust, 설정 파일, 인증서 안의 주소 어디에도 없습니다"};
constexpr Words noResponder{"the certificate names no responder", "인증서에 OCSP 주소가 없습니다"};
constexpr Words noAnswer{"the state of {} cannot be told", "{}의 상태를 알 수 없습니다"};

enum class State { Good, Revoked, Unknown };

const char* nameOf(State state)
{
    return state == State::Good ? "good" : state == State::Revoked ? "revoked" : "unknown";
}

class Inquiry {
public:
    Inquiry(const Session& session, const Crypto& crypto, const Certificate& certificate)
        : m_session(session)
        , m_crypto(crypto)
        , m_certificate(certificate)
        , m_trust(session, crypto, certificate.der, Network::Issuers)
        , m_subject(crypto.handle())
        , m_issuer(crypto.handle())
    {
        set(m_crypto, m_subject, m_certificate.der);
        set(m_crypto, m_issuer, m_trust.issuer());
    }

    State ask(Steps& steps)
    {
        if (m_issuer.empty()) {
            steps.add("issuer", issuerWords, false, m_session.say(noIssuer));
            return State::Unknown;
        }
        steps.add("issuer", issuerWords, true, m_certificate.issuer);
        m_crypto.check(HV_SetCaPubs(m_crypto.handle(), m_issuer.get()));
        const State state = askResponder(steps);
        return state == State::Unknown ? lookIntoList(steps) : state;
    }

private:
    State askResponder(Steps& steps)
    {
        std::string url = m_session.arguments.text("--url");
        if (url.empty()) {
            const std::vector<std::string> addresses = addressesIn(m_crypto, m_certificate.der, "OCSP");
            if (addresses.empty()) {
                steps.add("ocsp", ocspWords, false, m_session.say(noResponder));
                return State::Unknown;
            }
            url = addresses.front();
        }
        Bytes nobody(m_crypto.handle()); // requests are not signed, but something must stand there
        Bytes request(m_crypto.handle());
        Bytes response(m_crypto.handle());
        set(m_crypto, nobody, "-");
        int code =
            OCSPMakeOCSPReq(m_crypto.handle(), m_subject.get(), false, m_issuer.get(), nobody.get(), request.get());
        if (code == SIGIL_SUCCESS)
            code = OCSPSendAndRecv(m_crypto.handle(), url.data(), m_subject.get(), request.get(), response.get());
        return code == SIGIL_SUCCESS ? judgeResponse(steps, response) : unanswered(steps, "ocsp", ocspWords, code);
    }

    State judgeResponse(Steps& steps, Bytes& response)
    {
        Bytes responder(m_crypto.handle());
        int answers = 0;
        int code = OCSPVerifyResMsg(m_crypto.handle(), m_subject.get(), response.get(), &answers, responder.get());
        if (code == SIGIL_TK_VERIFY_REVOKED)
            return revoked(steps, "ocsp", ocspWords, {});
        if (code != SIGIL_SUCCESS)
            return unanswered(steps, "ocsp", ocspWords, code);
        if (m_session.toolkit == SIGIL_TOOLKIT_MAKER)
            return good(steps, "ocsp", ocspWords);
        int status = SIGIL_TK_STATUS_UNKNOWN;
        int reason = -1;
        std::array<char, 25> time{};
        code = OCSPGetCertStatus(m_crypto.handle(), 0, &status, time.data(), &reason);
        if (code != SIGIL_SUCCESS || status == SIGIL_TK_STATUS_UNKNOWN)
            return unanswered(steps, "ocsp", ocspWords, code == SIGIL_SUCCESS ? SIGIL_TK_OCSP_UNKNOWN : code);
        return status == SIGIL_TK_STATUS_GOOD ? good(steps, "ocsp", ocspWords)
                                              : revoked(steps, "ocsp", ocspWords, time.data());
    }

    State lookIntoList(Steps& steps)
    {
        int status = SIGIL_TK_STATUS_UNKNOWN;
        char anyAddress[] = "";
        const int code = CertCheckStatByCRL(m_crypto.handle(), m_subject.get(), anyAddress, &status);
        if (code != SIGIL_SUCCESS)
            return unanswered(steps, "crl", listWords, code);
        return status == SIGIL_TK_STATUS_REVOKED ? revoked(steps, "crl", listWords, {})
                                                 : good(steps, "crl", listWords);
    }

    State good(Steps& steps, const char* name, const Words& words) const
    {
        steps.add(name, words, true, m_session.say(goodWords));
        return State::Good;
    }
    State revoked(Steps& steps, const char* name, const Words& words, const std::string& time) const
    {
        steps.add(name, words, false,
            time.empty() ? m_session.say(revokedWords) : m_session.say(revokedAt, {isoTime(timeOf(time))}));
        return State::Revoked;
    }
    State unanswered(Steps& steps, const char* name, const Words& words, int code) const
    {
        steps.addCode(m_session, name, words, code, m_crypto.errorText());
        return State::Unknown;
    }

    const Session& m_session;
    const Crypto& m_crypto;
    const Certificate& m_certificate;
    Trust m_trust;
    Bytes m_subject;
    Bytes m_issuer;
};

} // namespace

// A responder that cannot be asked is no fault when the list tells the state: the answer counts, not every step.
int runStatus(Session& session)
{
    const Certificate certificate = chosen(session, session.arguments.text("CERT"));
    const Crypto crypto(session);
    Steps steps;
    State state = State::Unknown;
    {
        const Progress progress(session.output, working);
        state = Inquiry(session, crypto, certificate).ask(steps);
    }
    if (state == State::Unknown && !session.output.json())
        steps.print(session);
    if (state == State::Unknown)
        throw Failure(failed, "no_status", noAnswer, {certificate.name}).with("steps", steps.json());
    session.output.document({{"valid", state == State::Good}, {"status", nameOf(state)}, {"steps", steps.json()},
        {"certificate", jsonOf(certificate)}});
    steps.print(session);
    return state == State::Good ? done : no;
}

} // namespace host
