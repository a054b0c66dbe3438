// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Result codes in words.

#include "foundation/code_table.h"

#include <sigildesk/codes.h>

#include <gmock/gmock.h>

#include <climits>
#include <set>
#include <string>

namespace {

SigilCodeText words(int code, int language)
{
    SigilCodeText text{};
    EXPECT_EQ(sigil_code_text(code, language, &text), SIGIL_SUCCESS) << code;
    return text;
}

/** True when @p text has a letter of the Korean script, whose UTF-8 begins with 0xEA to 0xED. */
bool isKorean(const std::string& text) { return text.find_first_of("\xEA\xEB\xEC\xED") != std::string::npos; }

TEST(CodeText, SaysWhatHappenedAndWhatToDo)
{
    const SigilCodeText text = words(SIGIL_WRONG_PASSWORD, SIGIL_LANGUAGE_ENGLISH);
    EXPECT_EQ(text.code, 1113);
    EXPECT_STREQ(text.name, "SIGIL_WRONG_PASSWORD");
    EXPECT_STREQ(text.layer, "list");
    EXPECT_STREQ(text.sentence, "The password is wrong.");
    EXPECT_STREQ(text.advice, "Type it again; letter case and keyboard language count.");
    EXPECT_STREQ(words(SIGIL_WRONG_PASSWORD, SIGIL_LANGUAGE_KOREAN).sentence, "비밀번호가 틀렸습니다.");
}

TEST(CodeText, SpeaksEnglishUnlessAskedForKorean)
{
    EXPECT_STREQ(words(2004, 0).sentence, words(2004, SIGIL_LANGUAGE_ENGLISH).sentence);
}

TEST(CodeText, OwnsUpToANumberThatIsNoneOfTheCodes)
{
    for (const int language : {SIGIL_LANGUAGE_KOREAN, SIGIL_LANGUAGE_ENGLISH})
        for (const int code : {-7777, 999, 7777, INT_MAX}) { // before, between and behind them
            SigilCodeText text{};
            EXPECT_EQ(sigil_code_text(code, language, &text), SIGIL_BAD_ARGUMENT);
            EXPECT_EQ(text.code, code);
            EXPECT_STREQ(text.name, "");
            EXPECT_EQ(isKorean(text.sentence), language == SIGIL_LANGUAGE_KOREAN);
            EXPECT_EQ(isKorean(text.advice), language == SIGIL_LANGUAGE_KOREAN);
        }
}

TEST(CodeText, RefusesANullRecord)
{
    EXPECT_EQ(sigil_code_text(0, SIGIL_LANGUAGE_ENGLISH, nullptr), SIGIL_BAD_ARGUMENT);
}

TEST(CodeTable, HasARowForEachNumberInOrder)
{
    int before = -2;
    for (const sigil::CodeRow& row : sigil::codeRows()) {
        EXPECT_GT(row.code, before) << row.name;
        before = row.code;
        EXPECT_EQ(words(row.code, SIGIL_LANGUAGE_ENGLISH).name, row.name);
    }
}

TEST(CodeTable, IsWholeInBothLanguages)
{
    for (const sigil::CodeRow& row : sigil::codeRows()) {
        for (const char* text : {row.english.sentence, row.english.advice}) {
            EXPECT_THAT(text, testing::MatchesRegex("[A-Z\"].*\\.")) << row.name;
            EXPECT_FALSE(isKorean(text)) << row.name;
        }
        for (const char* text : {row.korean.sentence, row.korean.advice}) {
            EXPECT_THAT(text, testing::EndsWith(".")) << row.name;
            EXPECT_TRUE(isKorean(text)) << row.name;
        }
        EXPECT_THAT(std::string(row.layer),
            testing::AnyOf("all", "dialogs", "facade", "facade,list", "list", "toolkit", "c"));
    }
}

} // namespace
