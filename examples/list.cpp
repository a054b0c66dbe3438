// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// example-list: the NPKI and GPKI certificates of the user's home folder, a line each.

#include <sigildesk/certlist.h>
#include <sigildesk/convert_utf8.h>
#include <sigildesk/handles.h>

#include <cstdio>
#include <cstring>
#include <memory>
#include <string>

/** The library's texts are CP949. */
static std::string utf8(const char* text)
{
    const int length = static_cast<int>(std::strlen(text));
    std::string converted(2 * length + 1, '\0');
    int written = 0;
    if (ConvertUTF8().ascii2utf8(text, length, &converted[0], written) != 0)
        return text;
    converted.resize(written);
    return converted;
}

int main()
{
    std::string folder = LIBRARY_FOLDER;
    sigildesk::ProcessorHandle owner;
    int code = sigildesk::initialise(owner, SIGIL_TOOLKIT_MAKER, SIGIL_LANGUAGE_KOREAN, &folder[0]);
    void* processor = owner.get();

    tagLOADCERTOPT wanted = {};
    wanted.nPKITypes = SIGIL_FAMILY_NPKI | SIGIL_FAMILY_GPKI;
    if (code == SIGIL_SUCCESS)
        code = CLP_SetType(processor, &wanted);
    if (code == SIGIL_SUCCESS)
        code = CLP_SetMediaType(processor, SIGIL_MEDIUM_HARD_DISK, nullptr, 0);
    if (code == SIGIL_SUCCESS)
        code = CLP_LoadCertList(processor);
    if (code != SIGIL_SUCCESS) {
        std::fprintf(stderr, "%s (%d)\n", code == SIGIL_NO_CERTIFICATE ? "no certificate" : "not listed", code);
        return 1;
    }

    for (int i = 0; i < CLP_GetCertCount(processor); ++i) {
        const std::unique_ptr<tagCERTINFO> entry(new tagCERTINFO()); // zero-filled, and too large for the stack
        if (CLP_GetCertInfo(processor, i, entry.get()) == SIGIL_SUCCESS)
            std::printf("%d  %s  %s  %s\n", i, utf8(entry->szSubjectDN).c_str(), utf8(entry->szIssuerName).c_str(),
                entry->szValidTo);
    }
    return 0;
}
