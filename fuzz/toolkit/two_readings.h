// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  A certificate read twice: as the toolkit reads it, and by OpenSSL alone. Both must take the same certificates and say the
 *  same of them.
 */
#pragma once

#include "toolkit/engine/base/error.h"
#include "toolkit/engine/x509/certificate.h"

#include <optional>
#include <string>

namespace fuzz {

/** What a body answers, or how it fails. */
template <class Body>
std::string outcome(Body body)
{
    const toolkit::ErrorScope scope;
    try {
        return "=" + body();
    } catch (const toolkit::Error& error) {
        return std::string("!") + error.what();
    }
}

inline std::string asText(const std::string& text) { return text; }
inline std::string asText(const toolkit::Bytes& bytes) { return {bytes.begin(), bytes.end()}; }
template <class Number>
std::string asText(Number number)
{
    return std::to_string(number);
}
template <class T>
std::string asText(const std::optional<T>& value)
{
    return value ? asText(*value) : "none";
}

/** Name of the first field of which the two readings differ; nothing when they agree. */
class TwoReadings {
public:
    TwoReadings(const toolkit::Library& library, toolkit::View der)
        : m_ours(read(library, der, m_certificate))
        , m_theirs(read(library, der, m_parsed))
    {
    }

    bool isTaken() const { return m_parsed.has_value(); }

    std::optional<std::string> difference() const
    {
        if (m_ours != m_theirs)
            return "acceptance: " + m_ours + " / " + m_theirs;
        if (!isTaken())
            return {};
        using Ours = toolkit::Certificate;
        using Theirs = toolkit::ParsedCertificate;
        std::optional<std::string> found;
        const auto compare = [&](const char* name, auto ours, auto theirs) {
            const std::string a = outcome([&] { return asText(((*m_certificate).*ours)()); });
            const std::string b = outcome([&] { return asText(((*m_parsed).*theirs)()); });
            if (!found && a != b)
                found = std::string(name) + ": " + a + " / " + b;
        };
#define FIELD(name) compare(#name, &Ours::name, &Theirs::name)
        FIELD(der);
        FIELD(uid);
        FIELD(version);
        FIELD(serialNumber);
        FIELD(signatureAlgorithm);
        FIELD(signature);
        FIELD(issuerName);
        FIELD(subjectName);
        FIELD(subjectNameDer);
        FIELD(notBefore);
        FIELD(notAfter);
        FIELD(publicKeyAlgorithm);
        FIELD(publicKeyLength);
        FIELD(publicKeyText);
        FIELD(publicKeyDer);
        FIELD(usageBits);
        FIELD(policies);
        FIELD(policyIds);
        FIELD(subjectAltName);
        FIELD(authorityKeyId);
        FIELD(subjectKeyId);
        FIELD(crlDistributionPoints);
        FIELD(authorityInfoAccess);
        FIELD(identifyData);
#undef FIELD
        return found;
    }

private:
    template <class Reading>
    static std::string read(const toolkit::Library& library, toolkit::View der, std::optional<Reading>& reading)
    {
        return outcome([&] {
            reading.emplace(library, der);
            return std::string("taken");
        });
    }

    std::optional<toolkit::Certificate> m_certificate;
    std::optional<toolkit::ParsedCertificate> m_parsed;
    std::string m_ours;
    std::string m_theirs;
};

} // namespace fuzz
