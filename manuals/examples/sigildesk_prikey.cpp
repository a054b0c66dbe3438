// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Open a key, see that it belongs to its certificate, and put it under a
// new password. The words: library folder, certificate, key, password.
#include <sigildesk/crypto.h>
#include <sigildesk/handles.h>
#include <sigildesk/open_toolkit.h>

#include <cstdio>

int main(int, char** words)
{
    sigildesk::CryptoHandle crypto;
    BINSTR certificate = {}, file = {}, key = {}, changed = {};
    char password[] = "another, longer one";
    const bool failed =
        sigildesk::initialise(crypto, SIGIL_TOOLKIT_MAKER, words[1]) ||
        MediaDiskReadCert(crypto.get(), words[2], 0, &certificate) ||
        MediaDiskReadFile(crypto.get(), words[3], &file) ||
        PriKeyDecrypt(crypto.get(), words[4], &file, &key) ||
        PriKeyCheckKeyPair(crypto.get(), &certificate, &key) ||
        PriKeyEncrypt(
            crypto.get(), SIGIL_TK_KEY_SEED, password, &key, &changed);
    std::printf("key file of %d bytes\n", changed.nLength);
    HV_BINSTR_Delete(crypto.get(), &changed);
    HV_BINSTR_Delete(crypto.get(), &key);
    HV_BINSTR_Delete(crypto.get(), &file);
    HV_BINSTR_Delete(crypto.get(), &certificate);
    return failed ? 1 : 0;
}
