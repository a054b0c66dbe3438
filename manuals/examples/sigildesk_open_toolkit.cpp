// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Encrypt for a certificate with a cipher of the open toolkit, and
// decrypt. The words: library folder, ..., certificate and key for
// encryption as the last two.
#include <sigildesk/crypto.h>
#include <sigildesk/handles.h>
#include <sigildesk/open_toolkit.h>

#include <cstdio>

int main(int, char** words)
{
    sigildesk::CryptoHandle crypto;
    BINSTR certificate = {}, key = {}, data = {}, message = {},
           content = {};
    unsigned char text[] = "a contract";
    const bool failed =
        sigildesk::initialise(crypto, SIGIL_TOOLKIT_MAKER, words[1]) ||
        MediaDiskReadCert(crypto.get(), words[7], 0, &certificate) ||
        MediaDiskReadPriKey(crypto.get(), words[8], words[4], 0, &key) ||
        HV_BINSTR_SetData(crypto.get(), text, sizeof text - 1, &data) ||
        CMSMakeEnvelopedData(crypto.get(), SIGIL_TK_ENVELOPE_ISSUER,
            &certificate, &data, SIGIL_TK_CIPHER_ARIA256, &message) ||
        CMSProcessEnvelopedData(
            crypto.get(), &certificate, &key, &message, &content);
    std::printf("%.*s\n", content.nLength,
        reinterpret_cast<char*>(content.pData));
    HV_BINSTR_Delete(crypto.get(), &content);
    HV_BINSTR_Delete(crypto.get(), &message);
    HV_BINSTR_Delete(crypto.get(), &data);
    HV_BINSTR_Delete(crypto.get(), &key);
    HV_BINSTR_Delete(crypto.get(), &certificate);
    return failed ? 1 : 0;
}
