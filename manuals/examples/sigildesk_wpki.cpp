// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Wireless messages need a licensed toolkit; a host is prepared for one
// without. The words: library folder, certificate.
#include <sigildesk/crypto.h>
#include <sigildesk/handles.h>
#include <sigildesk/open_toolkit.h>

#include <cstdio>

int main(int, char** words)
{
    sigildesk::CryptoHandle crypto;
    BINSTR certificate = {};
    int status =
        sigildesk::initialise(crypto, SIGIL_TOOLKIT_MAKER, words[1]);
    if (status == 0)
        status =
            MediaDiskReadCert(crypto.get(), words[2], 0, &certificate);
    if (status == 0)
        status = WPKIVerifyCert(crypto.get(), &certificate);
    HV_BINSTR_Delete(crypto.get(), &certificate);
    SigilCodeText said = {};
    sigil_code_text(status, SIGIL_LANGUAGE_ENGLISH, &said);
    std::printf("%d: %s\n", status, said.sentence);
    return status == 0 || status == SIGIL_TK_NOT_OFFERED ? 0 : 1;
}
