// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Any text as a distinguished name: what is read is printed in a form that is read as the same name.

#include "toolkit/engine/x509/name.h"
#include "fuzz/toolkit/input.h"
#include "toolkit/engine/x509/text.h"

FUZZ_TARGET(toolkit_name, input)
{
    using namespace toolkit;
    const std::string text = fuzz::text(input);
    const std::size_t half = text.find('\n');
    sameName(text, half == text.npos ? text : text.substr(half + 1));
    require(sameName(text, text), "a name is the same as itself");
    fuzz::attempt([&] {
        const NameHandle name = nameFromText(text);
        const std::string printed = nameText(name.get());
        require(printed.find('\n') == printed.npos, "a name is one line");
        const auto utf8 = utf8FromCp949(printed); // CP949 that is UTF-8 by chance would be read as that
        require(utf8.has_value(), "a name is printed as CP949");
        fuzz::attempt([&] {
            require(sameName(nameText(nameFromText(*utf8).get()), printed), "a printed name is the same name");
        });
    });
}
