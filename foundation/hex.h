// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Hexadecimal digits.
 */
#pragma once

#include <cstddef>

namespace sigil {

/** Writes two lower-case digits for each of @p size bytes, high nibble first; @p out is not terminated. */
inline void writeHex(const char* data, std::size_t size, char* out)
{
    static constexpr char digits[] = "0123456789abcdef";
    for (std::size_t i = 0; i < size; ++i) {
        const auto byte = static_cast<unsigned char>(data[i]);
        *out++ = digits[byte >> 4];
        *out++ = digits[byte & 0x0F];
    }
}

/** Value of a digit of either case, -1 for any other character. */
constexpr int hexValue(char c)
{
    if (c >= '0' && c <= '9')
        return c - '0';
    if (c >= 'a' && c <= 'f')
        return c - 'a' + 10;
    if (c >= 'A' && c <= 'F')
        return c - 'A' + 10;
    return -1;
}

/** Reads @p size bytes from two digits each. @return false at the first other character; what follows is not written */
inline bool readHex(const char* digits, std::size_t size, char* out)
{
    for (std::size_t i = 0; i < size; ++i) {
        const int high = hexValue(digits[2 * i]);
        const int low = hexValue(digits[2 * i + 1]);
        if (high < 0 || low < 0)
            return false;
        out[i] = static_cast<char>(high << 4 | low);
    }
    return true;
}

} // namespace sigil
