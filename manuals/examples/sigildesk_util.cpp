// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Put two objects into a list and take the second out.
// The words: library folder, certificate.
#include <sigildesk/crypto.h>
#include <sigildesk/handles.h>

#include <cstdio>

int main(int, char** words)
{
    sigildesk::CryptoHandle crypto;
    BINSTR certificate = {}, list = {}, second = {};
    int count = 0;
    const bool failed =
        sigildesk::initialise(crypto, SIGIL_TOOLKIT_MAKER, words[1]) ||
        MediaDiskReadCert(crypto.get(), words[2], 0, &certificate) ||
        UTILAddObject(crypto.get(), &certificate, &list) ||
        UTILAddObject(crypto.get(), &certificate, &list) ||
        UTILGetObjectCount(crypto.get(), &list, &count) ||
        UTILGetObject(crypto.get(), &list, 1, &second);
    std::printf(
        "%d objects, the second of %d bytes\n", count, second.nLength);
    HV_BINSTR_Delete(crypto.get(), &second);
    HV_BINSTR_Delete(crypto.get(), &list);
    HV_BINSTR_Delete(crypto.get(), &certificate);
    return failed ? 1 : 0;
}
