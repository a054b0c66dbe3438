// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// How much room the tokens have for what everybody sees.
// The words: library folder.
#include <sigildesk/crypto.h>
#include <sigildesk/handles.h>
#include <sigildesk/token_info.h>

#include <cstdio>

int main(int, char** words)
{
    sigildesk::CryptoHandle crypto;
    unsigned long slots[64] = {}, count = 64;
    int status =
        sigildesk::initialise(crypto, SIGIL_TOOLKIT_MAKER, words[1]);
    if (status == 0)
        status = PKCS11GetSlotList(crypto.get(), slots, &count);
    for (unsigned long i = 0; status == 0 && i < count; ++i) {
        PKCS11_TOKEN_INFO token = {};
        if (PKCS11GetTokenInfo(crypto.get(), slots[i], &token) == 0)
            std::printf("%lu of %lu bytes\n", token.ulFreePublicMemory,
                token.ulTotalPublicMemory);
    }
    return status == 0 ? 0 : 1;
}
