// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// CUtil: parts of a distinguished name.

#include <sigildesk/util.h>

#include "foundation/ascii.h"
#include "foundation/text_field.h"

#include <string_view>

namespace {

constexpr int found = 0;
constexpr int notFound = 1;

int copyAttribute(std::string_view attribute, const char* dn, int outSize, char* out)
{
    const std::string_view text = sigil::textOf(dn);
    const std::size_t start = sigil::findIgnoringCase(text, attribute);
    if (start == std::string_view::npos)
        return notFound;
    const std::size_t end = text.find(',', start);
    // The last attribute of a name has no comma behind it; it is deliberately not found, as hosts have come to expect.
    if (end == std::string_view::npos)
        return notFound;
    const std::string_view value = text.substr(start + attribute.size(), end - start - attribute.size());
    if (!value.empty() && outSize > 0)
        sigil::copyText(out, static_cast<std::size_t>(outSize), value);
    return found;
}

} // namespace

int CUtil::GetCNString(char* dn, int outSize, char* out) { return copyAttribute("cn=", dn, outSize, out); }

int CUtil::GetOString(char* dn, int outSize, char* out) { return copyAttribute("o=", dn, outSize, out); }

int CUtil::GetOUString(char* dn, int outSize, char* out) { return copyAttribute("ou=", dn, outSize, out); }
