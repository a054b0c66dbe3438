// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// A record is filled with zeros before it is used, and wiped after that.
// The words: library folder.
#include <sigildesk/certlist.h>
#include <sigildesk/handles.h>
#include <sigildesk/records.h>

#include <cstdio>
#include <cstring>
#include <memory>

int main(int, char** words)
{
    sigildesk::ProcessorHandle list;
    tagLOADCERTOPT options = {};
    options.nPKITypes = SIGIL_FAMILY_NPKI | SIGIL_FAMILY_GPKI;
    options.bExcludeExpired = 1;
    const bool failed = sigildesk::initialise(list, 0, 2, words[1]) ||
        CLP_SetType(list.get(), &options) ||
        CLP_SetMediaType(
            list.get(), SIGIL_MEDIUM_HARD_DISK, nullptr, 0) ||
        CLP_LoadCertList(list.get());
    std::unique_ptr<tagCERTINFO> entry(new tagCERTINFO());
    if (!failed && CLP_GetCertInfo(list.get(), 0, entry.get()) == 0)
        std::printf("%s, %s\n", entry->szVersion, entry->szKeyLength);
    explicit_bzero(entry.get(), sizeof *entry);
    return failed ? 1 : 0;
}
