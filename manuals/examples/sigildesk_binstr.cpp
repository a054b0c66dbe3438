// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Bytes in memory of the toolkit, and back.
// The words: library folder.
#include <sigildesk/binstr.h>
#include <sigildesk/crypto/frame.h>

#include <cstring>

int main(int, char** words)
{
    void* crypto = nullptr;
    BINSTR bytes;
    unsigned char text[] = "a text";
    const bool failed = HV_Initalize(&crypto, 0, words[1]) ||
        HV_BINSTR_Create(crypto, &bytes) ||
        HV_BINSTR_SetData(crypto, text, sizeof text, &bytes) ||
        std::memcmp(bytes.pData, text, sizeof text) != 0 ||
        HV_BINSTR_Delete(crypto, &bytes);
    HV_Finish(crypto);
    return failed ? 1 : 0;
}
