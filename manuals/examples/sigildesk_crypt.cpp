// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// A digest, and a bare signature that is verified.
// The words: library folder, certificate, key, password.
#include <sigildesk/crypto.h>
#include <sigildesk/handles.h>
#include <sigildesk/open_toolkit.h>

#include <cstdio>

int main(int, char** words)
{
    sigildesk::CryptoHandle crypto;
    BINSTR certificate = {}, key = {}, data = {}, digest = {},
           signature = {};
    unsigned char text[] = "a contract";
    const bool failed =
        sigildesk::initialise(crypto, SIGIL_TOOLKIT_MAKER, words[1]) ||
        MediaDiskReadCert(crypto.get(), words[2], 0, &certificate) ||
        MediaDiskReadPriKey(crypto.get(), words[3], words[4], 0, &key) ||
        HV_BINSTR_SetData(crypto.get(), text, sizeof text - 1, &data) ||
        CRYPTHash(crypto.get(), SIGIL_TK_HASH_SHA256, &data, &digest) ||
        CRYPTSign(crypto.get(), &certificate, &key, SIGIL_TK_HASH_SHA256,
            &data, &signature) ||
        CRYPTVerify(crypto.get(), &certificate, SIGIL_TK_HASH_SHA256,
            &data, &signature);
    std::printf("digest of %d, signature of %d bytes\n", digest.nLength,
        signature.nLength);
    HV_BINSTR_Delete(crypto.get(), &signature);
    HV_BINSTR_Delete(crypto.get(), &digest);
    HV_BINSTR_Delete(crypto.get(), &data);
    HV_BINSTR_Delete(crypto.get(), &key);
    HV_BINSTR_Delete(crypto.get(), &certificate);
    return failed ? 1 : 0;
}
