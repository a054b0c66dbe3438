// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "jobs/filters.h"

#include <algorithm>

namespace host {

namespace {

std::string lowered(std::string text)
{
    std::transform(text.begin(), text.end(), text.begin(),
        [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    return text;
}

/** A serial number without what people write between its digits. */
std::string plainSerial(const std::string& text)
{
    std::string digits;
    for (const char c : lowered(text.substr(text.starts_with("0x") || text.starts_with("0X") ? 2 : 0)))
        if (c != ':' && c != ' ' && !(c == '0' && digits.empty()))
            digits += c;
    return digits;
}

/** A name without the blanks that people write after its commas. */
std::string plainName(const std::string& text)
{
    std::string name;
    for (const char c : lowered(text)) {
        if (c == ' ' && (name.empty() || name.back() == ','))
            continue;
        name += c;
    }
    return name;
}

bool holds(const std::string& text, const std::string& part)
{
    return lowered(text).find(lowered(part)) != std::string::npos;
}

} // namespace

bool hasPolicy(const Certificate& certificate, const std::string& wanted)
{
    std::string rest = certificate.policy;
    std::replace(rest.begin(), rest.end(), ',', '\n');
    const std::string oid = dotted(wanted);
    std::size_t start = 0;
    while (start < rest.size()) {
        const std::size_t end = std::min(rest.find('\n', start), rest.size());
        std::string one = rest.substr(start, end - start);
        one.erase(0, one.find_first_not_of('.')); // of the blank behind the comma
        if (one == oid)
            return true;
        start = end + 1;
    }
    return false;
}

bool isFromIssuer(const Certificate& certificate, const std::string& part)
{
    return holds(certificate.issuer, part) || holds(certificate.issuerName, part);
}

bool hasSubject(const Certificate& certificate, const std::string& subject)
{
    return plainName(certificate.subject) == plainName(subject);
}

bool isNamed(const Certificate& certificate, const std::string& name)
{
    return lowered(certificate.name) == lowered(name);
}

bool hasSerial(const Certificate& certificate, const std::string& serial)
{
    return plainSerial(certificate.serial) == plainSerial(serial);
}

bool isValidNow(const Certificate& certificate)
{
    return !certificate.expired && certificate.from <= std::time(nullptr);
}

bool endsWithin(const Certificate& certificate, int days)
{
    constexpr std::time_t secondsOfADay = 24L * 60 * 60;
    return !certificate.expired && certificate.to <= std::time(nullptr) + days * secondsOfADay;
}

} // namespace host
