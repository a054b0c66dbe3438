// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// What scripts/instructions counts: every export of the façade on both toolkit types, over toolkits whose functions do
// nothing, and what users wait for. Texts, names and dates are the same in every run.

#include "bench/instructions/counted.h"

#include "foundation/environment.h"
#include "tests/facade/handle.h"
#include "tests/facade/member.h"
#include "tests/support/files.h"
#include "tests/support/sample_store.h"

#include <sigildesk/codes.h>
#include <sigildesk/convert_utf8.h>
#include <sigildesk/handles.h>
#include <sigildesk/profile.h>

#include <dlfcn.h>

#include <stdexcept>

namespace {

/** So many that what surrounds the calls does not count. */
constexpr int calls = 100;

std::string home; // what the injected environment answers

/** Throws unless @p succeeded: a call that fails early would count as a fast one. */
void expect(bool succeeded, const char* what)
{
    if (!succeeded)
        throw std::runtime_error(what);
}

/** A call of every export, and beside it the bare look-up of the symbols that it reaches. */
void countFacade()
{
    for (const Type& type : bothTypes) {
        const std::string prefix(type.prefix);
        const std::string file = prefix == "HVTK_" ? "/libHVCToolkitV30.so" : "/libgpkiapi_v15.so";
        const Handle handle(type.number, DOUBLES_SILENT_FOLDER);
        expect(handle.result() == SIGIL_SUCCESS, "HV_Initalize");
        void* library = dlopen((DOUBLES_SILENT_FOLDER + file).c_str(), RTLD_LAZY);
        for (const Member& member : allMembers()) {
            if (!member.isOn(type.number))
                continue;
            Values values;
            counted(calls, "facade " + prefix + " " + member.name, [&] { member.call(handle, values, calls); });
            const std::vector<std::string> symbols = member.symbolsOn(type.number);
            counted(calls, "bare " + prefix + " " + member.name, [&] {
                for (int i = 0; i < calls; ++i)
                    for (const std::string& symbol : symbols)
                        dlsym(library, symbol.c_str());
            });
        }
        dlclose(library);
    }
}

void countTexts()
{
    ConvertUTF8 convert;
    std::string utf8;
    for (int i = 0; i < 1000; ++i)
        utf8 += i % 7 == 6 ? " " : "인";
    std::string cp949(utf8.size(), '\0');
    int length = 0;
    counted(1, "text utf8-to-cp949 1,000-characters", [&] {
        expect(convert.utf82ascii(utf8.data(), static_cast<int>(utf8.size()), cp949.data(), length) == 0,
            "utf82ascii");
    });
    std::string back(3 * cp949.size(), '\0');
    counted(1, "text cp949-to-utf8 1,000-characters",
        [&] { expect(convert.ascii2utf8(cp949.data(), length, back.data(), length) == 0, "ascii2utf8"); });
}

void countProfile()
{
    const TemporaryFolder folder;
    std::string lines = "[UserInterface]\n";
    for (int i = 0; i < 400; ++i)
        lines += "DLG_SELECTCERT_TEXT_" + std::to_string(1000 + i) + " = a text of the usual length\n";
    std::string path = folder.write("KOR.ini", lines);
    char section[] = "UserInterface";
    char key[] = "DLG_SELECTCERT_TEXT_1200";
    char none[] = "";
    char out[1024];
    counted(1, "profile lookup 400-lines", [&] {
        expect(FileGetPrivateProfileString(section, key, none, out, sizeof(out), path.data()) > 0, "lookup");
    });
}

sigildesk::ProcessorHandle processor()
{
    sigildesk::ProcessorHandle clp;
    std::string folder = SIGILDESK_LIBRARY_FOLDER;
    expect(sigildesk::initialise(clp, SIGIL_TOOLKIT_MAKER, SIGIL_LANGUAGE_KOREAN, folder.data()) == SIGIL_SUCCESS,
        "CLP_Initalize");
    return clp;
}

void countStarts()
{
    counted(1, "start facade HV_Initalize", [] {
        const Handle handle(SIGIL_TOOLKIT_MAKER, SIGILDESK_LIBRARY_FOLDER);
        expect(handle.result() == SIGIL_SUCCESS, "HV_Initalize");
    });
    counted(1, "start processor CLP_Initalize", [] { processor(); });
}

void countListing()
{
    constexpr int certificates = 20;
    const SampleStore store({"--count", std::to_string(certificates)});
    home = store.folder().string();
    sigil::environment().homeFolder = [] { return home; };
    const sigildesk::ProcessorHandle clp = processor();
    tagLOADCERTOPT options{};
    options.nPKITypes = SIGIL_FAMILY_NPKI;
    CLP_SetType(clp.get(), &options);
    CLP_SetMediaType(clp.get(), SIGIL_MEDIUM_HARD_DISK, nullptr, 0);
    counted(1, "list CLP_LoadCertList 20-certificates", [&] {
        CLP_LoadCertList(clp.get());
        expect(CLP_GetCertCount(clp.get()) == certificates, "CLP_LoadCertList");
    });
}

} // namespace

int main()
{
    countFacade();
    countTexts();
    countProfile();
    countStarts();
    countListing();
}
