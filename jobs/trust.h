// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Who is trusted when a certificate is judged, and where its issuers come from.
 */
#pragma once

#include "jobs/certificate.h"

#include <map>
#include <string>
#include <vector>

namespace host {

enum class Network { None, Issuers };

/** The trust of one handle of the façade: certificates that are given; when none are, the roots of the settings file.
 *  Issuers that are missing are fetched from the directories that the settings file names and from the addresses in the
 *  certificates, of the roots the one alone that is needed. */
class Trust {
public:
    /** Gathers what the certificate @p der needs. Throws Failure for what is given and no certificate. */
    Trust(const Setting& setting, const Crypto& crypto, const std::string& der, Network network,
        const std::vector<std::string>& given);

    /** The issuer's certificate in DER; empty when it could not be found. */
    const std::string& issuer() const { return m_issuer; }

    /** Judges the certificate.
     *  @param usage, revocation  SigilToolkitUsage, SigilToolkitRevocation
     *  @return a result of the library */
    int judge(int usage, int revocation, std::time_t when);
    /** The subjects of the path that was judged last, the certificate's own first. */
    std::vector<std::string> path() const;

private:
    void gather();
    std::string find(const std::string& subject, const std::string& child);
    std::string fetch(int kind, const std::string& url) const;
    void trust(const std::string& der);

    const Setting& m_setting;
    const Crypto& m_crypto;
    std::string m_der;
    Network m_network;
    bool m_trustsSettings;
    std::map<std::string, std::string> m_trusted; // by their subjects
    std::vector<std::string> m_intermediates;
    std::string m_issuer;
    std::vector<std::string> m_path;
};

/** A text field of a certificate, in UTF-8. */
std::string fieldOf(
    const Crypto& crypto, const std::string& der, int (*get)(void* handle, int capacity, char* text));

/** The addresses that stand behind @p name in a certificate: "OCSP" or "caIssuers". */
std::vector<std::string> addressesIn(const Crypto& crypto, const std::string& der, const char* name);

} // namespace host
