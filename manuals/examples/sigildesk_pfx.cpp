// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Put a pair into a PKCS#12 file and take it out again.
// The words: library folder, certificate, key, password.
#include <sigildesk/crypto.h>
#include <sigildesk/handles.h>
#include <sigildesk/open_toolkit.h>

#include <cstdio>

int main(int, char** words)
{
    sigildesk::CryptoHandle crypto;
    BINSTR certificate = {}, key = {}, pfx = {}, certificate2 = {},
           key2 = {}, others = {};
    const bool failed =
        sigildesk::initialise(crypto, SIGIL_TOOLKIT_MAKER, words[1]) ||
        MediaDiskReadCert(crypto.get(), words[2], 0, &certificate) ||
        MediaDiskReadPriKey(crypto.get(), words[3], words[4], 0, &key) ||
        PFXExport(crypto.get(), SIGIL_TK_PFX_AES256, words[4],
            &certificate, &key, nullptr, nullptr, &pfx) ||
        PFXImport(crypto.get(), words[4], &pfx, &certificate2, &key2,
            nullptr, nullptr, &others);
    std::printf("file of %d bytes\n", pfx.nLength);
    HV_BINSTR_Delete(crypto.get(), &others);
    HV_BINSTR_Delete(crypto.get(), &key2);
    HV_BINSTR_Delete(crypto.get(), &certificate2);
    HV_BINSTR_Delete(crypto.get(), &pfx);
    HV_BINSTR_Delete(crypto.get(), &key);
    HV_BINSTR_Delete(crypto.get(), &certificate);
    return failed ? 1 : 0;
}
