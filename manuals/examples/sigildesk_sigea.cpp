// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Answer a challenge: whoever holds the key is known by the certificate.
// The words: library folder, certificate, key, password.
#include <sigildesk/crypto.h>
#include <sigildesk/handles.h>

#include <cstdio>

int main(int, char** words)
{
    sigildesk::CryptoHandle crypto;
    BINSTR certificate = {}, key = {}, challenge = {}, response = {};
    unsigned char any[] = "-"; // a challenge holds something before
    const bool failed =
        sigildesk::initialise(crypto, SIGIL_TOOLKIT_GPKI, words[1]) ||
        MediaDiskReadCert(crypto.get(), words[2], 0, &certificate) ||
        MediaDiskReadPriKey(crypto.get(), words[3], words[4], 0, &key) ||
        HV_BINSTR_SetData(crypto.get(), any, 1, &challenge) ||
        SIGEAMakeChallenge(crypto.get(), &challenge) ||
        SIGEAMakeResponse(
            crypto.get(), &challenge, &certificate, &key, &response) ||
        SIGEAVerifyResponse(
            crypto.get(), &challenge, &response, &certificate);
    std::printf("%s\n",
        failed ? "somebody else answered" : "the holder answered");
    HV_BINSTR_Delete(crypto.get(), &response);
    HV_BINSTR_Delete(crypto.get(), &challenge);
    HV_BINSTR_Delete(crypto.get(), &key);
    HV_BINSTR_Delete(crypto.get(), &certificate);
    return failed ? 1 : 0;
}
