// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  A character field for a password.
 */
#pragma once

#include "foundation/secret.h"

#include <cstddef>

namespace sigil {

/** Overwritten when it goes. */
template <std::size_t N>
struct PasswordBuffer {
    char text[N] = {};

    PasswordBuffer() = default;
    ~PasswordBuffer() { wipe(text, N); }
    PasswordBuffer(const PasswordBuffer&) = delete;
    PasswordBuffer& operator=(const PasswordBuffer&) = delete;
};

} // namespace sigil
