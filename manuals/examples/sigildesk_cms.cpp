// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Sign a text into a message, verify the message and read its content.
// The words: library folder, certificate, key, password.
#include <sigildesk/crypto.h>
#include <sigildesk/handles.h>

#include <cstdio>

int main(int, char** words)
{
    sigildesk::CryptoHandle crypto;
    BINSTR certificate = {}, key = {}, data = {}, message = {},
           content = {};
    unsigned char text[] = "a contract";
    char now[] = ""; // the time of the call
    int signers = 0;
    const bool failed =
        sigildesk::initialise(crypto, SIGIL_TOOLKIT_MAKER, words[1]) ||
        MediaDiskReadCert(crypto.get(), words[2], 0, &certificate) ||
        MediaDiskReadPriKey(crypto.get(), words[3], words[4], 0, &key) ||
        HV_BINSTR_SetData(crypto.get(), text, sizeof text - 1, &data) ||
        CMSMakeSignedData(
            crypto.get(), 0, &certificate, &key, &data, now, &message) ||
        CMSProcessSignedData(
            crypto.get(), 0, &message, &content, &signers);
    std::printf("%d signer: %.*s\n", signers, content.nLength,
        reinterpret_cast<char*>(content.pData));
    HV_BINSTR_Delete(crypto.get(), &content);
    HV_BINSTR_Delete(crypto.get(), &message);
    HV_BINSTR_Delete(crypto.get(), &data);
    HV_BINSTR_Delete(crypto.get(), &key);
    HV_BINSTR_Delete(crypto.get(), &certificate);
    return failed ? 1 : 0;
}
