// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// The text forms of certificates' fields, from any bytes: encodings, numbers, OIDs, policies and times.

#include "toolkit/engine/x509/text.h"
#include "fuzz/toolkit/input.h"

namespace {

using namespace toolkit;

void encodings(const std::string& text)
{
    const std::string cp949 = cp949FromUtf8(text);
    const auto utf8 = utf8FromCp949(cp949);
    require(utf8.has_value() && isUtf8(*utf8), "what was made CP949 is CP949");
    require(cp949FromUtf8(*utf8) == cp949, "there and back gives the same text");
    for (std::size_t size = 0; size <= cp949.size(); ++size)
        require(utf8FromCp949(cutText(cp949, size)).has_value(), "no character is cut");
}

void numbers(const std::string& text)
{
    require(dotted(blankOid(dotted(text))) == dotted(text), "dots and blanks stand for each other");
    policyText(text, {text, text});
    if (const auto time = timeFromText(text))
        require(timeText(*time) == text, "a time is printed as it was read");
}

} // namespace

FUZZ_TARGET(parsers_text, input)
{
    const std::string text = fuzz::text(input);
    encodings(text);
    numbers(text);
    std::string name;
    addAttribute(name, false, text, text);
    addAttribute(name, true, "cn", text);
}
