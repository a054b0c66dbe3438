// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// The same questions asked of every member on both toolkit types.

#include "facade/wrapper_api.h"
#include "tests/doubles/variant.h"
#include "tests/facade/handle.h"
#include "tests/facade/member.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>

namespace {

bool holds(const std::vector<std::string>& list, const std::string& item)
{
    return std::find(list.begin(), list.end(), item) != list.end();
}

/** What reached the toolkit, without the error text's capture: "HVTK_CERT_Load(B1)". */
std::string reached(const Values& values)
{
    std::string all;
    for (const doubles::Call& call : doubles::calls())
        if (call.symbol.find("_API_GetErrInfo") == std::string::npos)
            all += (all.empty() ? "" : " ") + values.text(call);
    return all;
}

/** Whether @p required covers an argument that is missing this way. */
bool covers(const std::vector<std::string>& required, const std::string& argument, Values::Way way)
{
    return holds(required, argument) || (way == Values::Way::NoRecord && holds(required, "&" + argument));
}

/** Calls @p member with valid arguments but for one. */
int callSpoilt(const Member& member, void* handle, const std::string& argument, Values::Way way)
{
    doubles::forgetCalls();
    Values values;
    values.spoil(argument, way);
    return member.call(handle, values);
}

} // namespace

class MembersTest : public testing::TestWithParam<Type> {
protected:
    MembersTest()
    {
        doubles::reset();
        // The one text that the façade itself takes apart.
        doubles::answer("GPKI_CERT_GetValidity", doubles::writesText("2020-01-01 ~ 2030-01-01"));
    }

    int type() const { return GetParam().number; }
    /** What answers a call whose arguments pass the façade while the library is not loaded. */
    int unloaded(const Member& member) const { return member.isOn(type()) ? GetParam().notLoaded : 1003; }
};

INSTANTIATE_TEST_SUITE_P(BothTypes, MembersTest, testing::ValuesIn(bothTypes),
    [](const auto& type) { return type.param.number == 0 ? "Maker" : "Gpki"; });

TEST_P(MembersTest, NullHandleComesFirst)
{
    for (const Member& member : allMembers()) {
        SCOPED_TRACE(member.name);
        Values values;
        EXPECT_EQ(member.call(nullptr, values), 1008);
        for (const std::string& argument : member.arguments)
            for (Values::Way way : Values::ways(argument))
                EXPECT_EQ(callSpoilt(member, nullptr, argument, way), 1008) << argument;
    }
}

TEST_P(MembersTest, UnboundHandleComesBeforeTheArguments)
{
    CWrapperAPI unbound;
    for (const Member& member : allMembers()) {
        SCOPED_TRACE(member.name);
        Values values;
        EXPECT_EQ(member.call(&unbound, values), 1008);
        for (const std::string& argument : member.arguments)
            for (Values::Way way : Values::ways(argument))
                EXPECT_EQ(callSpoilt(member, &unbound, argument, way), 1008) << argument;
    }
}

TEST_P(MembersTest, NothingIsTouchedBesideAHandleThatIsNotBound)
{
    CWrapperAPI unbound;
    for (const Member& member : allMembers()) {
        SCOPED_TRACE(member.name);
        Values values(Values::Memory::Wild);
        EXPECT_EQ(member.call(nullptr, values), 1008);
        Values again(Values::Memory::Wild);
        EXPECT_EQ(member.call(&unbound, again), 1008);
    }
}

TEST_P(MembersTest, MissingLibraryIsAnswered)
{
    TemporaryFolder empty;
    const Handle handle(type(), empty.chars());
    for (const Member& member : allMembers()) {
        SCOPED_TRACE(member.name);
        Values values;
        EXPECT_EQ(member.call(handle, values), unloaded(member));
    }
    EXPECT_TRUE(doubles::calls().empty());
}

TEST_P(MembersTest, RequiredArgumentsAreRefusedBeforeAnythingElse)
{
    TemporaryFolder empty;
    const Handle loaded(type(), DOUBLES_FOLDER);
    const Handle missing(type(), empty.chars());
    for (const Member& member : allMembers()) {
        for (const std::string& argument : member.requiredOn(type())) {
            SCOPED_TRACE(member.name + " without " + argument);
            ASSERT_FALSE(Values::ways(argument).empty());
            for (Values::Way way : Values::ways(argument)) {
                EXPECT_EQ(callSpoilt(member, loaded, argument, way), member.required.code);
                EXPECT_TRUE(doubles::calls().empty());
                EXPECT_EQ(callSpoilt(member, missing, argument, way), member.required.code);
            }
        }
    }
}

TEST_P(MembersTest, OtherArgumentsPassTheFacade)
{
    TemporaryFolder empty;
    const Handle missing(type(), empty.chars());
    for (const Member& member : allMembers())
        for (const std::string& argument : member.arguments)
            if (!holds(member.requiredOn(type()), argument)) {
                SCOPED_TRACE(member.name + " without " + argument);
                for (Values::Way way : Values::ways(argument))
                    EXPECT_EQ(callSpoilt(member, missing, argument, way), unloaded(member));
            }
}

TEST_P(MembersTest, BackendRefusesWhatItRequiresBeyondTheFacade)
{
    const Handle handle(type(), DOUBLES_FOLDER);
    for (const Member& member : allMembers())
        for (const std::string& argument : member.backendRequiredOn(type())) {
            SCOPED_TRACE(member.name + " without " + argument);
            ASSERT_FALSE(Values::ways(argument).empty());
            for (Values::Way way : Values::ways(argument)) {
                EXPECT_EQ(callSpoilt(member, handle, argument, way), 1001);
                EXPECT_EQ(doubles::callsOf(member.symbolsOn(type()).back()).size(), 0U);
            }
        }
}

TEST_P(MembersTest, OtherArgumentsReachTheToolkitAsTheyAre)
{
    const Handle handle(type(), DOUBLES_FOLDER);
    for (const Member& member : allMembers()) {
        if (!member.isOn(type()))
            continue;
        for (const std::string& argument : member.arguments) {
            if (holds(member.requiredOn(type()), argument))
                continue;
            SCOPED_TRACE(member.name + " without " + argument);
            for (Values::Way way : Values::ways(argument)) {
                if (covers(member.backendRequiredOn(type()), argument, way))
                    continue;
                EXPECT_EQ(callSpoilt(member, handle, argument, way), 0);
                EXPECT_FALSE(doubles::callsOf(member.symbolsOn(type()).front()).empty());
            }
        }
    }
}

TEST_P(MembersTest, ExactlyTheStatedCallIsMadeWithTheContext)
{
    const Handle handle(type(), DOUBLES_FOLDER);
    const void* const context = *doubles::calls().front().pointer<void*>(0);
    ASSERT_NE(context, nullptr);
    for (const Member& member : allMembers()) {
        SCOPED_TRACE(member.name);
        for (bool flag : {true, false}) {
            doubles::forgetCalls();
            Values values;
            values.setFlag(flag);
            EXPECT_EQ(member.call(handle, values), member.isOn(type()) ? 0 : 1003);
            EXPECT_EQ(reached(values), member.callsOn(type()));
            for (const doubles::Call& call : doubles::calls())
                EXPECT_EQ(call.context, call.takesContext ? context : nullptr);
        }
    }
}

TEST_P(MembersTest, ResultsPassThroughAndFailuresKeepTheToolkitsText)
{
    const Handle handle(type(), DOUBLES_FOLDER);
    for (const Member& member : allMembers()) {
        for (const std::string& symbol : member.symbolsOn(type())) {
            for (int result : {77, -3, 1, INT_MAX, INT_MIN, 1003}) {
                SCOPED_TRACE(member.name + ": " + symbol + " answers " + std::to_string(result));
                doubles::reset();
                doubles::answer(symbol, result);
                doubles::setErrorText("text of " + symbol);
                Values values;
                EXPECT_EQ(member.call(handle, values), result);
                char text[256] = {};
                EXPECT_EQ(HV_GetErrInfo2(handle, 255, text), 0);
                EXPECT_EQ(text, "text of " + symbol);
            }
        }
    }
}

TEST_P(MembersTest, SuccessAsksForNoErrorText)
{
    const Handle handle(type(), DOUBLES_FOLDER);
    for (const Member& member : allMembers()) {
        Values values;
        member.call(handle, values);
    }
    EXPECT_TRUE(doubles::callsOf(GetParam().symbol("API_GetErrInfo")).empty());
    char text[16] = "untouched";
    EXPECT_EQ(HV_GetErrInfo2(handle, 15, text), 0);
    EXPECT_STREQ(text, "untouched");
}

TEST_P(MembersTest, MissingSymbolIsAnsweredWhileTheOthersWork)
{
    for (const Member& member : allMembers()) {
        for (const std::string& symbol : member.symbolsOn(type())) {
            SCOPED_TRACE(member.name + " without " + symbol);
            doubles::FolderWithout folder(symbol);
            const Handle handle(type(), folder.chars());
            ASSERT_EQ(handle.result(), 0);
            doubles::forgetCalls();
            Values values;
            EXPECT_EQ(member.call(handle, values), 1003);
            EXPECT_TRUE(doubles::callsOf(symbol).empty());
            const bool unload = symbol.find("_CERT_Unload") == std::string::npos;
            EXPECT_EQ(unload ? CertUnLoad(handle) : MediaUnLoad(handle), 0);
        }
    }
}
