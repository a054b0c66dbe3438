// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  A subject or issuer name, in the two forms that a store needs: as text and as X.509 name.
 */
#pragma once

#include "toolkit/engine/base/handles.h"

#include <string>
#include <string_view>

namespace sample {

using NameHandle = toolkit::Handle<X509_NAME, X509_NAME_free>;

class DistinguishedName {
public:
    /** @param text UTF-8, most specific part first, as store folders are called: "cn=…,ou=…,o=yessign,c=kr". No value
     *  holds a comma. */
    explicit DistinguishedName(std::string_view text)
        : m_text(text)
    {
    }

    const std::string& text() const { return m_text; }

    /** Value of the first part. */
    std::string commonName() const;

    /** The name as certificates carry it: general to specific (C, O, OU …, CN), the country as PrintableString and
     *  every other value as UTF8String. Throws std::runtime_error for an attribute type it does not know. */
    NameHandle toX509() const;

private:
    std::string m_text;
};

} // namespace sample
