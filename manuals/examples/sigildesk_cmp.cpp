// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Ask an authority for a certificate, with the reference number and the
// code that it gave. The words: library folder. Where no authority
// answers, the code says so.
#include <sigildesk/crypto.h>
#include <sigildesk/handles.h>
#include <sigildesk/open_toolkit.h>

#include <cstdio>

int main(int, char** words)
{
    sigildesk::CryptoHandle crypto;
    BINSTR certificate = {}, key = {};
    char address[] = "http://127.0.0.1:1/cmp", reference[] = "1234",
         code[] = "5678";
    char subject[] = "", password[] = "of the new key file";
    int status =
        sigildesk::initialise(crypto, SIGIL_TOOLKIT_MAKER, words[1]);
    if (status == 0)
        status = CMPSetProtocol(crypto.get(), SIGIL_TK_CMP_HTTP);
    if (status == 0)
        status =
            CMPCertRequest2(crypto.get(), address, 0, reference, code,
                subject, password, &certificate, &key, nullptr, nullptr);
    std::printf("%d, %d bytes\n", status, certificate.nLength);
    HV_BINSTR_Delete(crypto.get(), &key);
    HV_BINSTR_Delete(crypto.get(), &certificate);
    return status == 0 || status == SIGIL_TK_FETCH ? 0 : 1;
}
