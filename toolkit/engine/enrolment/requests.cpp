// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "toolkit/engine/enrolment/requests.h"

#include "toolkit/engine/base/error.h"
#include "toolkit/engine/trust/issuer.h"

#include <utility>

namespace toolkit {
namespace {

constexpr unsigned signingUsage = KU_DIGITAL_SIGNATURE | KU_NON_REPUDIATION;
constexpr unsigned keyManagementUsage = KU_KEY_ENCIPHERMENT | KU_DATA_ENCIPHERMENT;
constexpr int unusedReason = 7; ///< RFC 5280 leaves this number out
constexpr int lastReason = 10;

/** The certificate of the issuer among @p others; empty when it is not there. */
Bytes issuerAmong(const std::vector<Certificate>& others, const Certificate& certificate)
{
    for (const Certificate& other : others)
        if (issued(other, certificate) && hasSigned(other.get(), certificate.get()))
            return other.der();
    return {};
}

Bytes issuerOf(const EnrolmentTerms& terms, const Issued& answer)
{
    Bytes known = terms.trust ? issuerAmong(terms.trust->trusted, answer.certificate) : Bytes();
    return known.empty() ? issuerAmong(answer.others, answer.certificate) : known;
}

/** A request that the owner of a certificate signs, for a certificate of its subject. */
Certificate requestAs(const EnrolmentTerms& terms, const KeyOwner& owner, int kind, EVP_PKEY* key, unsigned usage)
{
    Transaction transaction(terms.library, terms.authority, terms.trust, terms.hash);
    transaction.protectWith(owner);
    const X509_NAME* const subject = X509_get_subject_name(owner.certificate.read());
    return transaction.request(kind, {key, subject, false, usage}).certificate;
}

} // namespace

Introduction introduce(
    const EnrolmentTerms& terms, const SharedSecret& secret, std::string_view subject, EVP_PKEY* key)
{
    const NameHandle name =
        nameFromText(subject.empty() ? "cn=" + std::string(secret.reference) : std::string(subject));
    Transaction transaction(terms.library, terms.authority, terms.trust, terms.hash);
    transaction.protectWith(secret);
    Issued answer = transaction.request(OSSL_CMP_IR, {key, name.get(), subject.empty(), signingUsage});
    Bytes issuer = issuerOf(terms, answer);
    return {std::move(answer.certificate), std::move(issuer)};
}

Certificate requestKeyManagement(const EnrolmentTerms& terms, const KeyOwner& owner, EVP_PKEY* key)
{
    return requestAs(terms, owner, OSSL_CMP_CR, key, keyManagementUsage);
}

Certificate requestRenewal(const EnrolmentTerms& terms, const KeyOwner& owner, EVP_PKEY* key)
{
    return requestAs(terms, owner, OSSL_CMP_KUR, key, 0);
}

std::string requestRevocation(const EnrolmentTerms& terms, const KeyOwner& owner, int reason)
{
    require(reason >= 0 && reason <= lastReason && reason != unusedReason, SIGIL_TK_ARGUMENT, "reason");
    Transaction transaction(terms.library, terms.authority, terms.trust, terms.hash);
    transaction.protectWith(owner);
    return transaction.revoke(reason);
}

} // namespace toolkit
