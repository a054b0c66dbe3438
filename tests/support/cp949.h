// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Korean texts of the library (CP949), converted by the C library: what is tested does not convert for its own test.
 */
#pragma once

#include <iconv.h>
#include <stdexcept>
#include <string>

/** @p text in another encoding; throws where it cannot be converted. */
inline std::string converted(std::string text, const char* from, const char* to)
{
    std::string out(text.size() * 3, '\0');
    char* source = text.data();
    char* target = out.data();
    std::size_t sourceLeft = text.size(), targetLeft = out.size();
    const iconv_t converter = iconv_open(to, from);
    const std::size_t failed = iconv(converter, &source, &sourceLeft, &target, &targetLeft);
    iconv_close(converter);
    if (failed == static_cast<std::size_t>(-1))
        throw std::runtime_error("not " + std::string(from) + ": " + text);
    out.resize(out.size() - targetLeft);
    return out;
}

inline std::string utf8FromCp949(const std::string& text) { return converted(text, "CP949", "UTF-8"); }
inline std::string cp949FromUtf8(const std::string& text) { return converted(text, "UTF-8", "CP949"); }
