// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "jobs/judgement.h"

#include "jobs/trust.h"

#include <sigildesk/open_toolkit.h>

namespace host {

namespace {

constexpr Words pathWords{"path", "인증 경로"};
constexpr Words validityWords{"validity", "유효 기간"};
constexpr Words purposeWords{"purpose", "용도"};
constexpr Words policyWords{"policies", "정책"};
constexpr Words revocationWords{"revocation", "폐지 여부"};
constexpr Words notChecked{"not checked: the path is not valid", "인증 경로가 유효하지 않아 확인하지 않았습니다"};
constexpr Words notRevoked{"not revoked", "폐지되지 않음"};

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
    Judgement(const Setting& setting, const Crypto& crypto, const Certificate& certificate,
        const JudgementQuestion& question)
        : m_setting(setting)
        , m_crypto(crypto)
        , m_certificate(certificate)
        , m_question(question)
        , m_trust(setting, crypto, certificate.der, Network::Issuers, question.trusted)
    {
    }

    Steps steps()
    {
        Steps steps;
        const int now = judge(SIGIL_TK_USAGE_ANY, SIGIL_TK_REVOCATION_NONE, m_question.when);
        const int code = isAboutTime(now) ? judge(SIGIL_TK_USAGE_ANY, SIGIL_TK_REVOCATION_NONE, middle()) : now;
        const bool policiesFail = code == SIGIL_TK_VERIFY_POLICY;
        const int path = policiesFail || isAboutTime(code) ? SIGIL_SUCCESS : code;
        add(steps, "path", pathWords, path, joined(m_trust.path()));
        steps.add("validity", validityWords, isAboutTime(now) ? now : codeOfTime(),
            isoTime(m_certificate.from) + " - " + isoTime(m_certificate.to));
        if (path != SIGIL_SUCCESS)
            steps.add("policies", policyWords, path, m_setting.say(notChecked));
        else
            add(steps, "policies", policyWords, policiesFail ? code : SIGIL_SUCCESS, m_certificate.policy);
        if (m_question.usage)
            addPurpose(steps, path);
        if (m_question.revocation)
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
    int codeOfTime() const
    {
        if (m_question.when < m_certificate.from)
            return SIGIL_TK_VERIFY_NOT_YET;
        if (m_question.when > m_certificate.to)
            return SIGIL_TK_VERIFY_EXPIRED;
        return SIGIL_SUCCESS;
    }

    void add(Steps& steps, const char* name, const Words& words, int code, const std::string& detail) const
    {
        steps.addCode(m_setting, name, words, code, code == SIGIL_SUCCESS ? detail : m_text);
    }

    void addPurpose(Steps& steps, int path)
    {
        if (path != SIGIL_SUCCESS) {
            steps.add("purpose", purposeWords, path, m_setting.say(notChecked));
            return;
        }
        const int code = judge(*m_question.usage, SIGIL_TK_REVOCATION_NONE, middle());
        add(steps, "purpose", purposeWords, code == SIGIL_TK_VERIFY_USAGE ? code : SIGIL_SUCCESS,
            m_certificate.keyUsage);
    }

    void addRevocation(Steps& steps)
    {
        if (!steps.valid()) {
            steps.add("revocation", revocationWords, steps.failed()->code, m_setting.say(notChecked));
            return;
        }
        const int code = judge(SIGIL_TK_USAGE_ANY, SIGIL_TK_REVOCATION_PATH, m_question.when);
        add(steps, "revocation", revocationWords, code, m_setting.say(notRevoked));
    }

    const Setting& m_setting;
    const Crypto& m_crypto;
    const Certificate& m_certificate;
    const JudgementQuestion& m_question;
    Trust m_trust;
    std::string m_text;
};

} // namespace

Steps judge(
    const Setting& setting, const Crypto& crypto, const Certificate& certificate, const JudgementQuestion& question)
{
    return Judgement(setting, crypto, certificate, question).steps();
}

} // namespace host
