// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// CUtil: hexadecimal texts.

#include "foundation/hex.h"

#include <sigildesk/util.h>

#include <memory>

namespace {

bool isSeparator(char c) { return c == ',' || c == ' '; }

/** Value of a digit; other characters are not refused but fall under one of the three rules. */
int looseHexValue(char digit)
{
    const int code = static_cast<unsigned char>(digit);
    if (code <= '9')
        return code - '0';
    if (code >= 'A' && code <= 'Z')
        return code - 55;
    return code - 87;
}

} // namespace

char* CUtil::toHexString(char* data, int len)
{
    const std::size_t size = data && len > 0 ? static_cast<std::size_t>(len) : 0;
    auto text = std::make_unique<char[]>(2 * size + 1);
    sigil::writeHex(data, size, text.get());
    return text.release();
}

int CUtil::HexStringToBin(char* hex, int len, char* out, int* outLen)
{
    if (!hex || !out || !outLen)
        return -1;
    int digits = 0;
    int high = 0;
    for (int i = 0; i < len; ++i) {
        if (isSeparator(hex[i]))
            continue;
        const int value = looseHexValue(hex[i]);
        if (digits++ % 2 == 0)
            high = value;
        else
            *out++ = static_cast<char>(high * 16 + value);
    }
    *outLen = digits / 2;
    return 0;
}
