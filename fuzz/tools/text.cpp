// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Any bytes on their way to a terminal of any letters.

#include "tools/sigildesk/text.h"
#include "fuzz/target.h"

#include <clocale>

FUZZ_TARGET(tools_text, input)
{
    const std::string text = fuzz::text(input);
    const std::string shown = host::harmless(text);
    require(host::harmless(shown) == shown, "what is harmless stays");
    require(host::columns(shown) <= 2 * shown.size(), "no letter takes more than two columns");
    for (const char* const locale : {"C", "C.UTF-8"}) {
        std::setlocale(LC_CTYPE, locale);
        const host::Charset charset;
        const std::string visible = charset.visible(shown);
        require(charset.encode(visible) == charset.encode(shown), "what is seen is what is printed");
    }
    host::harmlessJson(text);
}
