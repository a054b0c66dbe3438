// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// The handle's life cycle, settings and byte strings.

#include "facade/backends/gpki_wrap.h"
#include "facade/backends/hvtk_wrap.h"
#include "facade/wrapper_api.h"
#include "tests/doubles/recorder.h"
#include "tests/doubles/variant.h"
#include "tests/facade/handle.h"
#include "tests/facade/member.h"

#include <gtest/gtest.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <new>

#include <dlfcn.h>

// The linker sends every library that the test program loads here.
extern "C" void* __real_dlopen(const char* path, int how);
extern "C" void* __wrap_dlopen(const char* path, int how);

namespace {

bool refuseAllocation = false;
int loadingError = 0; // of the loader, which then loads nothing

/** The name of the symbols called, in order. */
std::vector<std::string> symbolsCalled()
{
    std::vector<std::string> names;
    for (const doubles::Call& call : doubles::calls())
        names.push_back(call.symbol);
    return names;
}

} // namespace

// The handle is allocated with this operator; a test refuses it once.
void* operator new(std::size_t size, const std::nothrow_t&) noexcept
{
    return refuseAllocation ? nullptr : ::operator new(size);
}

extern "C" void* __wrap_dlopen(const char* path, int how)
{
    if (loadingError == 0)
        return __real_dlopen(path, how);
    errno = loadingError;
    return nullptr;
}

TEST(Initalize, TellsALibraryThatDoesNotLoadFromALackOfMemory)
{
    char folder[] = DOUBLES_FOLDER;
    const auto initialised = [&](int type, int error) {
        void* handle = nullptr;
        loadingError = error;
        const int code = HV_Initalize(&handle, type, folder);
        loadingError = 0;
        HV_Finish(handle);
        return code;
    };
    EXPECT_EQ(initialised(0, ENOENT), 1023);
    EXPECT_EQ(initialised(0, ENOMEM), 1000);
    EXPECT_EQ(initialised(1, ENOENT), 1024);
    EXPECT_EQ(initialised(1, ENOMEM), 1000);
}

TEST(Initalize, RefusesOtherTypesAndLeavesTheVariableAlone)
{
    char folder[] = DOUBLES_FOLDER;
    for (int type : {2, -1, 1000, -2147483647}) {
        void* handle = nullptr;
        EXPECT_EQ(HV_Initalize(&handle, type, folder), 1020);
        EXPECT_EQ(handle, nullptr);
        EXPECT_EQ(HV_Initalize(&handle, type, nullptr), 1020) << "the type is looked at before the folder";
    }
}

TEST(Initalize, RefusesAMissingFolderAndLeavesTheVariableAlone)
{
    char empty[] = "";
    void* handle = nullptr;
    EXPECT_EQ(HV_Initalize(&handle, 0, empty), 1021);
    EXPECT_EQ(HV_Initalize(&handle, 1, nullptr), 1021);
    EXPECT_EQ(handle, nullptr);
}

TEST(Initalize, RefusesANullVariable)
{
    char folder[] = DOUBLES_FOLDER;
    EXPECT_EQ(HV_Initalize(nullptr, 0, folder), 1008);
}

TEST(Initalize, AnswersAFailedAllocation)
{
    char folder[] = DOUBLES_FOLDER;
    void* handle = nullptr;
    refuseAllocation = true;
    EXPECT_EQ(HV_Initalize(&handle, 0, folder), 1000);
    refuseAllocation = false;
    EXPECT_EQ(handle, nullptr);
}

TEST(Initalize, OperationRepeatsTheChecks)
{
    CWrapperAPI api;
    char folder[] = DOUBLES_FOLDER;
    char empty[] = "";
    EXPECT_EQ(api.Initalize(2, folder), 1020);
    EXPECT_EQ(api.Initalize(-1, empty), 1020);
    EXPECT_EQ(api.Initalize(0, empty), 1021);
    EXPECT_EQ(api.Initalize(1, nullptr), 1021);
    EXPECT_FALSE(api.CheckInit());
}

TEST(Handle, NullIsFinishedQuietly) { EXPECT_NO_FATAL_FAILURE(HV_Finish(nullptr)); }

TEST(Handle, BindsAnewWithoutEndingTheEarlierBackend)
{
    // The earlier backend stays in memory on purpose. The test reaches it through the object's layout and frees it.
    struct Layout {
        int type;
        char folder[260];
        CHVTKWrap* maker;
        CGPKIWrap* gpki;
    };
    static_assert(sizeof(Layout) == sizeof(CWrapperAPI));
    doubles::reset();
    Handle handle(0, DOUBLES_FOLDER);
    CHVTKWrap* first = nullptr;
    std::memcpy(&first, static_cast<char*>(static_cast<void*>(handle)) + offsetof(Layout, maker), sizeof first);
    const std::unique_ptr<CHVTKWrap> owned(first);

    void* same = handle;
    char folder[] = DOUBLES_FOLDER;
    EXPECT_EQ(HV_Initalize(&same, 0, folder), 0);
    EXPECT_EQ(same, static_cast<void*>(handle));
    EXPECT_EQ(doubles::callsOf("HVTK_API_Init").size(), 2U);
    EXPECT_TRUE(doubles::callsOf("HVTK_API_Finish").empty());

    doubles::forgetCalls();
    EXPECT_EQ(first->FreeCaPubs(), 0) << "the earlier backend still works";
    EXPECT_EQ(CertUnLoad(handle), 0);
    ASSERT_EQ(doubles::calls().size(), 2U);
    EXPECT_NE(doubles::calls()[0].context, doubles::calls()[1].context);
}

TEST(Handle, CanBeBoundToTheOtherToolkit)
{
    doubles::reset();
    Handle handle(0, DOUBLES_FOLDER);
    void* same = handle;
    char folder[] = DOUBLES_FOLDER;
    EXPECT_EQ(HV_Initalize(&same, 1, folder), 0);
    EXPECT_EQ(CertUnLoad(handle), 0);
    EXPECT_EQ(doubles::calls().back().symbol, "GPKI_CERT_Unload");
}

TEST(Handle, ObjectWithoutABackendIsNotInitialised)
{
    CWrapperAPI api;
    BINSTR empty{};
    char text[8] = {};
    EXPECT_EQ(CertLoad(&api, &empty), 1008) << "before the arguments are looked at";
    EXPECT_EQ(CertGetUID(&api, 8, nullptr), 1008);
    EXPECT_EQ(CertGetValidity(&api, 0, nullptr, 0, nullptr), 1008);
    EXPECT_EQ(CertGetPubKeyInfo(&api, nullptr, nullptr, 0, nullptr, nullptr), 1008);
    EXPECT_EQ(CertAddCert(&api, &empty, nullptr), 1008);
    EXPECT_EQ(PFXExport(&api, 0, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr), 1008);
    EXPECT_EQ(HV_GetErrInfo(&api, 8, text), 1008);
    EXPECT_EQ(HV_GetErrInfo2(&api, 8, text), 1008);
    EXPECT_EQ(HV_GetVersion(&api, 8, text), 1008);
    EXPECT_EQ(HV_SetOption(&api, 1), 1008);
    EXPECT_EQ(HV_BINSTR_Create(&api, &empty), 1008);
}

class FrameTest : public testing::TestWithParam<Type> {
protected:
    FrameTest() { doubles::reset(); }
    std::string symbol(const char* name) const { return GetParam().symbol(name); }
    Handle open(const std::string& folder = DOUBLES_FOLDER) const { return {GetParam().number, folder}; }
};

INSTANTIATE_TEST_SUITE_P(BothTypes, FrameTest, testing::ValuesIn(bothTypes));

TEST_P(FrameTest, InitGetsTheAddressOfTheContextAndTheFolder)
{
    std::string folder;
    doubles::answer(symbol("API_Init"), [&](const doubles::Call& call) {
        folder = call.pointer<char>(1);
        *call.pointer<void*>(0) = &folder;
        return 0;
    });
    const Handle handle = open();
    EXPECT_EQ(handle.result(), 0);
    EXPECT_EQ(folder, DOUBLES_FOLDER);
    CertUnLoad(handle);
    EXPECT_EQ(doubles::calls().back().context, &folder);
}

TEST_P(FrameTest, MissingLibraryIsAnsweredByEveryLaterCall)
{
    TemporaryFolder folder;
    const Handle handle = open(folder.chars());
    EXPECT_NE(static_cast<void*>(handle), nullptr);
    EXPECT_EQ(handle.result(), GetParam().notLoaded);
    unsigned char byte = 1;
    BINSTR cert{&byte, 1};
    char text[16] = {};
    EXPECT_EQ(CertLoad(handle, &cert), GetParam().notLoaded);
    EXPECT_EQ(HV_GetErrInfo(handle, 16, text), GetParam().notLoaded);
    EXPECT_EQ(HV_GetErrInfo(handle, 16, nullptr), GetParam().notLoaded);
    EXPECT_EQ(HV_GetErrInfo2(handle, 16, text), 0);
    EXPECT_TRUE(doubles::calls().empty());
}

TEST_P(FrameTest, MissingInitFunctionLeavesTheLibraryOpen)
{
    doubles::FolderWithout folder(symbol("API_Init"));
    const Handle handle = open(folder.chars());
    EXPECT_EQ(handle.result(), 1003);
    EXPECT_EQ(CertUnLoad(handle), 0);
    EXPECT_EQ(doubles::calls().back().context, nullptr);
}

TEST_P(FrameTest, FailedInitKeepsTheErrorTextAndTheLibrary)
{
    doubles::answer(symbol("API_Init"), 4711);
    const Handle handle = open();
    EXPECT_EQ(handle.result(), 4711);
    char text[64] = {};
    EXPECT_EQ(HV_GetErrInfo2(handle, 63, text), 0);
    EXPECT_EQ(text, doubles::errorText());
    EXPECT_EQ(CertUnLoad(handle), 0);
}

TEST_P(FrameTest, FinishDoesNotCallTheToolkit)
{
    {
        const Handle handle = open();
        doubles::forgetCalls();
    }
    EXPECT_TRUE(doubles::calls().empty());
}

TEST_P(FrameTest, ThoroughFinishOfTheObjectCallsTheToolkitWithTheContextsAddress)
{
    void* context = nullptr;
    doubles::answer(symbol("API_Finish"), [&](const doubles::Call& call) {
        context = *call.pointer<void*>(0);
        return 9;
    });
    CWrapperAPI api;
    char folder[] = DOUBLES_FOLDER;
    ASSERT_EQ(api.Initalize(GetParam().number, folder), 0);
    CertUnLoad(&api);
    void* const used = doubles::calls().back().context;
    EXPECT_EQ(api.Finish(), 0);
    EXPECT_EQ(context, used);
    EXPECT_FALSE(api.CheckInit());
    EXPECT_EQ(CertUnLoad(&api), 1008);
    EXPECT_EQ(api.Finish(), 0) << "nothing left to end";
    EXPECT_EQ(doubles::callsOf(symbol("API_Finish")).size(), 1U);
}

TEST_P(FrameTest, LongFolderIsCut)
{
    // The path of the library is cut to 258 characters. A folder that goes on after a whole library path of that length
    // is therefore opened, and the toolkit sees its first 259 characters.
    const std::string library = GetParam().number == 0 ? "/libHVCToolkitV30.so" : "/libgpkiapi_v15.so";
    std::string path = DOUBLES_FOLDER;
    if ((258 - path.size() - library.size()) % 2)
        path = "/" + path;
    while (path.size() + library.size() < 258)
        path = "/." + path;
    path += library;
    ASSERT_EQ(path.size(), 258U);
    std::string seen;
    doubles::answer(symbol("API_Init"), [&](const doubles::Call& call) {
        seen = call.pointer<char>(1);
        return 0;
    });
    const Handle handle = open(path + std::string(300 - path.size(), 'x'));
    EXPECT_EQ(handle.result(), 0);
    EXPECT_EQ(seen, path + "x");
}

TEST_P(FrameTest, LibraryIsBoundLazilyAndClosed)
{
    const std::string file = GetParam().number == 0 ? "/libHVCToolkitV30.so" : "/libgpkiapi_v15.so";
    const auto isLoaded = [&] {
        void* library = dlopen((DOUBLES_FOLDER + file).c_str(), RTLD_LAZY | RTLD_NOLOAD);
        return library && dlclose(library) == 0;
    };
    EXPECT_FALSE(isLoaded());
    {
        const Handle handle = open();
        EXPECT_TRUE(isLoaded());
    }
    EXPECT_FALSE(isLoaded());
}

TEST_P(FrameTest, HashAlgorithmCrosses)
{
    const Handle handle = open();
    EXPECT_EQ(HV_SetHashAlg(handle, 12), 0);
    EXPECT_EQ(doubles::calls().back().symbol, symbol("API_SetHashAlgo"));
    EXPECT_EQ(doubles::calls().back().integer(0), 12);
}

TEST_P(FrameTest, CaPubsCross)
{
    const Handle handle = open();
    const std::string family = GetParam().number == 0 ? "HVTK_CERT_" : "GPKI_API_";
    unsigned char byte = 1;
    BINSTR caPubs{&byte, 1};
    BINSTR noData{nullptr, 1};
    BINSTR noLength{&byte, 0};
    EXPECT_EQ(HV_SetCaPubs(handle, &caPubs), 0);
    EXPECT_EQ(doubles::calls().back().symbol, family + "SetCaPubs");
    EXPECT_EQ(doubles::calls().back().pointer<BINSTR>(0), &caPubs);
    EXPECT_EQ(HV_FreeCaPubs(handle), 0);
    EXPECT_EQ(doubles::calls().back().symbol, family + "FreeCaPubs");
    doubles::forgetCalls();
    EXPECT_EQ(HV_SetCaPubs(handle, &noData), 1001);
    EXPECT_EQ(HV_SetCaPubs(handle, &noLength), 1001);
    EXPECT_TRUE(doubles::calls().empty());
}

TEST_P(FrameTest, ByteStringsAreCreatedFilledAndReleasedWithoutTheContext)
{
    const Handle handle = open();
    doubles::forgetCalls();
    unsigned char data[] = {1, 2, 3};
    BINSTR bytes{data, 7};
    EXPECT_EQ(HV_BINSTR_Create(handle, &bytes), 0);
    EXPECT_EQ(bytes.nLength, 0);
    EXPECT_EQ(HV_BINSTR_SetData(handle, data, 3, &bytes), 0);
    EXPECT_NE(bytes.pData, data);
    EXPECT_EQ(doubles::liveByteStrings(), 1);
    EXPECT_EQ(HV_BINSTR_Delete(handle, &bytes), 0);
    EXPECT_EQ(doubles::liveByteStrings(), 0);
    EXPECT_EQ(symbolsCalled(),
        (std::vector<std::string>{symbol("BINSTR_Create"), symbol("BINSTR_SetData"), symbol("BINSTR_Delete")}));
    for (const doubles::Call& call : doubles::calls())
        EXPECT_FALSE(call.takesContext);
    EXPECT_EQ(doubles::calls()[1].pointer<unsigned char>(0), data);
    EXPECT_EQ(doubles::calls()[1].integer(1), 3);
    EXPECT_EQ(doubles::calls()[1].pointer<BINSTR>(2), &bytes);
}

TEST_P(FrameTest, ByteStringArgumentsAreChecked)
{
    const Handle handle = open();
    doubles::forgetCalls();
    unsigned char data[] = {1, 2, 3};
    BINSTR bytes{};
    EXPECT_EQ(HV_BINSTR_Create(handle, nullptr), 1001);
    EXPECT_EQ(HV_BINSTR_SetData(handle, nullptr, 3, &bytes), 1001);
    EXPECT_EQ(HV_BINSTR_SetData(handle, data, 0, &bytes), 1001);
    EXPECT_EQ(HV_BINSTR_SetData(handle, data, -1, &bytes), 1001);
    EXPECT_EQ(HV_BINSTR_SetData(handle, data, 3, nullptr), 1001);
    EXPECT_EQ(HV_BINSTR_Delete(handle, nullptr), 1001);
    EXPECT_TRUE(doubles::calls().empty());
}

TEST(Handle, NothingIsTouchedBesideANull)
{
    const auto bytes = reinterpret_cast<BINSTR*>(Values::wildAddress);
    const auto text = reinterpret_cast<char*>(Values::wildAddress);
    EXPECT_EQ(HV_GetErrInfo(nullptr, 8, text), 1008);
    EXPECT_EQ(HV_GetErrInfo2(nullptr, 8, text), 1008);
    EXPECT_EQ(HV_GetVersion(nullptr, 8, text), 1008);
    EXPECT_EQ(HV_SetConfFile(nullptr, text), 1008);
    EXPECT_EQ(HV_SetCaPubs(nullptr, bytes), 1008);
    EXPECT_EQ(HV_Str2Time(nullptr, text, reinterpret_cast<long*>(Values::wildAddress)), 1008);
    EXPECT_EQ(HV_BINSTR_Create(nullptr, bytes), 1008);
    EXPECT_EQ(HV_BINSTR_Delete(nullptr, bytes), 1008);
    EXPECT_EQ(HV_BINSTR_SetData(nullptr, reinterpret_cast<unsigned char*>(Values::wildAddress), 1, bytes), 1008);
}

TEST_P(FrameTest, DeletingAnEmptyRecordReachesNoToolkit)
{
    const Handle handle = open();
    doubles::forgetCalls();
    unsigned char byte = 1;
    BINSTR empty{};
    BINSTR claimed{&byte, 0};
    BINSTR negative{&byte, -1};
    EXPECT_EQ(HV_BINSTR_Delete(handle, &empty), 0);
    EXPECT_EQ(HV_BINSTR_Delete(handle, &claimed), 0);
    EXPECT_EQ(HV_BINSTR_Delete(handle, &negative), 0);
    EXPECT_TRUE(doubles::calls().empty());
    EXPECT_EQ(HV_BINSTR_Delete(nullptr, &empty), 1008) << "the handle comes first";
    CWrapperAPI unbound;
    EXPECT_EQ(HV_BINSTR_Delete(&unbound, &empty), 0) << "nothing to do needs no toolkit";
}

TEST_P(FrameTest, DeletingARecordWithoutDataIsTheToolkitsMatterOnlyOnGpki)
{
    const Handle handle = open();
    doubles::forgetCalls();
    doubles::answer(symbol("BINSTR_Delete"), 0);
    BINSTR noData{nullptr, 5};
    EXPECT_EQ(HV_BINSTR_Delete(handle, &noData), GetParam().number == 0 ? 1001 : 0);
    EXPECT_EQ(doubles::calls().size(), GetParam().number == 0 ? 0U : 1U);
}

TEST(MakerFrame, VersionComesWithoutACapacity)
{
    doubles::reset();
    const Handle handle(0, DOUBLES_FOLDER);
    char buffer[32];
    std::memset(buffer, 'z', sizeof buffer);
    doubles::answer("HVTK_API_GetInfo", [&](const doubles::Call& call) {
        EXPECT_EQ(call.pointer<char>(0), buffer);
        EXPECT_EQ(std::string(buffer, 9), std::string(8, '\0') + "z");
        const char* info = call.pointer<char>(1);
        EXPECT_TRUE(std::all_of(info, info + 1024, [](char c) { return c == 0; }));
        std::strcpy(buffer, "3.0"); // NOLINT: the test's own buffer
        return 0;
    });
    EXPECT_EQ(HV_GetVersion(handle, 1, buffer), 0) << "the length is not used";
    EXPECT_STREQ(buffer, "3.0");
    EXPECT_EQ(HV_GetVersion(handle, 32, nullptr), 1001);
    doubles::answer("HVTK_API_GetInfo", 33);
    EXPECT_EQ(HV_GetVersion(handle, 32, buffer), 33);
}

TEST(MakerFrame, VersionFunctionMayBeMissing)
{
    doubles::FolderWithout folder("HVTK_API_GetInfo");
    const Handle handle(0, folder.chars());
    char buffer[] = "0123456789";
    EXPECT_EQ(HV_GetVersion(handle, 10, buffer), 1003);
    EXPECT_EQ(std::string(buffer, 10), std::string(8, '\0') + "89");
}

TEST(MakerFrame, OnlyAnEmptySettingsFileNamePasses)
{
    doubles::reset();
    const Handle handle(0, DOUBLES_FOLDER);
    doubles::forgetCalls();
    char empty[] = "";
    char name[] = "toolkit.conf";
    EXPECT_EQ(HV_SetConfFile(handle, name), 1001);
    EXPECT_EQ(HV_SetConfFile(handle, nullptr), 1001);
    EXPECT_TRUE(doubles::calls().empty());
    EXPECT_EQ(HV_SetConfFile(handle, empty), 0);
    EXPECT_EQ(doubles::calls().back().symbol, "HVTK_API_SetConfFile");
    EXPECT_EQ(doubles::calls().back().pointer<char>(0), empty);
}

TEST(MakerFrame, LacksOptionsAndTimes)
{
    const Handle handle(0, DOUBLES_FOLDER);
    char text[] = "20200101";
    long time = 0;
    EXPECT_EQ(HV_SetOption(handle, 1), 1003);
    EXPECT_EQ(HV_Str2Time(handle, text, &time), 1003);
    EXPECT_EQ(HV_Str2Time(handle, nullptr, nullptr), 1003);
    const Handle unloaded(0, "/nonexistent");
    EXPECT_EQ(HV_SetOption(unloaded, 1), 1003) << "also when the library is not loaded";
}

TEST(GpkiFrame, VersionComesWithTheCallersCapacity)
{
    doubles::reset();
    const Handle handle(1, DOUBLES_FOLDER);
    char buffer[32] = {};
    EXPECT_EQ(HV_GetVersion(handle, 21, buffer), 0);
    EXPECT_EQ(doubles::calls().back().symbol, "GPKI_API_GetVersion");
    EXPECT_EQ(doubles::calls().back().integer(0), 21);
    EXPECT_EQ(doubles::calls().back().pointer<char>(1), buffer);
    EXPECT_EQ(HV_GetVersion(handle, 21, nullptr), 0) << "a null buffer is the library's to refuse";
    EXPECT_EQ(doubles::callsOf("GPKI_API_GetVersion").size(), 2U);
}

TEST(GpkiFrame, SettingsFileOptionAndTimeCross)
{
    doubles::reset();
    const Handle handle(1, DOUBLES_FOLDER);
    char name[] = "gpki.conf";
    EXPECT_EQ(HV_SetConfFile(handle, name), 0);
    EXPECT_EQ(doubles::calls().back().symbol, "GPKI_API_SetConfFile");
    EXPECT_EQ(doubles::calls().back().pointer<char>(0), name);
    EXPECT_EQ(HV_SetConfFile(handle, nullptr), 1001);

    EXPECT_EQ(HV_SetOption(handle, 31), 0);
    EXPECT_EQ(doubles::calls().back().symbol, "GPKI_API_SetOption");
    EXPECT_EQ(doubles::calls().back().integer(0), 31);

    long time = 0;
    EXPECT_EQ(HV_Str2Time(handle, name, &time), 0);
    EXPECT_EQ(doubles::calls().back().symbol, "GPKI_API_Str2Time");
    EXPECT_EQ(doubles::calls().back().pointer<char>(0), name);
    EXPECT_EQ(doubles::calls().back().pointer<long>(1), &time);
    EXPECT_EQ(HV_Str2Time(handle, name, nullptr), 0) << "the result pointer is not tested";
    EXPECT_EQ(HV_Str2Time(handle, nullptr, &time), 1001);
}
