// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// The table of rules: whole in both languages, and the same as in the document.

#include "doctor/rules.h"

#include <sigildesk/codes.h>

#include <gmock/gmock.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <set>
#include <sstream>

namespace {

std::set<std::string> placesOf(const char* text)
{
    std::set<std::string> places;
    const std::string whole = text;
    for (std::size_t at = whole.find('{'); at != whole.npos; at = whole.find('{', at + 1))
        places.insert(whole.substr(at, 3));
    return places;
}

bool isKorean(const std::string& text) { return text.find_first_of("\xEA\xEB\xEC\xED") != std::string::npos; }

TEST(Rules, HaveNamesForScripts)
{
    std::set<std::string> names;
    for (const sigil::Rule& rule : sigil::rules()) {
        EXPECT_THAT(rule.name, testing::MatchesRegex("[a-z0-9_]+"));
        EXPECT_TRUE(names.insert(rule.name).second) << rule.name;
    }
}

TEST(Rules, AreWholeInBothLanguages)
{
    for (const sigil::Rule& rule : sigil::rules())
        for (const sigil::BothLanguages& text : {rule.detail, rule.mend}) {
            EXPECT_EQ(placesOf(text.english), placesOf(text.korean)) << rule.name;
            EXPECT_FALSE(isKorean(text.english)) << rule.name;
            EXPECT_EQ(isKorean(text.korean), *text.english != '\0') << rule.name;
        }
}

TEST(Rules, SayTheirValues)
{
    const sigil::Rule& rule = sigil::ruleNamed("file_letter_case");
    EXPECT_EQ(rule.mend.in(SIGIL_LANGUAGE_ENGLISH, {"A", "b"}), "Rename it to b, letter for letter.");
    EXPECT_EQ(rule.mend.in(SIGIL_LANGUAGE_ENGLISH, {"A"}), "Rename it to ?, letter for letter.");
    EXPECT_EQ(rule.detail.in(SIGIL_LANGUAGE_KOREAN, {"A", "b"}), "파일 이름이 A인데 목록은 b을(를) 찾습니다.");
}

TEST(Rules, StandInTheDocument)
{
    std::ifstream in(SIGILDESK_SOURCE_FOLDER "/docs/command-line.md");
    const std::string document{std::istreambuf_iterator<char>(in), {}};
    std::ostringstream table;
    table << "| rule | says | mend |\n|---|---|---|\n";
    const std::vector<std::string> values(3, "…");
    for (const sigil::Rule& rule : sigil::rules())
        table << "| `" << rule.name << "` | " << rule.detail.in(SIGIL_LANGUAGE_ENGLISH, values) << " | "
              << rule.mend.in(SIGIL_LANGUAGE_ENGLISH, values) << " |\n";
    EXPECT_NE(document.find(table.str()), std::string::npos) << "docs/command-line.md is to hold\n" << table.str();
}

} // namespace
