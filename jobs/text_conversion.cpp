// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "jobs/text_conversion.h"

#include <mutex>

namespace host {

namespace {

/** Bytes of the unassigned or cut character that a CP949 text begins with. */
std::size_t sizeOfUnknownPair(std::string_view text)
{
    const bool pair = text.size() > 1 && static_cast<unsigned char>(text[1]) >= 0x80;
    return pair ? 2 : 1;
}

} // namespace

std::string utf8(std::string_view text)
{
    // For all threads: a host that loads the library while it runs would be ended where memory for a thread's own is short.
    static std::mutex mutex;
    static Converter converter("UTF-8", "CP949"); // which keeps a state
    const std::lock_guard lock(mutex);
    return converter.convert(text, sizeOfUnknownPair);
}

} // namespace host
