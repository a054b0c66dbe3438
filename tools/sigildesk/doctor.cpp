// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// doctor: why a certificate is listed or not.
#include "commands.h"
#include "diagnosis.h"
#include "files.h"

#include "doctor/doctor.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cstring>

namespace host {

namespace {

constexpr Words lookingWords{"Looking at the stores ...", "인증서 저장소를 살펴보는 중 ..."};
constexpr Words searchedTitle{"Folders that the list searches:", "목록이 찾아보는 폴더:"};
constexpr Words searchedWords{"{} certificates, {} listed", "인증서 {}개, 목록에 {}개"};
constexpr Words absentWords{"not there", "없음"};
constexpr Words dependsTitle{"What the list depends on:", "목록에 필요한 것:"};
constexpr Words amissWords{"amiss", "이상"};
constexpr Words goodWords{"good", "정상"};
constexpr Words summaryWords{"{} certificates listed, {} findings amiss.", "목록에 나오는 인증서 {}개, 이상 {}건."};
constexpr Words mendWords{"Mend: {}", "해결: {}"};

Json jsonOf(const sigil::Finding& finding)
{
    return {{"path", finding.path}, {"listed", finding.listed}, {"rule", finding.rule}, {"detail", finding.detail},
        {"mend", finding.mend}};
}

Json jsonOf(const sigil::SearchedPlace& place)
{
    return {{"path", place.path}, {"family", place.family}, {"found", place.error == 0},
        {"error", place.error == 0 ? Json() : Json(std::strerror(place.error))}, {"candidates", place.candidates},
        {"listed", place.listed}};
}

Json jsonOf(const sigil::Check& check)
{
    return {{"check", check.name}, {"path", check.path}, {"ok", check.ok}, {"detail", check.detail},
        {"mend", check.mend}};
}

template <class Rows>
Json arrayOf(const Rows& rows)
{
    Json array = Json::array();
    for (const auto& row : rows)
        array.push_back(jsonOf(row));
    return array;
}

void printWhole(const Session& session, const std::string& detail, const std::string& mend)
{
    session.output.line("    " + detail);
    if (!mend.empty())
        session.output.line("    " + session.say(mendWords, {mend}));
}

void print(const Session& session, const sigil::Finding& finding)
{
    session.output.line(finding.path + "  " + finding.rule,
        !finding.amiss()     ? Color::Green
            : finding.listed ? Color::Yellow
                             : Color::Red);
    if (finding.amiss())
        printWhole(session, finding.detail, finding.mend);
}

void print(const Session& session, const sigil::SearchedPlace& place)
{
    const std::string state = place.error == ENOENT ? session.say(absentWords)
        : place.error != 0
        ? std::strerror(place.error)
        : session.say(searchedWords, {std::to_string(place.candidates), std::to_string(place.listed)});
    session.output.line("    " + place.path + "  " + state);
}

void print(const Session& session, const sigil::Check& check)
{
    session.output.line(check.name + (check.path.empty() ? "" : "  " + check.path) + "  " +
            session.say(check.ok ? goodWords : amissWords),
        check.ok ? Color::None : Color::Red);
    printWhole(session, check.detail, check.mend);
}

void print(const Session& session, const sigil::StoreReport& report, const std::vector<sigil::Check>& checks)
{
    for (const sigil::Finding& finding : report.findings)
        print(session, finding);
    session.output.line(session.say(searchedTitle));
    for (const sigil::SearchedPlace& place : report.folders)
        print(session, place);
    session.output.line(session.say(dependsTitle));
    for (const sigil::Check& check : checks)
        print(session, check);
    const auto amiss = std::ranges::count_if(report.findings, &sigil::Finding::amiss);
    const auto listed = static_cast<long>(report.findings.size()) - amiss;
    session.output.line(session.say(summaryWords, {std::to_string(listed), std::to_string(amiss)}));
}

/** What is said of the paths that were named, or of the medium. */
sigil::StoreReport examined(const Session& session)
{
    const std::vector<std::string> paths = session.arguments.all("PATH");
    if (paths.empty())
        return examineMedium(session);
    std::for_each(paths.begin(), paths.end(), mustExist);
    sigil::StoreReport all;
    for (const std::string& path : paths) {
        sigil::StoreReport report = sigil::examinePath(question(session), path);
        all.findings.insert(all.findings.end(), report.findings.begin(), report.findings.end());
        all.folders.insert(all.folders.end(), report.folders.begin(), report.folders.end());
    }
    return all;
}

} // namespace

int runDoctor(Session& session)
{
    sigil::StoreReport report;
    std::vector<sigil::Check> checks;
    {
        const Progress progress(session.output, lookingWords);
        report = examined(session);
        checks = sigil::examineSurroundings(question(session));
    }
    session.output.document({{"findings", arrayOf(report.findings)}, {"folders", arrayOf(report.folders)},
        {"checks", arrayOf(checks)}});
    print(session, report, checks);
    const bool good = std::ranges::none_of(report.findings, &sigil::Finding::amiss) &&
        std::ranges::all_of(checks, &sigil::Check::ok);
    return good ? done : no;
}

} // namespace host
