// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Bytes as text.
 */
#pragma once

#include "toolkit/engine/base/bytes.h"

#include <string>

namespace sample {

/** Two lower-case hexadecimal digits for each byte. */
inline std::string hexText(toolkit::View bytes)
{
    constexpr char digits[] = "0123456789abcdef";
    std::string text;
    for (const unsigned char byte : bytes)
        text.append({digits[byte >> 4], digits[byte & 15]});
    return text;
}

} // namespace sample
