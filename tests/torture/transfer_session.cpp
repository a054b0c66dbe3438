// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "tests/torture/sessions.h"

#include "certlist/processor.h"

#include <sigildesk/certlist.h>

#include <array>
#include <memory>
#include <new>

namespace torture {
namespace {

/** What the calls are given, ready before the session. */
struct Inputs {
    explicit Inputs(Materials& m)
        : cert(m.signCert)
        , key(m.plainKey)
        , kmCert(m.kmCert)
        , kmKey(m.plainKmKey)
        , library(m.library)
        , pfx(m.certificate().at("pfx"))
        , exported(m.store().folder() / "exported.pfx")
        , disk(m.store().folder() / "disk")
    {
        options.nPKITypes = SIGIL_FAMILY_NPKI | SIGIL_FAMILY_GPKI;
        std::filesystem::create_directory(disk);
    }
    std::string cert, key, kmCert, kmKey, library, pfx, exported, disk;
    tagLOADCERTOPT options{};
    void* list = nullptr;
};

int size(const std::string& bytes) { return static_cast<int>(bytes.size()); }

int import(Inputs& in)
{
    std::array<char*, 4> parts{};
    std::array<int, 4> lengths{};
    const int code = CLP_ImportPFX(in.list, in.pfx.data(), password, &parts[0], &lengths[0], &parts[1], &lengths[1],
        &parts[2], &lengths[2], &parts[3], &lengths[3]);
    for (char*& part : parts)
        CLP_MemFree(in.list, reinterpret_cast<void**>(&part));
    return code;
}

/** As the dialogs ask for it: no function of the boundary does. */
int changePassword(Inputs& in)
{
    if (!in.list)
        return SIGIL_NO_HANDLE;
    try {
        return static_cast<CCertListProcInterface*>(in.list)->ChangePassword(0, password, otherPassword);
    } catch (const std::bad_alloc&) {
        return SIGIL_NO_MEMORY;
    }
}

/** Without a toolkit no key is known to belong to its certificate; without loaders there is no medium. */
Codes transferCodes()
{
    Codes codes = listCodes();
    codes.consequences.insert({SIGIL_PAIR_MISMATCH, SIGIL_NOT_ON_THIS_MEDIUM});
    return codes;
}

} // namespace

Session transferSession(Materials& materials, int toolkit)
{
    useStore(materials);
    std::vector<Step> steps;
    const auto add = adderOf(steps, std::make_shared<Inputs>(materials));
    add("CLP_Initalize", [toolkit](Inputs& in) {
        const int code = CLP_Initalize(&in.list, nullptr, toolkit, SIGIL_LANGUAGE_KOREAN, in.library.data());
        CLP_SetType(in.list, &in.options);
        CLP_SetMediaType(in.list, SIGIL_MEDIUM_HARD_DISK, nullptr, 0);
        return code;
    });
    add("CLP_LoadCertList", [](Inputs& in) { return CLP_LoadCertList(in.list); });
    add("CLP_ExportPFX", [](Inputs& in) { return CLP_ExportPFX(in.list, 0, password, in.exported.data()); });
    add("CLP_ImportPFX", import);
    add("CLP_CopyforSetData", [](Inputs& in) {
        return CLP_CopyforSetData(in.list, in.cert.data(), size(in.cert), in.key.data(), size(in.key),
            in.kmCert.data(), size(in.kmCert), in.kmKey.data(), size(in.kmKey));
    });
    add("CLP_CopyCertToDISK", [](Inputs& in) {
        return CLP_CopyCertToDISK(in.list, SIGIL_MEDIUM_REMOVABLE_DISK, in.disk.data(), password);
    });
    add("CLP_CopySelCertToDISK", [](Inputs& in) {
        return CLP_CopySelCertToDISK(
            in.list, SIGIL_MEDIUM_HARD_DISK, 0, SIGIL_MEDIUM_REMOVABLE_DISK, in.disk.data(), password);
    });
    add("CLP_DeleteCert", [](Inputs& in) { return CLP_DeleteCert(in.list, 1, nullptr, password); });
    add("ChangePassword", changePassword);
    add("CLP_UnInitalize", [](Inputs& in) { return CLP_UnInitalize(in.list); });
    return {std::move(steps), transferCodes(), materials.store().folder()};
}

} // namespace torture
