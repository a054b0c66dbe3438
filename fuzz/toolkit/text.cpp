// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// The text forms of certificates' fields, from any bytes: encodings, numbers, OIDs, policies and times.

#include "toolkit/engine/x509/text.h"
#include "fuzz/toolkit/input.h"
#include "toolkit/engine/trust/trust.h"

#include <array>

namespace {

using namespace toolkit;

void encodings(View bytes, const std::string& text)
{
    const std::string cp949 = cp949FromUtf8(text);
    const auto utf8 = utf8FromCp949(cp949);
    require(utf8.has_value() && isUtf8(*utf8), "what was made CP949 is CP949");
    require(cp949FromUtf8(*utf8) == cp949, "there and back gives the same text");
    for (std::size_t size = 0; size <= cp949.size(); ++size)
        require(utf8FromCp949(cutText(cp949, size)).has_value(), "no character is cut");
    for (const int type : {V_ASN1_UTF8STRING, V_ASN1_BMPSTRING, V_ASN1_UNIVERSALSTRING, V_ASN1_T61STRING,
             V_ASN1_IA5STRING, V_ASN1_PRINTABLESTRING, V_ASN1_INTEGER})
        require(utf8FromCp949(asn1Text(type, bytes)).has_value(), "every string is shown as CP949");
    require(bytesOfHex(hexText(bytes)) == toBytes(bytes), "hexadecimal text comes back as the bytes");
}

void numbers(const std::string& text)
{
    fuzz::attempt([&] { bytesOfHex(text); });
    require(dotted(blankOid(dotted(text))) == dotted(text), "dots and blanks stand for each other");
    for (const std::string& policy : policiesOf(text))
        require(!policy.empty(), "no policy is empty");
    policyText(text, {text, text});
    if (const auto time = timeFromText(text))
        require(timeText(*time) == text, "a time is printed as it was read");
    fuzz::attempt([&] { optionalTime(text); });
}

} // namespace

FUZZ_TARGET(toolkit_text, input)
{
    const std::string text = fuzz::text(input);
    encodings(input, text);
    numbers(text);
    std::string name;
    addAttribute(name, false, text, text);
    addAttribute(name, true, "cn", text);
}
