// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Passwords and the like as the library takes them.
 */
#pragma once

#include "foundation/secret.h"

#include <utility>

namespace host {

/** A secret as the library takes it: a text with its terminator, wiped at the end. */
class Secret {
public:
    Secret() = default;
    explicit Secret(sigil::SecretBytes text)
        : m_text(std::move(text))
    {
        m_text.push_back('\0');
    }
    char* chars() { return m_text.data(); }
    bool empty() const { return m_text.size() < 2; }
    bool equals(const Secret& other) const { return m_text == other.m_text; }

private:
    sigil::SecretBytes m_text;
};

} // namespace host
