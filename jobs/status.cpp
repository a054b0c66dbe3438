// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "jobs/status.h"

#include "jobs/trust.h"

#include <sigildesk/open_toolkit.h>

#include <array>

namespace host {

namespace {

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

class Inquiry {
public:
    Inquiry(const Setting& setting, const Crypto& crypto, const Certificate& certificate,
        const StatusQuestion& question)
        : m_setting(setting)
        , m_crypto(crypto)
        , m_certificate(certificate)
        , m_responder(question.responder)
        , m_trust(setting, crypto, certificate.der, Network::Issuers, question.trusted)
        , m_subject(crypto.handle())
        , m_issuer(crypto.handle())
    {
        set(m_crypto, m_subject, m_certificate.der);
        set(m_crypto, m_issuer, m_trust.issuer());
    }

    Status ask(Steps& steps)
    {
        if (m_issuer.empty()) {
            steps.add("issuer", issuerWords, SIGIL_TK_VERIFY_NO_ISSUER, m_setting.say(noIssuer));
            return {};
        }
        steps.add("issuer", issuerWords, SIGIL_SUCCESS, m_certificate.issuer);
        m_crypto.check(HV_SetCaPubs(m_crypto.handle(), m_issuer.get()));
        const Status status = askResponder(steps);
        return status.state == State::Unknown ? lookIntoList(steps) : status;
    }

private:
    Status askResponder(Steps& steps)
    {
        std::string url = m_responder;
        if (url.empty()) {
            const std::vector<std::string> addresses = addressesIn(m_crypto, m_certificate.der, "OCSP");
            if (addresses.empty()) {
                steps.add("ocsp", ocspWords, SIGIL_TK_URL, m_setting.say(noResponder));
                return {};
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

    Status judgeResponse(Steps& steps, Bytes& response)
    {
        Bytes responder(m_crypto.handle());
        int answers = 0;
        int code = OCSPVerifyResMsg(m_crypto.handle(), m_subject.get(), response.get(), &answers, responder.get());
        if (code == SIGIL_TK_VERIFY_REVOKED)
            return revoked(steps, "ocsp", ocspWords, {});
        if (code != SIGIL_SUCCESS)
            return unanswered(steps, "ocsp", ocspWords, code);
        if (m_setting.toolkit == SIGIL_TOOLKIT_MAKER)
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

    Status lookIntoList(Steps& steps)
    {
        int status = SIGIL_TK_STATUS_UNKNOWN;
        char anyAddress[] = "";
        const int code = CertCheckStatByCRL(m_crypto.handle(), m_subject.get(), anyAddress, &status);
        if (code != SIGIL_SUCCESS)
            return unanswered(steps, "crl", listWords, code);
        Status found = status == SIGIL_TK_STATUS_REVOKED ? revoked(steps, "crl", listWords, {})
                                                         : good(steps, "crl", listWords);
        found.byList = true;
        return found;
    }

    Status good(Steps& steps, const char* name, const Words& words) const
    {
        steps.add(name, words, SIGIL_SUCCESS, m_setting.say(goodWords));
        return {State::Good, false, 0};
    }
    Status revoked(Steps& steps, const char* name, const Words& words, const std::string& time) const
    {
        const std::time_t when = time.empty() ? 0 : timeOf(time);
        steps.add(name, words, SIGIL_TK_VERIFY_REVOKED,
            when == 0 ? m_setting.say(revokedWords) : m_setting.say(revokedAt, {isoTime(when)}));
        return {State::Revoked, false, when};
    }
    Status unanswered(Steps& steps, const char* name, const Words& words, int code) const
    {
        steps.addCode(m_setting, name, words, code, m_crypto.errorText());
        return {};
    }

    const Setting& m_setting;
    const Crypto& m_crypto;
    const Certificate& m_certificate;
    std::string m_responder;
    Trust m_trust;
    Bytes m_subject;
    Bytes m_issuer;
};

} // namespace

Status askStatus(const Setting& setting, const Crypto& crypto, const Certificate& certificate,
    const StatusQuestion& question, Steps& steps)
{
    return Inquiry(setting, crypto, certificate, question).ask(steps);
}

} // namespace host
