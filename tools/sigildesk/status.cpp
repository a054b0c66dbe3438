// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// status: is the certificate revoked? Asks the responder, else looks into the revocation list.
#include "jobs/status.h"
#include "commands.h"
#include "selection.h"
#include "steps.h"
#include "trust.h"

#include <nlohmann/json.hpp>

namespace host {

namespace {

constexpr Words working{"Asking for the state of the certificate ...", "인증서 상태를 조회합니다 ..."};
constexpr Words noAnswer{"the state of {} cannot be told", "{}의 상태를 알 수 없습니다"};

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
        state = askStatus(
            session, crypto, certificate, {trusted(session, crypto), session.arguments.text("--url")}, steps)
                    .state;
    }
    print(session, steps);
    if (state == State::Unknown)
        throw Failure(failed, "no_status", noAnswer, {certificate.name}).with("steps", jsonOf(steps));
    const bool good = state == State::Good;
    session.output.document({{"valid", good}, {"status", good ? "good" : "revoked"}, {"steps", jsonOf(steps)},
        {"certificate", jsonOf(certificate)}});
    return good ? done : no;
}

} // namespace host
