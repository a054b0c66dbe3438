// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// A Korean text from UTF-8 to CP949 and back.
#include <sigildesk/convert_utf8.h>

#include <cstdio>
#include <string>

int main()
{
    const std::string text =
        "\xEC\x9D\xB8\xEC\xA6\x9D\xEC\x84\x9C"; // "certificate"
    ConvertUTF8 convert;
    char cp949[64], utf8[64];
    int shorter = 0, length = 0;
    const bool done =
        convert.utf82ascii(text.data(), static_cast<int>(text.size()),
            cp949, shorter) == 0 &&
        convert.ascii2utf8(cp949, shorter, utf8, length) == 0;
    std::printf("%d bytes in CP949, %d in UTF-8\n", shorter, length);
    return done && text.compare(0, text.npos, utf8, length) == 0 ? 0 : 1;
}
