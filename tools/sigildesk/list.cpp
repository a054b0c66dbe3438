// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// list: one line a certificate.
#include "commands.h"
#include "diagnosis.h"
#include "selection.h"

#include <nlohmann/json.hpp>

namespace host {

namespace {

constexpr Words expiredMark{"expired", "만료"};
constexpr Words soonMark{"expires soon", "만료 임박"};
constexpr Words notYetMark{"not valid yet", "유효 기간 전"};
constexpr Words daysWords{"{} days", "{}일"};
constexpr Words nothing{"No certificate found.", "인증서가 없습니다."};
constexpr Words looked{"Looked in {}", "찾아본 곳: {}"};
constexpr Words notListed{"Not listed: {}: {}", "목록에 없음: {}: {}"};
constexpr Words moreNotListed{"... and {} more. \"sigildesk doctor\" tells of each.",
    "... 외 {}건. \"sigildesk doctor\"가 모두 알려 줍니다."};

Cell mark(const Session& session, const Certificate& certificate)
{
    if (certificate.expired)
        return {session.say(expiredMark), Color::Red};
    if (certificate.from > std::time(nullptr))
        return {session.say(notYetMark), Color::Yellow};
    return certificate.expiresSoon ? Cell(session.say(soonMark), Color::Yellow) : Cell("");
}

std::vector<Cell> row(const Session& session, const Certificate& certificate)
{
    return {std::to_string(certificate.index), certificate.name, certificate.issuerName, certificate.use,
        day(certificate.to), session.say(daysWords, {std::to_string(certificate.daysLeft)}), certificate.medium,
        mark(session, certificate)};
}

/** What stood where the list looked. */
std::vector<sigil::Finding> strayFindings(const Session& session)
{
    std::vector<sigil::Finding> findings = examineMedium(session).findings;
    std::erase_if(findings, [](const sigil::Finding& finding) { return finding.listed; });
    return findings;
}

int tellNothing(Session& session)
{
    const std::vector<sigil::Finding> strays = strayFindings(session);
    Json stray = Json::array();
    for (const sigil::Finding& finding : strays)
        stray.push_back({{"path", finding.path}, {"rule", finding.rule}});
    const std::vector<std::string> folders = searchedFolders(session);
    Json error = Failure::ofCode(SIGIL_NO_CERTIFICATE).json(session.language());
    error["searched"] = folders;
    error["not_listed"] = stray;
    session.output.document({{"certificates", Json::array()}, {"error", error}});
    session.output.line(session.say(nothing));
    for (const std::string& folder : folders)
        session.output.line(session.say(looked, {folder}));
    if (!strays.empty())
        session.output.line(session.say(notListed, {strays.front().path, strays.front().detail}));
    if (strays.size() > 1)
        session.output.line(session.say(moreNotListed, {std::to_string(strays.size() - 1)}));
    return no;
}

} // namespace

int runList(Session& session)
{
    const std::vector<Certificate> certificates = listed(session);
    if (certificates.empty())
        return tellNothing(session);
    Json list = Json::array();
    std::vector<std::vector<Cell>> rows;
    for (const Certificate& certificate : certificates) {
        list.push_back(jsonOf(certificate));
        rows.push_back(row(session, certificate));
    }
    session.output.document({{"certificates", list}});
    session.output.table(rows);
    return done;
}

} // namespace host
