// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  DER that a test makes up.
 */
#pragma once

#include <string>

/** An element of fewer than 65,536 bytes. */
inline std::string der(unsigned char tag, const std::string& content)
{
    std::string bytes(1, static_cast<char>(tag));
    if (content.size() >= 0x80)
        bytes.append({static_cast<char>(0x82), static_cast<char>(content.size() >> 8)});
    return bytes + static_cast<char>(content.size() & 0xFF) + content;
}

inline std::string derSequence(const std::string& content) { return der(0x30, content); }
