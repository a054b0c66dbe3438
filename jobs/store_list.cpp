// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "jobs/store_list.h"

#include "certlist/entry.h"
#include "jobs/failure.h"
#include "jobs/read_file.h"

#include <sigildesk/certlist.h>

namespace host {

namespace {

constexpr Words mediumTooLong{"{} is longer than 259 bytes", "{} 경로가 259바이트보다 깁니다"};

/** The list processor for as long as it is used. */
class Processor {
public:
    explicit Processor(const Setting& setting)
    {
        std::string folder = setting.folder;
        const int code =
            CLP_Initalize(&m_handle, nullptr, setting.toolkit, static_cast<int>(setting.language()), folder.data());
        if (code == SIGIL_SUCCESS)
            return;
        CLP_UnInitalize(m_handle);
        // A processor without its parts has no handle to them: it lacked memory.
        throw Failure::ofCode(code == SIGIL_NO_HANDLE ? static_cast<int>(SIGIL_NO_MEMORY) : code, folder);
    }
    ~Processor() { CLP_UnInitalize(m_handle); }
    Processor(const Processor&) = delete;
    Processor& operator=(const Processor&) = delete;

    void* handle() const { return m_handle; }
    static void check(int code)
    {
        if (code != SIGIL_SUCCESS)
            throw Failure::ofCode(code);
    }

private:
    void* m_handle = nullptr;
};

} // namespace

tagLOADCERTOPT everything()
{
    tagLOADCERTOPT all{};
    all.nPKITypes = SIGIL_FAMILY_GPKI | SIGIL_FAMILY_NPKI | SIGIL_FAMILY_MPKI | SIGIL_FAMILY_PPKI;
    return all;
}

void mustBeMedium(const std::string& folder)
{
    mustExist(folder);
    if (folder.size() >= sizeof(tagDRIVEINFO::szMountDir))
        throw Failure(failed, "path_too_long", mediumTooLong, {folder});
}

std::vector<Certificate> storeList(const Setting& setting, std::string folder)
{
    const Processor processor(setting);
    tagLOADCERTOPT all = everything();
    Processor::check(CLP_SetType(processor.handle(), &all));
    Processor::check(CLP_SetMediaType(processor.handle(),
        folder.empty() ? SIGIL_MEDIUM_HARD_DISK : SIGIL_MEDIUM_REMOVABLE_DISK, folder.data(), 0));
    const int code = CLP_LoadCertList(processor.handle());
    if (code == SIGIL_NO_CERTIFICATE)
        return {};
    Processor::check(code);
    std::vector<Certificate> list;
    sigil::ScratchEntry entry;
    for (int i = 0; i < CLP_GetCertCount(processor.handle()); ++i) {
        entry.clear();
        Processor::check(CLP_GetCertInfo(processor.handle(), i, &*entry));
        list.push_back(certificateOf(*entry));
        list.back().index = i;
        list.back().medium = folder.empty() ? "disk" : folder;
    }
    return list;
}

} // namespace host
