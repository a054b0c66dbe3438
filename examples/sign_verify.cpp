// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// example-sign-verify CERTIFICATE KEY TEXT: signs the text into a message (CMS) with a certificate and its key file, and
// verifies the message. The first line of the input is the key's password.

#include "bytes.h"

#include <sigildesk/codes.h>
#include <sigildesk/handles.h>
#include <sigildesk/open_toolkit.h>

#include <cstring>
#include <fstream>
#include <iostream>
#include <iterator>

static std::string contentOf(const char* path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

/** The first code that is not 0, and the toolkit's words on it. */
static int told(void* crypto, const char* step, int code)
{
    char words[2049] = "";
    if (code != SIGIL_SUCCESS)
        HV_GetErrInfo2(crypto, sizeof words - 1, words);
    if (code != SIGIL_SUCCESS)
        std::cerr << step << ": " << code << " " << words << "\n";
    return code;
}

int main(int argc, char** argv)
{
    if (argc != 4)
        return 2;
    sigildesk::CryptoHandle handle;
    std::string folder = LIBRARY_FOLDER;
    if (told(nullptr, "initialise", sigildesk::initialise(handle, SIGIL_TOOLKIT_MAKER, &folder[0])) !=
        SIGIL_SUCCESS)
        return 1;
    void* crypto = handle.get();

    std::string password;
    std::getline(std::cin, password);
    Bytes certificate(crypto, contentOf(argv[1])), lockedKey(crypto, contentOf(argv[2])), key(crypto);
    const int unlocked = PriKeyDecrypt(crypto, &password[0], lockedKey, key);
    explicit_bzero(&password[0], password.size());
    if (told(crypto, "unlock", unlocked) != SIGIL_SUCCESS)
        return 1;

    char now[] = ""; // signed at the time of the call
    Bytes text(crypto, argv[3]), message(crypto);
    if (told(crypto, "sign",
            CMSMakeSignedData(crypto, SIGIL_TK_MESSAGE_PLAIN, certificate, key, text, now, message)) !=
        SIGIL_SUCCESS)
        return 1;

    int signers = 0;
    Bytes content(crypto);
    if (told(crypto, "verify",
            CMSProcessSignedData(crypto, SIGIL_TK_CHECK_SIGNATURES, message, content, &signers)) != SIGIL_SUCCESS)
        return 1;
    std::cout << "verified: " << content.content() << " (" << signers << " signer)\n";
    return 0;
}
