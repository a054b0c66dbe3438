// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/* example-five-steps-c [FOLDER]: list, unlock, sign, verify, decrypt, with the first certificate of the home folder or of the
 * disk that is mounted at FOLDER. The first line of the input is its password. */

#include <sigil.h>

#include <stdio.h>
#include <stdlib.h>
#include <string.h>

static void check(SigilSession* session, int code)
{
    if (code != SIGIL_SUCCESS) {
        fprintf(stderr, "%d: %s\n", code, sigil_error_text(session));
        exit(EXIT_FAILURE);
    }
}

static void five_steps(SigilSession* session, const SigilListOptions* where, const char* password)
{
    const char text[] = "동해물과 백두산이";
    const size_t size = strlen(text);
    int certificates, signers;
    SigilBytes recipient, message, content, secret, opened;
    check(session, sigil_list(session, where, &certificates));
    check(session, sigil_unlock(session, 0, password));
    check(session, sigil_sign(session, 0, NULL, text, size, &message));
    check(session, sigil_verify(session, message.data, message.size, NULL, 0, &content, &signers));
    check(session, sigil_certificate(session, 0, SIGIL_PAIR_SIGNING, &recipient));
    check(session, sigil_encrypt(session, SIGIL_CIPHER_AES256, &recipient, 1, text, size, &secret));
    check(session, sigil_decrypt(session, 0, secret.data, secret.size, &opened));
    printf("listed %d, verified \"%s\", decrypted \"%s\"\n", certificates, content.data, opened.data);
    SigilBytes* all[] = {&recipient, &message, &content, &secret, &opened};
    for (size_t i = 0; i < sizeof all / sizeof *all; ++i)
        sigil_free(all[i]);
}

int main(int argc, char** argv)
{
    SigilListOptions where = {.size = sizeof where, .medium = argc > 1 ? argv[1] : NULL};
    char password[256] = "";
    SigilSession* session = NULL;
    if (!fgets(password, sizeof password, stdin))
        return EXIT_FAILURE;
    password[strcspn(password, "\n")] = '\0';
    check(session, sigil_open(NULL, &session));
    five_steps(session, &where, password);
    sigil_close(session); /* overwrites the key */
    memset(password, 0, sizeof password);
    return EXIT_SUCCESS;
}
