// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  The one getter whose text the façade itself writes.
 */
#pragma once

#include "facade/backends/toolkit.h"
#include "foundation/text_field.h"

#include <string>

namespace sigil {

/** Asks @p symbol for a certificate's version number and writes it into @p text in decimal, also when the toolkit fails:
 *  callers show what the toolkit had reached, or 0. */
template <class AnyToolkit>
int versionText(AnyToolkit& toolkit, Symbol<int(void* context, int* version)> symbol, int capacity, char* text)
{
    const Needs needs{need(text)};
    int version = 0;
    const int result = toolkit.call(symbol, needs, &version);
    const bool asked = result == 0 || (toolkit.refusal(needs) == 0 && toolkit.has(symbol));
    if (asked && capacity > 0)
        copyText(text, static_cast<std::size_t>(capacity), std::to_string(version));
    return result;
}

} // namespace sigil
