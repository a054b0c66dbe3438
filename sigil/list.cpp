// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// The list: which certificates there are, and what is known of them.
#include "sigil/call.h"

#include "jobs/filters.h"
#include "jobs/store_list.h"
#include "sigil/keys.h"

using host::Certificate;
using host::need;

namespace {

/** Whether a text that an option may give is that of the certificate. */
bool fits(const char* wanted, const Certificate& certificate, bool (*takes)(const Certificate&, const std::string&))
{
    return !wanted || takes(certificate, wanted);
}

bool isWanted(const SigilListOptions& options, const Certificate& certificate)
{
    return (options.families == 0 || (options.families & certificate.family) != 0) &&
        fits(options.issuer, certificate, host::isFromIssuer) &&
        fits(options.policy, certificate, host::hasPolicy) &&
        fits(options.subject, certificate, host::hasSubject) &&
        fits(options.serial, certificate, host::hasSerial) && (!options.valid || host::isValidNow(certificate)) &&
        (!options.expired || certificate.expired) &&
        (options.expires_within == 0 || host::endsWithin(certificate, options.expires_within));
}

void list(SigilSession& session, const SigilListOptions* given)
{
    const SigilListOptions options = host::known(given);
    host::needFamilies(options.families);
    need(options.expires_within >= 0, "the number of days");
    std::deque<host::Entry> entries;
    for (Certificate& certificate : host::storeList(session.setting, host::mediumOf(options.medium)))
        if (isWanted(options, certificate))
            entries.push_back({std::move(certificate), {}});
    session.entries.swap(entries);
}

SigilFields fieldsOf(const Certificate& certificate, bool isUnlocked = false)
{
    SigilFields fields{};
    fields.valid_from = certificate.from;
    fields.valid_to = certificate.to;
    fields.days_left = certificate.daysLeft;
    fields.expired = certificate.expired;
    fields.expires_soon = certificate.expiresSoon;
    fields.family = certificate.family;
    fields.has_key = !certificate.files.key.empty();
    fields.has_km = !certificate.files.kmKey.empty();
    fields.unlocked = isUnlocked;
    fields.name = certificate.name.c_str();
    fields.subject = certificate.subject.c_str();
    fields.issuer = certificate.issuer.c_str();
    fields.issuer_name = certificate.issuerName.c_str();
    fields.serial = certificate.serial.c_str();
    fields.use = certificate.use.c_str();
    fields.policy = certificate.policy.c_str();
    fields.version = certificate.version.c_str();
    fields.signature_algorithm = certificate.signatureAlgorithm.c_str();
    fields.key_algorithm = certificate.keyAlgorithm.c_str();
    fields.key_length = certificate.keyLength.c_str();
    fields.key_usage = certificate.keyUsage.c_str();
    fields.policies = certificate.policies.c_str();
    fields.alternative_name = certificate.alternativeName.c_str();
    fields.authority_key_id = certificate.authorityKeyId.c_str();
    fields.subject_key_id = certificate.subjectKeyId.c_str();
    fields.revocation_list = certificate.revocationList.c_str();
    fields.authority_access = certificate.authorityAccess.c_str();
    fields.certificate_file = certificate.files.certificate.c_str();
    fields.key_file = certificate.files.key.c_str();
    fields.km_certificate_file = certificate.files.kmCertificate.c_str();
    fields.km_key_file = certificate.files.kmKey.c_str();
    return fields;
}

} // namespace

int sigil_list(SigilSession* session, const SigilListOptions* options, int* count)
{
    return host::run(session, [&](SigilSession& s) {
        list(s, options);
        if (count)
            *count = static_cast<int>(s.entries.size());
    });
}

int sigil_fields(SigilSession* session, int entry, SigilFields* fields)
{
    return host::run(session, [&](SigilSession& s) {
        const host::Entry& chosen = host::entryOf(s, entry);
        host::fill(fields, fieldsOf(chosen.certificate, chosen.isUnlocked()));
    });
}

int sigil_certificate_fields(SigilSession* session, const void* certificate, size_t size, SigilFields* fields)
{
    return host::run(session, [&](SigilSession& s) {
        const std::string content(host::bytesOf(certificate, size, "the certificate"));
        need(fields != nullptr, "the fields");
        host::checkSize(fields->size, sizeof *fields);
        s.shown = host::readCertificate(s.setting, *s.crypto, content);
        host::fill(fields, fieldsOf(s.shown));
    });
}

int sigil_certificate(SigilSession* session, int entry, int pair, SigilBytes* certificate)
{
    return host::run(session, [&](SigilSession& s) {
        need(certificate != nullptr, "the certificate");
        const Certificate& chosen = host::entryOf(s, entry).certificate;
        const std::string& der = host::pairNumbered(pair) == host::Pair::Sign ? chosen.der : chosen.kmDer;
        if (der.empty())
            host::refuse(SIGIL_NO_KEY, chosen.name);
        host::give(der, certificate);
    });
}
