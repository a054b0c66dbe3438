// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "jobs/text_conversion.h"

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
    thread_local Converter converter("UTF-8", "CP949"); // which keeps a state
    return converter.convert(text, sizeOfUnknownPair);
}

} // namespace host
