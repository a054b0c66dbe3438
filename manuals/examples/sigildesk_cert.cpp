// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Whose is a certificate, and until when?
// The words: library folder, certificate.
#include <sigildesk/crypto.h>
#include <sigildesk/handles.h>

#include <cstdio>

int main(int, char** words)
{
    sigildesk::CryptoHandle crypto;
    BINSTR certificate = {};
    char subject[1024] = "", from[40] = "", to[40] = "";
    const bool failed =
        sigildesk::initialise(crypto, SIGIL_TOOLKIT_MAKER, words[1]) ||
        MediaDiskReadCert(crypto.get(), words[2], 0, &certificate) ||
        CertLoad(crypto.get(), &certificate) ||
        CertGetSubjectName(crypto.get(), sizeof subject, subject) ||
        CertGetValidity(crypto.get(), 40, from, 40, to);
    std::printf("%s until %s\n", subject, to);
    HV_BINSTR_Delete(crypto.get(), &certificate);
    return failed ? 1 : 0;
}
