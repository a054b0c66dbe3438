// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "toolkit/engine/keys/password.h"

#include "toolkit/engine/base/error.h"

#include <iconv.h>

#include <optional>

namespace toolkit {
namespace {

/** The whole text in another character set; nothing when it is not text in the first one. Every copy is wiped. */
std::optional<Secret> converted(const char* to, const char* from, std::string_view text)
{
    constexpr std::size_t longestCharacter = 4;
    const iconv_t converter = iconv_open(to, from);
    // NOLINTNEXTLINE(performance-no-int-to-ptr): how iconv_open says that it failed
    if (converter == reinterpret_cast<iconv_t>(-1)) {
        requireMemory();
        return {};
    }
    Secret input = toSecret(view(text));
    Secret output(longestCharacter * text.size());
    auto* in = reinterpret_cast<char*>(input.data());
    auto* out = reinterpret_cast<char*>(output.data());
    std::size_t left = input.size();
    std::size_t room = output.size();
    const bool whole = iconv(converter, &in, &left, &out, &room) != static_cast<std::size_t>(-1) && left == 0;
    iconv_close(converter);
    output.resize(output.size() - room);
    return whole ? std::optional(output) : std::nullopt;
}

} // namespace

std::vector<Secret> readingsOf(std::string_view password)
{
    if (converted("UTF-16BE", "UTF-8", password))
        return {toSecret(view(password))};
    std::vector<Secret> readings;
    for (const char* characterSet : {"CP949", "ISO-8859-1"})
        if (const auto text = converted("UTF-8", characterSet, password))
            readings.push_back(*text);
    return readings;
}

std::vector<Secret> bmpForms(std::string_view password)
{
    std::vector<Secret> forms;
    for (const Secret& reading : readingsOf(password)) {
        forms.push_back(converted("UTF-16BE", "UTF-8", {chars(reading), reading.size()}).value_or(Secret()));
        forms.back().insert(forms.back().end(), 2, 0);
    }
    if (password.empty())
        forms.emplace_back();
    return forms;
}

} // namespace toolkit
