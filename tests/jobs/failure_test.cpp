// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// What a failure says to the shell, to people and to programs.

#include "jobs/failure.h"

#include <sigildesk/codes.h>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <string>
#include <vector>

namespace {

using host::Failure;
using host::Language;

constexpr host::Words sentence{"{} is not {}", "{}: {} 아님"};

} // namespace

TEST(Words, TakeAValueForEveryPlace)
{
    EXPECT_EQ(host::filled("{} and {}", {"a", "b"}), "a and b");
    EXPECT_EQ(host::filled("{} and {}", {"a"}), "a and {}");
    EXPECT_EQ(host::filled("no place", {"a", "b"}), "no place");
    EXPECT_EQ(host::filled("{}", {"{}", "b"}), "{}") << "a value is no place";
}

TEST(AFailure, OfTheCommandHasItsOwnNameAndItsExitCode)
{
    const Failure failure(host::failed, "some_name", sentence, {"this", "that"});
    EXPECT_EQ(failure.exit(), host::failed);
    EXPECT_EQ(failure.code(), host::failed);
    EXPECT_STREQ(failure.what(), "some_name");
    EXPECT_EQ(failure.message(Language::English), "this is not that");
    EXPECT_EQ(failure.message(Language::Korean), "this: that 아님");
}

TEST(AFailure, OfAResultIsNamedAfterIt)
{
    const Failure failure = Failure::ofCode(SIGIL_WRONG_PASSWORD, "the toolkit's words");
    EXPECT_EQ(failure.exit(), host::no);
    EXPECT_EQ(failure.code(), SIGIL_WRONG_PASSWORD);
    EXPECT_EQ(failure.name(), host::nameOfCode(SIGIL_WRONG_PASSWORD));
    const std::string behind = "(code " + std::to_string(SIGIL_WRONG_PASSWORD) + ": the toolkit's words)";
    EXPECT_TRUE(failure.message(Language::English).ends_with(behind)) << failure.message(Language::English);
}

TEST(AFailure, OfACodeThatOnlyItsToolkitKnowsSaysSo)
{
    constexpr int unknown = 987654;
    const Failure failure = Failure::ofCode(unknown);
    EXPECT_EQ(failure.exit(), host::failed);
    EXPECT_EQ(failure.name(), "toolkit_code");
    EXPECT_NE(failure.message(Language::English).find("(code 987654)"), std::string::npos);
}

TEST(AFailure, TellsProgramsMoreThanItsWords)
{
    Failure failure(host::no, "some_name", sentence, {"this", "that"});
    failure.with("path", "a").with("line", 7).withLines({"below"});
    EXPECT_EQ(failure.json(Language::English).dump(),
        R"({"code":1,"name":"some_name","message":"this is not that","path":"a","line":7})");
    EXPECT_EQ(failure.lines(), std::vector<std::string>{"below"});
}

TEST(AnExitCode, TellsSuccessANoAndAFailureApart)
{
    EXPECT_EQ(host::exitOf(SIGIL_SUCCESS), host::done);
    EXPECT_EQ(host::exitOf(SIGIL_CANCELLED), host::no);
    EXPECT_EQ(host::exitOf(SIGIL_NO_MEMORY), host::failed);
}
