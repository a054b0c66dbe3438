// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Both kinds of handles are released on every path.
// The words: library folder.
#include <sigildesk/handles.h>

int main(int, char** words)
{
    sigildesk::CryptoHandle crypto;
    sigildesk::ProcessorHandle list;
    if (sigildesk::initialise(crypto, 0, words[1]) != 0)
        return 1;
    return sigildesk::initialise(list, 0, 2, words[1]) == 0 ? 0 : 1;
}
