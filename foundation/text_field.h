// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Bounded copies into the fixed character fields of records. Every write into such a field goes through here.
 */
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <string_view>

namespace sigil {

/** Room for a path with its terminator, in records and in calls: longer paths are cut or refused. */
constexpr std::size_t pathCapacity = 260;

/** Copies at most @p capacity - 1 bytes of @p text into @p field and terminates it. Nothing for a capacity of 0. */
inline void copyText(char* field, std::size_t capacity, std::string_view text)
{
    if (!field || capacity == 0)
        return;
    const std::size_t length = std::min(text.size(), capacity - 1);
    if (length > 0) // an empty view may hold a null pointer, which memmove does not take
        std::memmove(field, text.data(), length);
    field[length] = '\0';
}

/** As above for a field whose size the compiler knows. */
template <std::size_t N>
void copyText(char (&field)[N], std::string_view text)
{
    copyText(field, N, text);
}

/** Copies at most @p limit bytes of @p text to @p buffer. Unlike copyText it gives the last byte to the text as well:
 *  a text of @p limit bytes or more is not terminated. Hosts rely on that when they pass a cleared buffer that is one
 *  byte larger than the size they name. A null buffer or a limit below 1 copies nothing. */
inline void limitedCopy(char* buffer, int limit, std::string_view text)
{
    if (!buffer || limit < 1)
        return;
    const auto capacity = static_cast<std::size_t>(limit);
    const std::size_t length = text.copy(buffer, capacity);
    if (length < capacity)
        buffer[length] = '\0';
}

/** The text held by a field of @p capacity bytes, also when it fills the field without a terminator. */
inline std::string_view fieldText(const char* field, std::size_t capacity)
{
    return {field, strnlen(field, capacity)};
}

template <std::size_t N>
std::string_view fieldText(const char (&field)[N])
{
    return fieldText(field, N);
}

} // namespace sigil
