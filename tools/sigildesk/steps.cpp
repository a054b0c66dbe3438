// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "steps.h"

#include <nlohmann/json.hpp>

#include <algorithm>

namespace host {

namespace {

constexpr Words okWords{"ok", "정상"};
constexpr Words notOkWords{"NOT ok", "이상"};

} // namespace

void Steps::add(const char* name, const Words& words, bool ok, const std::string& detail)
{
    m_steps.push_back({name, words, ok, detail});
}

void Steps::addCode(
    const Session& session, const char* name, const Words& words, int code, const std::string& detail)
{
    const bool ok = code == SIGIL_SUCCESS;
    add(name, words, ok, ok ? detail : codeDetail(session, code, detail));
}

bool Steps::valid() const
{
    return std::all_of(m_steps.begin(), m_steps.end(), [](const Step& step) { return step.ok; });
}

Json Steps::json() const
{
    Json list = Json::array();
    for (const Step& step : m_steps)
        list.push_back({{"step", step.name}, {"ok", step.ok}, {"detail", step.detail}});
    return list;
}

void Steps::print(const Session& session) const
{
    std::vector<std::vector<Cell>> rows;
    for (const Step& step : m_steps)
        rows.push_back({Cell(session.say(step.words)),
            Cell(session.say(step.ok ? okWords : notOkWords), step.ok ? Color::Green : Color::Red),
            Cell(step.detail)});
    session.output.table(rows);
}

std::string codeDetail(const Session& session, int code, const std::string& toolkitText)
{
    return Failure::ofCode(code, toolkitText).message(session.language());
}

} // namespace host
