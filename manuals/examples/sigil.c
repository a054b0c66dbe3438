// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// List, unlock, sign and verify in five steps.
// The words: library folder, certificate, key, password.
#include <sigil.h>

#include <stdio.h>

int main(int number, char** words)
{
    SigilOpenOptions options = {.size = sizeof options};
    SigilSession* session = NULL;
    SigilBytes message = {NULL, 0};
    int count = 0, signers = 0;
    options.folder = words[1];
    const int failed = number < 5 || sigil_open(&options, &session) ||
        sigil_list(session, NULL, &count) ||
        sigil_unlock(session, 0, words[4]) ||
        sigil_sign(session, 0, NULL, "a contract", 10, &message) ||
        sigil_verify(session, message.data, message.size, NULL, 0, NULL,
            &signers);
    printf("%d certificates, %d signer %s\n", count, signers,
        sigil_error_text(session));
    sigil_free(&message);
    sigil_close(session);
    return failed;
}
