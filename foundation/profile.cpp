// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include <sigildesk/profile.h>

#include "foundation/ascii.h"
#include "foundation/file.h"
#include "foundation/profile_lines.h"
#include "foundation/text_field.h"

#include <cstdio>
#include <cstring>
#include <optional>
#include <string_view>

namespace {

/** The value of @p key in the first section with @p header; it lies in @p part. */
std::optional<std::string_view> findValue(
    sigil::RegularFile& file, std::string_view header, std::string_view key, sigil::_ConfigProfile& part)
{
    bool inSection = false;
    while (sigil::_DecodeConfigProfile(part, file) == 0) {
        std::string_view lines = part.lines;
        if (!inSection) {
            const auto rest = sigil::_FindConfigProfileSection(lines, header);
            if (!rest)
                continue;
            inSection = true;
            lines = *rest;
        }
        std::string_view value;
        const sigil::KeySearch state = sigil::findProfileKey(lines, key, value);
        if (state == sigil::KeySearch::found)
            return value;
        if (state == sigil::KeySearch::ended)
            return std::nullopt;
    }
    return std::nullopt;
}

int store(char* out, int outSize, std::string_view text)
{
    sigil::copyText(out, static_cast<std::size_t>(outSize), text);
    return static_cast<int>(std::strlen(out));
}

} // namespace

int FileGetPrivateProfileString(char* section, char* key, char* defaultValue, char* out, int outSize, char* path)
{
    if (!out || outSize < 1)
        return 0;
    std::memset(out, 0, static_cast<std::size_t>(outSize));
    sigil::RegularFile file(path);
    if (!section || !key || !file.isOpen())
        return 0;
    char header[1024];
    static_cast<void>(std::snprintf(header, sizeof header, "[%s]", section)); // cut to the field
    sigil::_ConfigProfile part;
    const auto value = findValue(file, header, key, part);
    if (!value)
        return 0;
    return store(out, outSize, value->empty() ? sigil::textOf(defaultValue) : *value);
}

int FileGetPrivateProfileInt(char* section, char* key, int /*defaultValue*/, char* path)
{
    char text[1024];
    char none[] = "";
    FileGetPrivateProfileString(section, key, none, text, sizeof text - 1, path);
    return sigil::toInt(text);
}

int StrTrimString(char* text)
{
    if (!text)
        return 1;
    const std::size_t length = std::strlen(text);
    const std::string_view kept = sigil::trimmed({text, length});
    const std::size_t keptLength = kept.size();
    std::memmove(text, kept.data(), keptLength);
    std::memset(text + keptLength, 0, length - keptLength);
    return 1;
}
