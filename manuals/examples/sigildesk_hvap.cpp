// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Fetch an authority's certificate from a web server or a directory.
// The words: library folder. Where no server answers, the code says so.
#include <sigildesk/crypto.h>
#include <sigildesk/handles.h>
#include <sigildesk/open_toolkit.h>

#include <cstdio>

int main(int, char** words)
{
    sigildesk::CryptoHandle crypto;
    BINSTR certificate = {};
    char address[] = "http://127.0.0.1:1/authority.cer";
    int status =
        sigildesk::initialise(crypto, SIGIL_TOOLKIT_MAKER, words[1]);
    if (status == 0)
        status = HVAPGetDataByURL(
            crypto.get(), SIGIL_TK_FETCH_CA_CERT, address, &certificate);
    std::printf("%d, %d bytes\n", status, certificate.nLength);
    HV_BINSTR_Delete(crypto.get(), &certificate);
    return status == 0 || status == SIGIL_TK_FETCH ? 0 : 1;
}
