// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Verify a certificate with a root of the host's own. Each step of the
// facade says its code. The words: library folder, certificate, key,
// password, identity number, certificate of the issuer.
#include <sigildesk/crypto.h>
#include <sigildesk/handles.h>
#include <sigildesk/open_toolkit.h>

#include <cstdio>

int main(int, char** words)
{
    sigildesk::CryptoHandle crypto;
    BINSTR certificate = {}, issuer = {};
    int status =
        sigildesk::initialise(crypto, SIGIL_TOOLKIT_MAKER, words[1]);
    if (status == 0)
        status =
            MediaDiskReadCert(crypto.get(), words[2], 0, &certificate);
    if (status == 0)
        status = MediaDiskReadCert(crypto.get(), words[6], 0, &issuer);
    if (status == 0)
        status = CertAddTrustedCert(crypto.get(), &issuer);
    if (status == 0)
        status = CertSetVerifyEnv(crypto.get(), SIGIL_TK_PATH_GIVEN,
            SIGIL_TK_REVOCATION_NONE, false, nullptr, nullptr);
    if (status == 0)
        status =
            CertVerify(crypto.get(), &certificate, SIGIL_TK_USAGE_SIGN,
                nullptr, nullptr, false, nullptr, nullptr);
    SigilCodeText said = {};
    sigil_code_text(status, SIGIL_LANGUAGE_ENGLISH, &said);
    std::printf("%d: %s\n", status, said.sentence);
    HV_BINSTR_Delete(crypto.get(), &issuer);
    HV_BINSTR_Delete(crypto.get(), &certificate);
    return status == 0 ? 0 : 1;
}
