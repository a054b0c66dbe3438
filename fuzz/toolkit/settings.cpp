// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Any text as a context's settings file.

#include "toolkit/engine/base/settings.h"
#include "fuzz/memory_file.h"
#include "fuzz/toolkit/input.h"

FUZZ_TARGET(toolkit_settings, input)
{
    using namespace toolkit;
    const std::string text = fuzz::text(input);
    const std::string nonce = settingOf(text, "OCSP", "Nonce");
    require(
        nonce.find('\n') == nonce.npos && !nonce.ends_with(' '), "a value is one line without blanks behind it");
    settingOf(text, text.substr(0, text.size() / 2), text.substr(text.size() / 2));
    static Context context;
    fuzz::attempt([&] {
        readConfFile(context, fuzz::MemoryFile(text).path());
        require(context.ocsp.acceptsAnyNonce == (nonce == "0"), "a file says what its text says");
    });
}
