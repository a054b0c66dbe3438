// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Any record of a certificate beside any words that it is chosen by.

#include "jobs/filters.h"
#include "fuzz/script.h"
#include "jobs/text_conversion.h"

#include <cstring>
#include <memory>

namespace {

/** A record whose texts come from the input, each within its field and terminated. */
std::unique_ptr<tagCERTINFO> recordOf(fuzz::Script& script)
{
    auto entry = std::make_unique<tagCERTINFO>();
    const auto set = [&](char* field, std::size_t size) { fuzz::text(script.word()).copy(field, size - 1); };
    set(entry->szSubjectDN, sizeof entry->szSubjectDN);
    set(entry->szIssuerDN, sizeof entry->szIssuerDN);
    set(entry->szIssuerName, sizeof entry->szIssuerName);
    set(entry->szSerialNum, sizeof entry->szSerialNum);
    set(entry->szPolicyID, sizeof entry->szPolicyID);
    set(entry->szPolicyName, sizeof entry->szPolicyName);
    set(entry->szNotBefore, sizeof entry->szNotBefore);
    set(entry->szNotAfter, sizeof entry->szNotAfter);
    entry->nPKIType = static_cast<int>(script.number());
    entry->nExpired = static_cast<int>(script.number(2));
    return entry;
}

} // namespace

FUZZ_TARGET(jobs_filters, input)
{
    fuzz::Script script(input);
    const host::Certificate certificate = host::certificateOf(*recordOf(script));
    require(host::hasSubject(certificate, certificate.subject), "a certificate has its own subject");
    require(host::isNamed(certificate, certificate.name), "a certificate has its own name");
    require(host::hasSerial(certificate, certificate.serial), "a certificate has its own number");
    require(host::isFromIssuer(certificate, certificate.issuer), "a certificate is from its issuer");
    const std::string words = fuzz::text(script.rest());
    host::hasPolicy(certificate, words);
    host::hasSerial(certificate, words);
    host::isValidNow(certificate);
    host::endsWithin(certificate, static_cast<int>(words.size()));
    host::isoTime(host::timeOf(words));
    host::filled(words, {certificate.name, words});
    require(host::utf8(host::utf8(words)).size() <= 12 * words.size(), "a text that is converted does not explode");
}
