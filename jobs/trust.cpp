// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "jobs/trust.h"

#include "certlist/authorities.h"
#include "foundation/ascii.h"
#include "jobs/text_conversion.h"

#include <sigildesk/open_toolkit.h>

#include <algorithm>
#include <array>

namespace host {

namespace {

constexpr int longestPath = 8; ///< authorities above a certificate; no real path has more

/** What toolkits call fieldOf() with in CP949 for addresses stays as it is. */
std::string rawField(const Crypto& crypto, const std::string& der, int (*get)(void*, int, char*))
{
    constexpr int capacity = 2048;
    std::array<char, capacity + 1> text{};
    Bytes certificate(crypto.handle());
    set(crypto, certificate, der);
    if (CertLoad(crypto.handle(), certificate.get()) == SIGIL_SUCCESS)
        static_cast<void>(get(crypto.handle(), capacity, text.data())); // an extension may be missing
    CertUnLoad(crypto.handle());
    return text.data();
}

std::string settingsFile(const Setting& setting) { return setting.folder + "/HVCToolkitV30.conf"; }

} // namespace

std::string fieldOf(const Crypto& crypto, const std::string& der, int (*get)(void*, int, char*))
{
    return utf8(rawField(crypto, der, get));
}

std::vector<std::string> addressesIn(const Crypto& crypto, const std::string& der, const char* name)
{
    const std::string text = rawField(crypto, der, CertGetAIA);
    const std::string label = std::string(name) + "=";
    std::vector<std::string> addresses;
    for (std::size_t start = 0; start < text.size();) {
        const std::size_t end = std::min(text.find(", ", start), text.size());
        if (text.compare(start, label.size(), label) == 0)
            addresses.push_back(text.substr(start + label.size(), end - start - label.size()));
        start = end + 2;
    }
    return addresses;
}

Trust::Trust(const Setting& setting, const Crypto& crypto, const std::string& der, Network network,
    const std::vector<std::string>& given)
    : m_setting(setting)
    , m_crypto(crypto)
    , m_der(der)
    , m_network(network)
    , m_trustsSettings(given.empty())
{
    for (const std::string& certificate : given)
        trust(certificate);
    gather();
}

void Trust::trust(const std::string& der)
{
    Bytes certificate(m_crypto.handle());
    set(m_crypto, certificate, der);
    m_crypto.check(CertAddTrustedCert(m_crypto.handle(), certificate.get()));
    m_trusted[rawField(m_crypto, der, CertGetSubjectName)] = der;
}

/** Goes up from issuer to issuer until one is trusted. */
void Trust::gather()
{
    std::string child = m_der;
    for (int i = 0; i < longestPath; ++i) {
        const std::string subject = rawField(m_crypto, child, CertGetIssuerName);
        if (subject == rawField(m_crypto, child, CertGetSubjectName))
            return;
        const auto known = m_trusted.find(subject);
        const std::string found = known != m_trusted.end() ? known->second : find(subject, child);
        if (i == 0)
            m_issuer = found;
        if (found.empty() || m_trusted.count(subject) > 0)
            return;
        m_intermediates.push_back(found);
        child = found;
    }
}

/** Fetches the certificate of an authority. A root of the settings file is trusted when nobody else is. */
std::string Trust::find(const std::string& subject, const std::string& child)
{
    if (m_network == Network::None)
        return {};
    for (const sigil::Authority& authority : sigil::readAuthorities(settingsFile(m_setting).c_str())) {
        if (!sigil::equalsIgnoringCase(authority.dn, subject) || !*authority.url ||
            !sigil::mayBeFetched(authority.dn))
            continue;
        std::string der = fetch(SIGIL_TK_FETCH_CA_CERT, std::string(authority.url) + "/" + authority.dn);
        if (!der.empty() && authority.isRoot() && m_trustsSettings)
            trust(der);
        if (!der.empty())
            return der;
    }
    for (const std::string& address : addressesIn(m_crypto, child, "caIssuers"))
        if (std::string der = fetch(SIGIL_TK_FETCH_CA_CERT, address); !der.empty())
            return der;
    return {};
}

std::string Trust::fetch(int kind, const std::string& url) const
{
    std::string address = url;
    Bytes data(m_crypto.handle());
    if (HVAPGetDataByURL(m_crypto.handle(), kind, address.data(), data.get()) != SIGIL_SUCCESS)
        return {};
    const std::string der = derOf(m_crypto, view(data));
    Bytes certificate(m_crypto.handle());
    set(m_crypto, certificate, der);
    const bool isCertificate = CertLoad(m_crypto.handle(), certificate.get()) == SIGIL_SUCCESS;
    CertUnLoad(m_crypto.handle());
    return isCertificate ? der : std::string();
}

int Trust::judge(int usage, int revocation, std::time_t when)
{
    std::string time = libraryTime(when);
    int code = CertSetVerifyEnv(m_crypto.handle(), SIGIL_TK_PATH_GIVEN, revocation, false, nullptr, time.data());
    if (code != SIGIL_SUCCESS)
        return code;
    Bytes certificate(m_crypto.handle());
    Bytes intermediates(m_crypto.handle());
    Bytes path(m_crypto.handle());
    set(m_crypto, certificate, m_der);
    setList(m_setting, m_crypto, m_intermediates, intermediates);
    code = CertVerify(m_crypto.handle(), certificate.get(), usage, nullptr, nullptr, false,
        m_intermediates.empty() ? nullptr : intermediates.get(), path.get());
    if (code == SIGIL_SUCCESS)
        m_path = itemsOf(m_setting, m_crypto, path);
    return code;
}

std::vector<std::string> Trust::path() const
{
    std::vector<std::string> subjects;
    for (const std::string& der : m_path)
        subjects.push_back(fieldOf(m_crypto, der, CertGetSubjectName));
    return subjects;
}

} // namespace host
