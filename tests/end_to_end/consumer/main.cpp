// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// A small host, built against the installed tree only: it asks each face of the library one question.

#include <sigildesk/open_toolkit.h>
#include <sigildesk/sigildesk.h>

#include <cstdio>
#include <cstring>
#include <string>

namespace {

// RFC 6234: SHA-256 of "abc".
const char* const kSha256OfAbc = "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad";

bool hashesThroughTheFacade(char* folder)
{
    sigildesk::CryptoHandle crypto;
    if (sigildesk::initialise(crypto, 0, folder) != 0)
        return false;
    void* handle = crypto.get();
    BINSTR data, digest;
    HV_BINSTR_Create(handle, &data);
    HV_BINSTR_Create(handle, &digest);
    unsigned char abc[] = {'a', 'b', 'c'};
    bool good = HV_BINSTR_SetData(handle, abc, 3, &data) == 0 &&
        CRYPTHash(handle, SIGIL_TK_HASH_SHA256, &data, &digest) == 0;
    if (good) {
        CBinary copy(reinterpret_cast<char*>(digest.pData), digest.nLength);
        good = std::strcmp(copy.toHexString(), kSha256OfAbc) == 0;
    }
    HV_BINSTR_Delete(handle, &digest);
    HV_BINSTR_Delete(handle, &data);
    return good;
}

bool opensAProcessor(char* folder)
{
    sigildesk::ProcessorHandle processor;
    return sigildesk::initialise(processor, 0, 1, folder) == 0 && CLP_LoadCertList(processor.get()) == 1001;
}

bool readsACaption(const std::string& folder)
{
    char caption[260] = {};
    std::string file = folder + "/ENG.ini";
    char section[] = "UserInterface", key[] = "DLG_BUTTON_OK", none[] = "";
    return FileGetPrivateProfileString(section, key, none, caption, sizeof caption, &file[0]) > 0;
}

} // namespace

int main(int argc, char** argv)
{
    std::string folder = argc > 1 ? argv[1] : LIBRARY_FOLDER;
    const bool facade = hashesThroughTheFacade(&folder[0]);
    const bool processor = opensAProcessor(&folder[0]);
    const bool caption = readsACaption(folder);
    // The dialogs need a display; that the entry point links is all that is asked of them here.
    const bool dialogs = &ShowUserCert_T != nullptr;
    std::printf("facade %d processor %d caption %d dialogs %d\n", facade, processor, caption, dialogs);
    return facade && processor && caption && dialogs ? 0 : 1;
}
