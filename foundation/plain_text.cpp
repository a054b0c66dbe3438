// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// CUtil: small changes to plain texts.

#include <sigildesk/util.h>

#include "foundation/ascii.h"

#include <algorithm>
#include <cstring>

namespace {

int changeLetters(unsigned char* text, char (*change)(char))
{
    if (!text)
        return 0;
    const std::size_t length = std::strlen(reinterpret_cast<char*>(text));
    std::transform(text, text + length, text,
        [change](unsigned char c) { return static_cast<unsigned char>(change(static_cast<char>(c))); });
    return static_cast<int>(length);
}

} // namespace

int CUtil::TrimData(char* in, char* out)
{
    if (!in || !out)
        return 0;
    char* rest = nullptr;
    char* end = out;
    for (char* piece = strtok_r(in, "\t\r\n", &rest); piece; piece = strtok_r(nullptr, "\t\r\n", &rest)) {
        const std::size_t length = std::strlen(piece);
        std::memmove(end, piece, length);
        end += length;
        *end = '\0';
    }
    return static_cast<int>(std::strlen(out));
}

int CUtil::ReplaceData(char* in, char* from, char* to, char* out)
{
    if (!in || !from || !to || !out)
        return 0;
    std::replace_copy(in, in + std::strlen(in), out, *from, *to);
    return 0;
}

int CUtil::ToLower(unsigned char* text) { return changeLetters(text, sigil::toLower); }

int CUtil::ToUpper(unsigned char* text) { return changeLetters(text, sigil::toUpper); }
