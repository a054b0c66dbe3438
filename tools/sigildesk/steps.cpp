// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "steps.h"

#include <nlohmann/json.hpp>

namespace host {

namespace {

constexpr Words okWords{"ok", "정상"};
constexpr Words notOkWords{"NOT ok", "이상"};

} // namespace

Json jsonOf(const Steps& steps)
{
    Json list = Json::array();
    for (const Step& step : steps.all())
        list.push_back({{"step", step.name}, {"ok", step.ok()}, {"detail", step.detail}});
    return list;
}

void print(const Session& session, const Steps& steps)
{
    std::vector<std::vector<Cell>> rows;
    for (const Step& step : steps.all())
        rows.push_back({Cell(session.say(step.words)),
            Cell(session.say(step.ok() ? okWords : notOkWords), step.ok() ? Color::Green : Color::Red),
            Cell(step.detail)});
    session.output.table(rows);
}

} // namespace host
