// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Make a request for the state of a certificate. A responder's address
// goes to OCSPSendAndRecv. The words: library folder, certificate, key,
// password, identity number, certificate of the issuer.
#include <sigildesk/crypto.h>
#include <sigildesk/handles.h>

#include <cstdio>

int main(int, char** words)
{
    sigildesk::CryptoHandle crypto;
    BINSTR certificate = {}, issuer = {}, placeholder = {}, request = {};
    unsigned char any[] =
        "-"; // nobody signs, but the key is never empty
    const bool failed =
        sigildesk::initialise(crypto, SIGIL_TOOLKIT_MAKER, words[1]) ||
        MediaDiskReadCert(crypto.get(), words[2], 0, &certificate) ||
        MediaDiskReadCert(crypto.get(), words[6], 0, &issuer) ||
        CertAddTrustedCert(crypto.get(), &issuer) ||
        HV_BINSTR_SetData(crypto.get(), any, 1, &placeholder) ||
        OCSPMakeOCSPReq(crypto.get(), &certificate, false, &issuer,
            &placeholder, &request);
    std::printf("request of %d bytes\n", request.nLength);
    HV_BINSTR_Delete(crypto.get(), &request);
    HV_BINSTR_Delete(crypto.get(), &placeholder);
    HV_BINSTR_Delete(crypto.get(), &issuer);
    HV_BINSTR_Delete(crypto.get(), &certificate);
    return failed ? 1 : 0;
}
