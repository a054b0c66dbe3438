// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Texts from one charset into another.
 */
#pragma once

#include <iconv.h>

#include <stdexcept>
#include <string>
#include <string_view>

namespace host {

/** A conversion of the C library. */
class Converter {
public:
    Converter(const char* to, const char* from)
        : m_descriptor(iconv_open(to, from))
    {
        if (!valid())
            throw std::runtime_error(std::string("this machine's C library cannot make ") + to + " of " + from);
    }
    ~Converter() { iconv_close(m_descriptor); }
    Converter(const Converter&) = delete;
    Converter& operator=(const Converter&) = delete;

    /** @p text converted. What cannot be becomes a "?" for as many bytes as @p sizeOfUnknown says. */
    template <class Size>
    std::string convert(std::string_view text, Size sizeOfUnknown)
    {
        iconv(m_descriptor, nullptr, nullptr, nullptr, nullptr);
        std::string converted(text.size() * 4 + 16, '\0');
        char* in = const_cast<char*>(text.data());
        char* out = converted.data();
        std::size_t left = text.size(), room = converted.size();
        while (left > 0 && iconv(m_descriptor, &in, &left, &out, &room) == failure) {
            *out++ = '?';
            --room;
            const std::size_t skipped = sizeOfUnknown(std::string_view(in, left));
            in += skipped;
            left -= skipped;
        }
        iconv(m_descriptor, nullptr, nullptr, &out, &room); // some charsets have an end
        converted.resize(converted.size() - room);
        return converted;
    }

private:
    static constexpr auto failure = static_cast<std::size_t>(-1);

    // NOLINTNEXTLINE(performance-no-int-to-ptr): how iconv_open says that it failed
    bool valid() const { return m_descriptor != reinterpret_cast<iconv_t>(-1); }

    iconv_t m_descriptor;
};

/** @p text of the library, which is CP949, as UTF-8. A code that stands for no character becomes "?", the others stay. */
std::string utf8(std::string_view text);

} // namespace host
