// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// A certificate as PEM.
// The words: library folder, certificate.
#include <sigildesk/crypto.h>
#include <sigildesk/handles.h>
#include <sigildesk/open_toolkit.h>

#include <cstdio>

int main(int, char** words)
{
    sigildesk::CryptoHandle crypto;
    BINSTR certificate = {}, pem = {};
    const bool failed =
        sigildesk::initialise(crypto, SIGIL_TOOLKIT_MAKER, words[1]) ||
        MediaDiskReadCert(crypto.get(), words[2], 0, &certificate) ||
        PEMEncode(
            crypto.get(), SIGIL_TK_PEM_CERTIFICATE, &certificate, &pem);
    std::printf("%.*s", pem.nLength, reinterpret_cast<char*>(pem.pData));
    HV_BINSTR_Delete(crypto.get(), &pem);
    HV_BINSTR_Delete(crypto.get(), &certificate);
    return failed ? 1 : 0;
}
