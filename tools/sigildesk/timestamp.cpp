// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// timestamp: a token of a time-stamping authority (RFC 3161).
#include "commands.h"
#include "files.h"
#include "jobs/stamping.h"

#include <nlohmann/json.hpp>

namespace host {

namespace {

constexpr Words waiting{"Waiting for the time-stamping authority ...", "시점확인 기관의 응답을 기다립니다 ..."};
constexpr Words noAddress{"--url names the authority", "--url로 시점확인 기관의 주소를 지정하십시오"};

std::string tokenFor(const Session& session, const Crypto& crypto, const std::string& file)
{
    const Progress progress(session.output, waiting);
    return stampToken(crypto, session.arguments.text("--url"), readContent(file));
}

} // namespace

int runTimestamp(Session& session)
{
    const std::string file = session.arguments.text("FILE");
    if (!session.arguments.has("--url"))
        throw Failure(wrongUse, "wrong_use", noAddress);
    mustExist(file);
    WrittenFile target(session, outputPath(session, file + ".tst"));
    const Crypto crypto(session);
    const std::string token = tokenFor(session, crypto, file);
    Bytes bytes(crypto.handle());
    set(crypto, bytes, token);
    const Stamp stamp = stampOf(crypto, bytes);
    target.write(token);
    target.commit();
    session.output.document({{"file", target.path()}, {"time", isoTime(stamp.time)}, {"policy", stamp.policy},
        {"serial", stamp.serial}});
    session.output.line(target.path() + "  " + isoTime(stamp.time));
    return done;
}

} // namespace host
