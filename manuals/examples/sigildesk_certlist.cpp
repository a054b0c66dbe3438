// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// List the certificates of the hard disk and unlock the first.
// The words: library folder, certificate, key, password.
#include <sigildesk/certlist.h>
#include <sigildesk/handles.h>

#include <cstdio>
#include <memory>

int main(int, char** words)
{
    sigildesk::ProcessorHandle list;
    tagLOADCERTOPT options = {};
    options.nPKITypes = SIGIL_FAMILY_NPKI;
    bool failed = sigildesk::initialise(list, SIGIL_TOOLKIT_MAKER,
                      SIGIL_LANGUAGE_ENGLISH, words[1]) ||
        CLP_SetType(list.get(), &options) ||
        CLP_SetMediaType(
            list.get(), SIGIL_MEDIUM_HARD_DISK, nullptr, 0) ||
        CLP_LoadCertList(list.get());
    const int count = failed ? 0 : CLP_GetCertCount(list.get());
    for (int i = 0; i < count; ++i) {
        std::unique_ptr<tagCERTINFO> entry(new tagCERTINFO());
        if (CLP_GetCertInfo(list.get(), i, entry.get()) == 0)
            std::printf("%d until %s\n", i, entry->szValidTo);
    }
    char* buffers[2] = {};
    int lengths[2] = {};
    failed = failed ||
        CLP_DecryptPriKey(list.get(), 0, words[4], &buffers[0],
            &lengths[0], &buffers[1], &lengths[1]);
    std::printf("key of %d bytes\n", lengths[0]);
    for (char*& buffer : buffers)
        CLP_MemFree(list.get(), reinterpret_cast<void**>(&buffer));
    return failed ? 1 : 0;
}
