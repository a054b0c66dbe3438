// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Start a toolkit, ask for its version, and say what went wrong.
// The words: library folder.
#include <sigildesk/crypto.h>
#include <sigildesk/handles.h>

#include <cstdio>

int main(int, char** words)
{
    sigildesk::CryptoHandle crypto;
    BINSTR data = {};
    char version[1024] = "";
    unsigned char text[] = "a contract";
    const bool failed =
        sigildesk::initialise(crypto, SIGIL_TOOLKIT_MAKER, words[1]) ||
        HV_GetVersion(crypto.get(), sizeof version, version) ||
        HV_BINSTR_SetData(crypto.get(), text, sizeof text - 1, &data);
    std::printf("%s, %d bytes\n", version, data.nLength);
    char reason[2049] = "";
    if (CertLoad(crypto.get(), &data) != 0)
        HV_GetErrInfo2(crypto.get(), 2048, reason);
    std::printf("not a certificate: %s\n", reason);
    HV_BINSTR_Delete(crypto.get(), &data);
    return failed ? 1 : 0;
}
