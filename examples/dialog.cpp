// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// example-dialog TEXT: lets the user choose a certificate and type its password, and signs the text into a message (CMS)
// with what was chosen.

#include "bytes.h"

#include <sigildesk/codes.h>
#include <sigildesk/dialogs.h>
#include <sigildesk/handles.h>
#include <sigildesk/open_toolkit.h>

#include <QApplication>

#include <cstring>
#include <iostream>
#include <memory>

/** A result holds the private key: it is overwritten before its memory goes. */
struct WipeResult {
    void operator()(tagSELCERTINFO* result) const
    {
        explicit_bzero(result, sizeof *result);
        delete result;
    }
};
using Result = std::unique_ptr<tagSELCERTINFO, WipeResult>;

static int choose(tagSELCERTINFO* chosen)
{
    tagINITOPT init = {};
    std::strncpy(init.szLibraryFolder, LIBRARY_FOLDER, sizeof init.szLibraryFolder - 1);
    init.nLanguage = SIGIL_LANGUAGE_KOREAN;
    const auto load = std::make_unique<tagLOADSELECTCERTOPTION>();
    load->nPKITypes = SIGIL_FAMILY_NPKI | SIGIL_FAMILY_GPKI;
    const auto extra = std::make_unique<tagEXTRAOPTION>();
    return ShowUserCert_T(&init, load.get(), nullptr, extra.get(), chosen);
}

static int sign(const tagSELCERTINFO& chosen, const char* words)
{
    std::string folder = LIBRARY_FOLDER;
    sigildesk::CryptoHandle handle;
    const int code = sigildesk::initialise(handle, SIGIL_TOOLKIT_MAKER, &folder[0]);
    if (code != SIGIL_SUCCESS)
        return code;
    void* crypto = handle.get();
    Bytes certificate(crypto), key(crypto), text(crypto, words), message(crypto);
    HV_BINSTR_SetData(crypto, const_cast<unsigned char*>(chosen.bySignCert), chosen.nSignCertLen, certificate);
    HV_BINSTR_SetData(crypto, const_cast<unsigned char*>(chosen.bySignPriKey), chosen.nSignPriKeyLen, key);
    char now[] = ""; // signed at the time of the call
    const int made = CMSMakeSignedData(crypto, SIGIL_TK_MESSAGE_PLAIN, certificate, key, text, now, message);
    if (made == SIGIL_SUCCESS)
        std::cout << chosen.szSubjectDN << " signed: " << message.content().size() << " bytes\n";
    return made;
}

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    const Result chosen(new tagSELCERTINFO());
    int code = choose(chosen.get());
    if (code == SIGIL_SUCCESS)
        code = sign(*chosen, argc > 1 ? argv[1] : "SigilDesk");
    if (code != SIGIL_SUCCESS)
        std::cerr << (code == SIGIL_CANCELLED ? "cancelled" : "not signed") << " (" << code << ")\n";
    return code == SIGIL_SUCCESS ? 0 : 1;
}
