/** @file
 *  The one getter whose text the façade itself writes.
 */
#pragma once

#include "facade/backends/toolkit.h"

#include <cstdio>

namespace sigil {

/** Asks @p symbol for a certificate's version number and writes it into @p text in decimal, also when the toolkit fails:
 *  callers show what the toolkit had reached, or 0. */
template <class AnyToolkit>
int versionText(AnyToolkit& toolkit, const char* symbol, int capacity, char* text)
{
    if (const int code = toolkit.refusal({need(text)}))
        return code;
    if (!toolkit.has(symbol))
        return FunctionMissing;
    int version = 0;
    const int result = toolkit.call(symbol, {}, &version);
    if (capacity > 0)
        static_cast<void>(std::snprintf(text, static_cast<std::size_t>(capacity), "%d", version)); // cut to fit
    return result;
}

} // namespace sigil
