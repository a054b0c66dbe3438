// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Any bytes as a certificate that the list reads: its fields, texts and judgement, and the records that show them.

#include "fuzz/machine.h"

#include <sigildesk/certlist.h>
#include <sigildesk/handles.h>

#include <cstring>
#include <memory>

namespace {

void read(void* list, std::string certificate)
{
    std::string key = fuzz::samples()[1];
    const int code = CLP_LoadMemoryCert(list, certificate.data(), static_cast<int>(certificate.size()), key.data(),
        static_cast<int>(key.size()), nullptr, 0, nullptr, 0);
    fuzz::requireStated(code, "CLP_LoadMemoryCert");
    const auto entry = std::make_unique<tagCERTINFO>();
    if (code != SIGIL_SUCCESS || CLP_GetCertCount(list) == 0 ||
        CLP_GetCertInfo(list, 0, entry.get()) != SIGIL_SUCCESS)
        return;
    require(entry->nSignCertLen == static_cast<int>(certificate.size()), "an entry holds the whole certificate");
    require(std::memchr(entry->szSubjectDN, '\0', sizeof entry->szSubjectDN), "a subject is terminated");
    require(std::strlen(entry->szValidFrom) <= 10 && std::strlen(entry->szValidTo) <= 10, "a day is a day");
}

} // namespace

FUZZ_TARGET(certlist_memory, input)
{
    static const fuzz::Machine machine;
    for (const int type : {SIGIL_TOOLKIT_MAKER, SIGIL_TOOLKIT_GPKI}) {
        sigildesk::ProcessorHandle handle;
        require(sigildesk::initialise(handle, type, SIGIL_LANGUAGE_KOREAN, fuzz::libraryFolder().data()) ==
                    SIGIL_SUCCESS &&
                CLP_SetMediaType(handle.get(), SIGIL_MEDIUM_MEMORY, nullptr, 0) == SIGIL_SUCCESS,
            "a list can be had");
        read(handle.get(), fuzz::text(input));
    }
}
