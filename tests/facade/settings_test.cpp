// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// The settings and byte-string functions, asked the same questions: null handle, missing library, missing symbol, and
// results passed through.

#include "facade/wrapper_api.h"
#include "tests/doubles/recorder.h"
#include "tests/doubles/variant.h"
#include "tests/facade/handle.h"

#include <gtest/gtest.h>

namespace {

unsigned char data[] = {1, 2, 3};
BINSTR bytes{data, 3};
char text[2048];
char empty[] = "";
long seconds;

struct Setting {
    const char* maker; ///< the symbol on each toolkit, null where there is none
    const char* gpki;
    int (*call)(void* handle);
};

const Setting settings[] = {
    {"HVTK_API_GetErrInfo", "GPKI_API_GetErrInfo", [](void* h) { return HV_GetErrInfo(h, 2047, text); }},
    {"HVTK_API_GetInfo", "GPKI_API_GetVersion", [](void* h) { return HV_GetVersion(h, 2048, text); }},
    {nullptr, "GPKI_API_SetOption", [](void* h) { return HV_SetOption(h, 1); }},
    {"HVTK_API_SetConfFile", "GPKI_API_SetConfFile", [](void* h) { return HV_SetConfFile(h, empty); }},
    {"HVTK_CERT_SetCaPubs", "GPKI_API_SetCaPubs", [](void* h) { return HV_SetCaPubs(h, &bytes); }},
    {"HVTK_CERT_FreeCaPubs", "GPKI_API_FreeCaPubs", [](void* h) { return HV_FreeCaPubs(h); }},
    {nullptr, "GPKI_API_Str2Time", [](void* h) { return HV_Str2Time(h, text, &seconds); }},
    {"HVTK_API_SetHashAlgo", "GPKI_API_SetHashAlgo", [](void* h) { return HV_SetHashAlg(h, 1); }},
    {"HVTK_BINSTR_Create", "GPKI_BINSTR_Create",
        [](void* h) {
            BINSTR record{};
            return HV_BINSTR_Create(h, &record);
        }},
    {"HVTK_BINSTR_SetData", "GPKI_BINSTR_SetData",
        [](void* h) {
            BINSTR record{};
            return HV_BINSTR_SetData(h, data, 3, &record);
        }},
    {"HVTK_BINSTR_Delete", "GPKI_BINSTR_Delete", [](void* h) { return HV_BINSTR_Delete(h, &bytes); }},
};

} // namespace

class SettingsTest : public testing::TestWithParam<Type> {
protected:
    SettingsTest() { doubles::reset(); }
    const char* symbolOf(const Setting& setting) const { return type() == 0 ? setting.maker : setting.gpki; }
    int type() const { return GetParam().number; }
};

INSTANTIATE_TEST_SUITE_P(BothTypes, SettingsTest, testing::ValuesIn(bothTypes));

TEST_P(SettingsTest, NullAndUnboundHandlesAreAnsweredFirst)
{
    CWrapperAPI unbound;
    for (const Setting& setting : settings) {
        SCOPED_TRACE(setting.gpki);
        EXPECT_EQ(setting.call(nullptr), 1008);
        EXPECT_EQ(setting.call(&unbound), 1008);
    }
    EXPECT_EQ(HV_GetErrInfo2(nullptr, 8, text), 1008);
    EXPECT_EQ(HV_BINSTR_Delete(nullptr, nullptr), 1008);
}

TEST_P(SettingsTest, MissingLibraryIsAnswered)
{
    TemporaryFolder folder;
    const Handle handle(type(), folder.chars());
    for (const Setting& setting : settings) {
        SCOPED_TRACE(setting.gpki);
        EXPECT_EQ(setting.call(handle), symbolOf(setting) ? GetParam().notLoaded : 1003);
    }
    EXPECT_EQ(HV_BINSTR_Create(handle, nullptr), GetParam().notLoaded) << "before the backend's own arguments";
    EXPECT_EQ(HV_SetConfFile(handle, nullptr), GetParam().notLoaded);
}

TEST_P(SettingsTest, ResultsPassThroughAndFailuresKeepTheText)
{
    const Handle handle(type(), DOUBLES_FOLDER);
    std::string previous;
    for (const Setting& setting : settings) {
        if (!symbolOf(setting))
            continue;
        SCOPED_TRACE(symbolOf(setting));
        const bool asksForText = std::string(symbolOf(setting)).find("GetErrInfo") != std::string::npos;
        for (int result : {0, 9, -9}) {
            doubles::reset();
            doubles::answer(symbolOf(setting), result);
            doubles::setErrorText(symbolOf(setting));
            EXPECT_EQ(setting.call(handle), result);
            char kept[64] = {};
            EXPECT_EQ(HV_GetErrInfo2(handle, 63, kept), 0);
            EXPECT_STREQ(kept, result == 0 || asksForText ? previous.c_str() : symbolOf(setting));
            previous = kept;
        }
    }
}

TEST_P(SettingsTest, MissingSymbolIsAnsweredWhileTheOthersWork)
{
    for (const Setting& setting : settings) {
        if (!symbolOf(setting))
            continue;
        SCOPED_TRACE(symbolOf(setting));
        doubles::FolderWithout folder(symbolOf(setting));
        const Handle handle(type(), folder.chars());
        EXPECT_EQ(setting.call(handle), 1003);
        EXPECT_EQ(CertUnLoad(handle), 0);
    }
}

TEST_P(SettingsTest, OperationLeavesEmptyRecordsToTheBackend)
{
    CWrapperAPI api;
    char folder[] = DOUBLES_FOLDER;
    ASSERT_EQ(api.Initalize(type(), folder), 0);
    doubles::forgetCalls();
    doubles::answer(GetParam().symbol("BINSTR_Delete"), 3);
    BINSTR noData{}, noLength{data, 0};
    EXPECT_EQ(api.BINDelete(&noData), type() == 0 ? 1001 : 3);
    EXPECT_EQ(api.BINDelete(&noLength), type() == 0 ? 1001 : 3);
    EXPECT_EQ(api.BINDelete(nullptr), 1001);
}
