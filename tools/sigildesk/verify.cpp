// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// verify: path, validity, purpose, policies and revocation of a certificate, each a step.
#include "commands.h"
#include "jobs/judgement.h"
#include "selection.h"
#include "steps.h"
#include "times.h"
#include "trust.h"

#include <sigildesk/open_toolkit.h>

#include <nlohmann/json.hpp>

namespace host {

namespace {

constexpr Words working{"Looking for issuers and revocation lists ...", "발급자 인증서와 폐지 목록을 찾습니다 ..."};

int usageOf(const Arguments& arguments)
{
    const std::string purpose = arguments.text("--purpose");
    if (purpose == "sign")
        return SIGIL_TK_USAGE_SIGN;
    return purpose == "encrypt" ? SIGIL_TK_USAGE_KEY_MANAGEMENT : SIGIL_TK_USAGE_ANY;
}

JudgementQuestion questionOf(const Session& session, const Crypto& crypto)
{
    JudgementQuestion question;
    question.trusted = trusted(session, crypto);
    if (session.arguments.has("--purpose"))
        question.usage = usageOf(session.arguments);
    question.revocation = !session.arguments.has("--no-revocation");
    question.when = timeArgument(session, "--time");
    return question;
}

} // namespace

int runVerify(Session& session)
{
    const Certificate certificate = chosen(session, session.arguments.text("CERT"));
    const Crypto crypto(session);
    Steps steps;
    {
        const Progress progress(session.output, working);
        steps = judge(session, crypto, certificate, questionOf(session, crypto));
    }
    session.output.document(
        {{"valid", steps.valid()}, {"steps", jsonOf(steps)}, {"certificate", jsonOf(certificate)}});
    print(session, steps);
    return steps.valid() ? done : no;
}

} // namespace host
