// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// The selection dialog: what the user chose there becomes an entry that is unlocked.
#include "sigil/call.h"
#include "sigil/installed_folder.h"

#include "jobs/dialog.h"
#include "jobs/keys.h"

#include <algorithm>

using host::Certificate;
using host::item;
using host::need;

namespace {

/** Puts a text of the caller into a field of the dialog's options, which is empty. Throws Failure (1001). */
template <std::size_t N>
void put(char (&field)[N], const std::string& text)
{
    need(!text.empty() && text.size() < N, "a text of the options");
    text.copy(field, N - 1);
}

/** "1.2.3|1.2.4" as the list takes it: "1 2 3|1 2 4|". */
std::string listedPolicies(std::string policies)
{
    std::replace(policies.begin(), policies.end(), '.', ' ');
    return policies.empty() ? policies : policies + "|";
}

host::DialogRequest requestOf(const host::Setting& setting, const SigilPickOptions& options)
{
    host::DialogRequest request = host::dialogRequest(setting);
    tagLOADSELECTCERTOPTION& load = request.load;
    host::needFamilies(options.families);
    if (options.families != 0)
        load.nPKITypes = static_cast<unsigned>(options.families);
    load.nKeyPairType = options.with_km ? SIGIL_KEY_PAIR_BOTH : 0;
    load.nSelectFlags = (options.no_expired ? SIGIL_SELECT_EXCLUDE_EXPIRED : 0) |
        (options.lock_expired ? SIGIL_SELECT_LOCK_EXPIRED : 0);
    if (options.policies)
        put(load.szPolicyIDs, listedPolicies(options.policies));
    if (options.subject)
        put(load.szSubjectDN, options.subject);
    if (options.serial)
        put(load.szSerialNum, options.serial);
    return request;
}

/** As the list would have it. */
Certificate certificateOf(const SigilSession& session, const host::DialogChoice& chosen)
{
    const std::string der(item(chosen->bySignCert, chosen->nSignCertLen));
    Certificate certificate = host::readCertificate(session.setting, *session.crypto, der);
    certificate.files.certificate = chosen->szSignCertPath;
    certificate.files.key = chosen->szSignPriKeyPath;
    certificate.kmDer = item(chosen->byKmCert, chosen->nKmCertLen);
    if (!certificate.kmDer.empty())
        certificate.files.kmCertificate = chosen->szKmCertPath;
    if (chosen->nKmPriKeyLen > 0)
        certificate.files.kmKey = chosen->szKmPriKeyPath;
    return certificate;
}

host::Keys keysOf(const host::DialogChoice& chosen)
{
    const auto bytes = [](std::string_view key) { return sigil::SecretBytes(key.begin(), key.end()); };
    return {bytes(item(chosen->bySignPriKey, chosen->nSignPriKeyLen)),
        bytes(item(chosen->byKmPriKey, chosen->nKmPriKeyLen))};
}

/** The entry that the certificate has already; else a new one, behind those that there are. */
std::size_t placeOf(std::deque<host::Entry>& entries, Certificate certificate)
{
    const auto found = std::find_if(entries.begin(), entries.end(), [&](const host::Entry& entry) {
        return entry.certificate.files.certificate == certificate.files.certificate &&
            entry.certificate.der == certificate.der && entry.certificate.kmDer == certificate.kmDer;
    });
    const auto place = static_cast<std::size_t>(found - entries.begin());
    if (found == entries.end())
        entries.push_back({std::move(certificate), {}});
    return place;
}

} // namespace

int sigil_pick(SigilSession* session, const SigilPickOptions* options, int* entry)
{
    return host::run(session, [&](SigilSession& s) {
        need(entry != nullptr, "the entry");
        const host::DialogRequest request = requestOf(s.setting, host::known(options));
        const host::DialogChoice chosen = host::chooseInDialog(host::installedFolder(), request);
        host::Keys keys = keysOf(chosen);
        const std::size_t place = placeOf(s.entries, certificateOf(s, chosen));
        s.entries[place].keys.swap(keys);
        *entry = static_cast<int>(place);
    });
}
