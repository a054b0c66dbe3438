// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Whether certificates are to be trusted, and whether they are revoked.
#include "sigil/call.h"

#include "jobs/failure.h"
#include "jobs/judgement.h"
#include "jobs/status.h"

#include <sigildesk/open_toolkit.h>

#include <ctime>

using host::need;

namespace {

/** The toolkit's number of each enum SigilPurpose but the first, which asks for none. */
constexpr int usages[] = {SIGIL_TK_USAGE_ANY, SIGIL_TK_USAGE_SIGN, SIGIL_TK_USAGE_KEY_MANAGEMENT};

std::vector<std::string> trustedOf(const host::Crypto& crypto, const SigilJudgeOptions& options)
{
    need(options.trusted_count >= 0 && (options.trusted || options.trusted_count == 0), "the trusted certificates");
    std::vector<std::string> certificates;
    certificates.reserve(static_cast<std::size_t>(options.trusted_count));
    for (int i = 0; i < options.trusted_count; ++i)
        certificates.push_back(host::derOf(
            crypto, host::bytesOf(options.trusted[i].data, options.trusted[i].size, "a trusted certificate")));
    return certificates;
}

host::JudgementQuestion questionOf(const host::Crypto& crypto, const SigilJudgeOptions& options)
{
    need(options.purpose >= SIGIL_PURPOSE_ANY && options.purpose <= SIGIL_PURPOSE_ENCRYPT, "the purpose");
    host::JudgementQuestion question;
    question.trusted = trustedOf(crypto, options);
    if (options.purpose != SIGIL_PURPOSE_ANY)
        question.usage = usages[options.purpose];
    question.revocation = options.no_revocation == 0;
    question.when = options.time == 0 ? std::time(nullptr) : static_cast<std::time_t>(options.time);
    return question;
}

/** A failed step as the session's failure: its code, and its own words. */
[[noreturn]] void refuse(const host::Step& step, int code) { host::refuse(code, step.detail); }

SigilStatus statusOf(const host::Status& found)
{
    SigilStatus status{};
    status.revoked = found.state == host::State::Revoked;
    status.by_list = found.byList;
    status.revoked_at = found.revokedAt;
    return status;
}

} // namespace

int sigil_verify_certificate(
    SigilSession* session, const SigilJudgeOptions* options, const void* certificate, size_t size)
{
    return host::run(session, [&](SigilSession& s) {
        const SigilJudgeOptions wanted = host::known(options);
        const host::Crypto crypto(s.setting); // of its own: what it trusts is not to be trusted by others
        const std::string content(host::bytesOf(certificate, size, "the certificate"));
        const host::Certificate judged = host::readCertificate(s.setting, crypto, content);
        const host::Steps steps = host::judge(s.setting, crypto, judged, questionOf(crypto, wanted));
        if (const host::Step* step = steps.failed())
            refuse(*step, step->code);
    });
}

int sigil_status(SigilSession* session, const SigilJudgeOptions* options, const void* certificate, size_t size,
    SigilStatus* status)
{
    return host::run(session, [&](SigilSession& s) {
        need(status != nullptr, "the status");
        host::checkSize(status->size, sizeof *status);
        const SigilJudgeOptions wanted = host::known(options);
        const host::Crypto crypto(s.setting);
        const std::string content(host::bytesOf(certificate, size, "the certificate"));
        const host::Certificate asked = host::readCertificate(s.setting, crypto, content);
        host::Steps steps;
        const host::Status found = host::askStatus(
            s.setting, crypto, asked, {trustedOf(crypto, wanted), wanted.responder ? wanted.responder : ""}, steps);
        if (found.state == host::State::Unknown)
            refuse(*steps.failed(), SIGIL_STATUS_UNKNOWN);
        host::fill(status, statusOf(found));
    });
}
