/** @file
 *  The copy that the error-text functions promise.
 */
#pragma once

#include <algorithm>
#include <cstring>
#include <string_view>

namespace sigil {

/** Copies at most @p limit bytes of @p text to @p buffer. Unlike copyText it gives the last byte to the text as well:
 *  a text of @p limit bytes or more is not terminated. Callers of HV_GetErrInfo and HV_GetErrInfo2 rely on that when
 *  they pass a buffer that is one byte larger than the length they name. A null buffer or a limit below 1 copies nothing. */
inline void limitedCopy(char* buffer, int limit, std::string_view text)
{
    if (!buffer || limit < 1)
        return;
    const auto capacity = static_cast<std::size_t>(limit);
    const std::size_t length = std::min(text.size(), capacity);
    std::memcpy(buffer, text.data(), length);
    if (length < capacity)
        buffer[length] = '\0';
}

} // namespace sigil
