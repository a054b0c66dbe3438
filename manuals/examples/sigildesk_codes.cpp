// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// What a result means, and what to do.
#include <sigildesk/codes.h>

#include <cstdio>

int main()
{
    SigilCodeText text = {};
    const int known = sigil_code_text(
        SIGIL_WRONG_PASSWORD, SIGIL_LANGUAGE_ENGLISH, &text);
    std::printf("%s: %s %s\n", text.name, text.sentence, text.advice);
    return known;
}
