// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "jobs/words.h"

namespace host {

std::string filled(std::string_view text, const std::vector<std::string>& values)
{
    constexpr std::string_view place = "{}";
    std::string result;
    for (const std::string& value : values) {
        const std::size_t at = text.find(place);
        if (at == text.npos)
            break;
        result.append(text.substr(0, at)).append(value);
        text.remove_prefix(at + place.size());
    }
    return result.append(text);
}

} // namespace host
