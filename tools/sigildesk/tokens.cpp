// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// tokens: slots, tokens and the certificates on them.
#include "jobs/tokens.h"
#include "certificate.h"
#include "commands.h"

#include <nlohmann/json.hpp>

namespace host {

namespace {

constexpr Words looking{"Looking for tokens ...", "보안토큰을 찾습니다 ..."};
constexpr Words noToken{"No token found.", "보안토큰이 없습니다."};
constexpr Words slotWords{"slot {}", "슬롯 {}"};

Json jsonOf(const Token& token)
{
    Json certificates = Json::array();
    for (const Certificate& certificate : token.certificates)
        certificates.push_back(jsonOf(certificate));
    return {{"slot", token.slot}, {"label", token.label}, {"maker", token.maker}, {"model", token.model},
        {"serial", token.serial}, {"initialised", token.initialised}, {"certificates", certificates}};
}

void addRows(const Session& session, const Token& token, std::vector<std::vector<Cell>>& rows)
{
    rows.push_back({Cell(session.say(slotWords, {std::to_string(token.slot)})), Cell(token.label),
        Cell(token.maker + ", " + token.model), Cell(token.serial)});
    for (const Certificate& certificate : token.certificates)
        rows.push_back({Cell(""), Cell(certificate.name), Cell(certificate.issuerName), Cell(day(certificate.to))});
}

} // namespace

int runTokens(Session& session)
{
    const Crypto crypto(session);
    Json list = Json::array();
    std::vector<std::vector<Cell>> rows;
    {
        const Progress progress(session.output, looking);
        for (const Token& token : tokens(session, crypto)) {
            list.push_back(jsonOf(token));
            addRows(session, token, rows);
        }
    }
    session.output.document({{"tokens", list}});
    if (rows.empty())
        session.output.line(session.say(noToken));
    session.output.table(rows);
    return rows.empty() ? no : done;
}

} // namespace host
