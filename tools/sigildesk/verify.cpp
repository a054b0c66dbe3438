// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// verify: path, validity, purpose, policies and revocation of a certificate, each a step.
#include "commands.h"
#include "selection.h"
#include "steps.h"
#include "times.h"
#include "trust.h"

#include <sigildesk/open_toolkit.h>

#include <nlohmann/json.hpp>

namespace host {

namespace {

constexpr Words working{"Looking for issuers and revocation lists ...", "발급자 인증서와 폐지 목록을 찾습니다 ..."};
constexpr Words pathWords{"path", "인증 경로"};
constexpr Words validityWords{"validity", "유효 기간"};
constexpr Words purposeWords{"purpose", "용도"};
constexpr Words policyWords{"policies", "정책"};
constexpr Words revocationWords{"revocation", "폐지 여부"};
constexpr Words notChecked{"not checked: the path is not valid", "인증 경로가 유효하지 않아 확인하지 않았습니다"};
constexpr Words notRevoked{"not revoked", "폐지되지 않음"};

int usageOf(const Arguments& arguments)
{
    const std::string purpose = arguments.text("--purpose");
    if (purpose == "sign")
        return SIGIL_TK_USAGE_SIGN;
    return purpose == "encrypt" ? SIGIL_TK_USAGE_KEY_MANAGEMENT : SIGIL_TK_USAGE_ANY;
}

bool isAboutTime(int code) { return code == SIGIL_TK_VERIFY_EXPIRED || code == SIGIL_TK_VERIFY_NOT_YET; }

std::string joined(const std::vector<std::string>& parts)
{
    std::string text;
    for (const std::string& part : parts)
        text.append(text.empty() ? "" : " < ").append(part);
    return text;
}

/** One judgement in steps. A failure that belongs to one step does not hide how the others went. */
class Judgement {
public:
    Judgement(const Session& session, const Crypto& crypto, const Certificate& certificate)
        : m_session(session)
        , m_crypto(crypto)
        , m_certificate(certificate)
        , m_when(timeArgument(session, "--time"))
        , m_trust(session, crypto, certificate.der, Network::Issuers)
    {
    }

    Steps steps()
    {
        Steps steps;
        const int now = judge(SIGIL_TK_USAGE_ANY, SIGIL_TK_REVOCATION_NONE, m_when);
        const int code = isAboutTime(now) ? judge(SIGIL_TK_USAGE_ANY, SIGIL_TK_REVOCATION_NONE, middle()) : now;
        const bool policiesFail = code == SIGIL_TK_VERIFY_POLICY;
        const int path = policiesFail || isAboutTime(code) ? SIGIL_SUCCESS : code;
        add(steps, "path", pathWords, path, joined(m_trust.path()));
        steps.add("validity", validityWords, !isAboutTime(now) && coversTime(),
            isoTime(m_certificate.from) + " - " + isoTime(m_certificate.to));
        if (path != SIGIL_SUCCESS)
            steps.add("policies", policyWords, false, m_session.say(notChecked));
        else
            add(steps, "policies", policyWords, policiesFail ? code : SIGIL_SUCCESS, m_certificate.policy);
        if (m_session.arguments.has("--purpose"))
            addPurpose(steps, path);
        if (!m_session.arguments.has("--no-revocation"))
            addRevocation(steps);
        return steps;
    }

private:
    int judge(int usage, int revocation, std::time_t when)
    {
        const int code = m_trust.judge(usage, revocation, when);
        m_text = code == SIGIL_SUCCESS ? std::string() : m_crypto.errorText();
        return code;
    }
    std::time_t middle() const { return m_certificate.from + (m_certificate.to - m_certificate.from) / 2; }
    bool coversTime() const { return m_certificate.from <= m_when && m_when <= m_certificate.to; }

    void add(Steps& steps, const char* name, const Words& words, int code, const std::string& detail) const
    {
        steps.addCode(m_session, name, words, code, code == SIGIL_SUCCESS ? detail : m_text);
    }

    void addPurpose(Steps& steps, int path)
    {
        if (path != SIGIL_SUCCESS) {
            steps.add("purpose", purposeWords, false, m_session.say(notChecked));
            return;
        }
        const int code = judge(usageOf(m_session.arguments), SIGIL_TK_REVOCATION_NONE, middle());
        add(steps, "purpose", purposeWords, code == SIGIL_TK_VERIFY_USAGE ? code : SIGIL_SUCCESS,
            m_certificate.keyUsage);
    }

    void addRevocation(Steps& steps)
    {
        if (!steps.valid()) {
            steps.add("revocation", revocationWords, false, m_session.say(notChecked));
            return;
        }
        const int code = judge(SIGIL_TK_USAGE_ANY, SIGIL_TK_REVOCATION_PATH, m_when);
        add(steps, "revocation", revocationWords, code, m_session.say(notRevoked));
    }

    const Session& m_session;
    const Crypto& m_crypto;
    const Certificate& m_certificate;
    std::time_t m_when;
    Trust m_trust;
    std::string m_text;
};

} // namespace

int runVerify(Session& session)
{
    const Certificate certificate = chosen(session, session.arguments.text("CERT"));
    const Crypto crypto(session);
    Steps steps;
    {
        const Progress progress(session.output, working);
        steps = Judgement(session, crypto, certificate).steps();
    }
    session.output.document(
        {{"valid", steps.valid()}, {"steps", steps.json()}, {"certificate", jsonOf(certificate)}});
    steps.print(session);
    return steps.valid() ? done : no;
}

} // namespace host
