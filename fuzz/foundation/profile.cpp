// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// The profile reader on files of any content. The first line of the input is the key, the rest is the file.

#include "fuzz/memory_file.h"
#include "tests/foundation/profile_model.h"

#include <sigildesk/profile.h>
#include <sigildesk/util.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <string>

FUZZ_TARGET(foundation_profile, input)
{
    const std::string text = fuzz::text(input);
    const std::size_t end = std::min(text.find('\n'), text.size());
    std::string key = text.substr(0, end);
    const std::string_view content = std::string_view(text).substr(std::min(end + 1, text.size()));
    fuzz::MemoryFile file(content);

    for (const char* name : {"UserInterface", "S", ""}) {
        std::string section = name;
        char fallback[] = "";
        std::array<char, 40> out;
        out.fill('#');
        const int outSize = static_cast<int>(out.size()) - 1;
        const int length =
            FileGetPrivateProfileString(section.data(), key.data(), fallback, out.data(), outSize, file.chars());
        require(length >= 0 && length < outSize, "the length lies within the output");
        require(std::strlen(out.data()) == static_cast<std::size_t>(length), "the length is that of the text");
        require(out.back() == '#', "nothing is written behind the output");
        const std::string value = profile_model::lookUp(content, name, key.c_str()).value_or("");
        require(out.data() == value.substr(0, out.size() - 2), "the text is what the rules say");
        FileGetPrivateProfileInt(section.data(), key.data(), 0, file.chars());
    }
    char shown[16] = ""; // its last byte stays, for texts that fill what they are given
    CUtil(0, nullptr).GetLanguageUIText(file.chars(), key.data(), sizeof shown - 1, shown);
    require(std::strlen(shown) < sizeof shown, "a language text is terminated");
    require(StrTrimString(key.data()) == 1, "trimming succeeds");
}
