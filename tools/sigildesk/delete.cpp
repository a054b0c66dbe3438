// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// delete: the pairs of a certificate, when somebody has said yes.
#include "commands.h"
#include "pairs.h"
#include "secrets.h"

#include <nlohmann/json.hpp>

namespace host {

namespace {

constexpr Words areYouSure{"Delete {} (serial number {}, valid until {}) with its keys? [y/N]",
    "{} (일련번호 {}, {}까지 유효) 인증서와 키를 지울까요? [예(y)/아니요(N)]"};
constexpr Words kept{"nothing was deleted", "지우지 않았습니다"};
constexpr Words deleted{"Deleted: {}", "지웠습니다: {}"};
constexpr Words noFile{"a certificate on standard input has no files", "표준 입력의 인증서에는 파일이 없습니다"};

} // namespace

int runDelete(Session& session)
{
    const Certificate certificate = chosenWithPairs(session);
    if (certificate.files.certificate.empty())
        throw Failure(wrongUse, "wrong_use", noFile);
    if (!session.arguments.has("--yes") &&
        !confirm(session.say(areYouSure, {certificate.name, certificate.serial, day(certificate.to)})))
        throw Failure(no, "cancelled", kept);
    changePairs(certificate.files, {});
    session.output.document({{"deleted", true}, {"certificate", jsonOf(certificate)}});
    session.output.line(session.say(deleted, {certificate.name}));
    return done;
}

} // namespace host
