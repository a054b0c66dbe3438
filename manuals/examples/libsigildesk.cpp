// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// All faces by one header.
#include <sigildesk/sigildesk.h>

#include <cstdio>

int main(int, char** words)
{
    sigildesk::CryptoHandle crypto;
    const int status =
        sigildesk::initialise(crypto, SIGIL_TOOLKIT_GPKI, words[1]);
    char version[1024] = "";
    if (status == 0)
        HV_GetVersion(crypto.get(), sizeof version, version);
    std::printf("%d %s\n", status, version);
    return status;
}
