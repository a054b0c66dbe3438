// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Whose is a certificate? Asked in C.
// The words: library folder, certificate.
#include <sigildesk/flat.h>

#include <stdio.h>

int main(int count, char** words)
{
    void* crypto = NULL;
    BINSTR certificate = {NULL, 0};
    char subject[1024] = "";
    const int failed = count < 3 || HV_Initalize(&crypto, 0, words[1]) ||
        MediaDiskReadCert(crypto, words[2], 0, &certificate) ||
        CertLoad(crypto, &certificate) ||
        CertGetSubjectName(crypto, sizeof subject, subject);
    printf("%s\n", subject);
    HV_BINSTR_Delete(crypto, &certificate);
    HV_Finish(crypto);
    return failed;
}
