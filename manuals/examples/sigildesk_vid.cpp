// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Does an identity number belong to a certificate?
// The words: library folder, certificate, key, password, identity
// number.
#include <sigildesk/crypto.h>
#include <sigildesk/handles.h>

#include <cstdio>

int main(int, char** words)
{
    sigildesk::CryptoHandle crypto;
    BINSTR certificate = {}, key = {}, random = {};
    const bool failed =
        sigildesk::initialise(crypto, SIGIL_TOOLKIT_MAKER, words[1]) ||
        MediaDiskReadCert(crypto.get(), words[2], 0, &certificate) ||
        MediaDiskReadPriKey(crypto.get(), words[3], words[4], 0, &key) ||
        VIDGetRandomFromPriKey(crypto.get(), &key, &random) ||
        VIDVerify(crypto.get(), &certificate, &random, words[5]);
    std::printf("%s\n", failed ? "it does not" : "it does");
    HV_BINSTR_Delete(crypto.get(), &random);
    HV_BINSTR_Delete(crypto.get(), &key);
    HV_BINSTR_Delete(crypto.get(), &certificate);
    return failed ? 1 : 0;
}
