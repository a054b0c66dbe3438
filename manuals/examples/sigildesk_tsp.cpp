// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Make a request for a time stamp. An authority's address goes to
// TSPSendAndRecv1. The words: library folder.
#include <sigildesk/crypto.h>
#include <sigildesk/handles.h>
#include <sigildesk/open_toolkit.h>

#include <cstdio>

int main(int, char** words)
{
    sigildesk::CryptoHandle crypto;
    BINSTR data = {}, request = {};
    unsigned char text[] = "a contract";
    char policy[] =
        ""; // any; requests of the open toolkit are not signed
    const bool failed =
        sigildesk::initialise(crypto, SIGIL_TOOLKIT_MAKER, words[1]) ||
        HV_BINSTR_SetData(crypto.get(), text, sizeof text - 1, &data) ||
        TSPMakeReqMsg(crypto.get(), &data, SIGIL_TK_HASH_SHA256, policy,
            true, &data, &data, &request);
    std::printf("request of %d bytes\n", request.nLength);
    HV_BINSTR_Delete(crypto.get(), &request);
    HV_BINSTR_Delete(crypto.get(), &data);
    return failed ? 1 : 0;
}
