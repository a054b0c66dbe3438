#include "toolkit/engine/enrolment/enrolment.h"

#include "toolkit/engine/base/error.h"
#include "toolkit/engine/keys/asymmetric.h"
#include "toolkit/engine/keys/private_key.h"
#include "toolkit/engine/trust/issuer.h"

#include <algorithm>

namespace toolkit {
namespace {

constexpr unsigned signingUsage = KU_DIGITAL_SIGNATURE | KU_NON_REPUDIATION;
constexpr unsigned keyManagementUsage = KU_KEY_ENCIPHERMENT | KU_DATA_ENCIPHERMENT;
constexpr int unusedReason = 7; ///< RFC 5280 leaves this number out
constexpr int lastReason = 10;

/** The kind of a fresh key beside @p key: the same curve, or RSA with as many bits, never less than 2048. */
int kindLike(const EVP_PKEY* key)
{
    const int bits = EVP_PKEY_get_bits(key);
    return EVP_PKEY_is_a(key, "EC") == 1 ? bits : std::max<int>(bits, SIGIL_TK_KEYPAIR_RSA2048);
}

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

/** A pair for key management, asked for with the signing pair; its subject is the one that the authority gave that. */
std::optional<EnrolledPair> requestKeyManagement(
    const EnrolmentTerms& terms, const TrustStore& trust, const KeyOwner& owner)
{
    try {
        const KeyHandle key = generateKey(terms.library, SIGIL_TK_KEYPAIR_RSA2048);
        Transaction transaction(terms.library, terms.authority, &trust, terms.hash);
        transaction.protectWith(owner);
        const X509_NAME* const subject = X509_get_subject_name(owner.certificate.read());
        const Issued answer = transaction.request(OSSL_CMP_CR, {key.get(), subject, false, keyManagementUsage});
        return EnrolledPair{answer.certificate.der(), encodePrivateKey(key.get())};
    } catch (const Error& error) {
        requireMemory(error);
        return {};
    }
}

Secret inheritingRandom(Secret fresh, View old)
{
    try {
        return withIdentityRandom(fresh, identityRandom(old));
    } catch (const Error& error) {
        requireMemory(error);
        require(error.code() == SIGIL_TK_VID_NO_RANDOM, error.code(), error.detail());
        return fresh;
    }
}

} // namespace

Enrolled enrol(const EnrolmentTerms& terms, const Enrolment& enrolment)
{
    const bool subjectIsFree = enrolment.subject.empty();
    const NameHandle subject = nameFromText(
        subjectIsFree ? "cn=" + std::string(enrolment.secret.reference) : std::string(enrolment.subject));
    const KeyHandle key = generateKey(terms.library, SIGIL_TK_KEYPAIR_RSA2048);
    Transaction transaction(terms.library, terms.authority, terms.trust, terms.hash);
    transaction.protectWith(enrolment.secret);
    const Issued answer = transaction.request(OSSL_CMP_IR, {key.get(), subject.get(), subjectIsFree, signingUsage});
    Enrolled enrolled{{answer.certificate.der(), encodePrivateKey(key.get())}, {}, issuerOf(terms, answer)};
    if (!enrolment.withKeyManagement)
        return enrolled;
    TrustStore introduced; // by the secret: whoever issued what it protects
    if (!enrolled.issuer.empty())
        introduced.trusted.emplace_back(terms.library, enrolled.issuer);
    enrolled.keyManagement =
        requestKeyManagement(terms, terms.trust ? *terms.trust : introduced, {answer.certificate, key.get()});
    return enrolled;
}

EnrolledPair renew(const EnrolmentTerms& terms, const Certificate& certificate, View keyInfo, bool freshKey)
{
    checkKeyPair(terms.library, certificate, keyInfo);
    const KeyHandle old = loadPrivateKey(terms.library, keyInfo);
    const KeyHandle fresh = freshKey ? generateKey(terms.library, kindLike(old.get())) : nullptr;
    EVP_PKEY* const key = fresh ? fresh.get() : old.get();
    Transaction transaction(terms.library, terms.authority, terms.trust, terms.hash);
    transaction.protectWith(KeyOwner{certificate, old.get()});
    const Issued answer =
        transaction.request(OSSL_CMP_KUR, {key, X509_get_subject_name(certificate.read()), false, 0});
    return {answer.certificate.der(), fresh ? inheritingRandom(encodePrivateKey(key), keyInfo) : toSecret(keyInfo)};
}

std::string revoke(const EnrolmentTerms& terms, const Certificate& certificate, View keyInfo, int reason)
{
    require(reason >= 0 && reason <= lastReason && reason != unusedReason, SIGIL_TK_ARGUMENT, "reason");
    checkKeyPair(terms.library, certificate, keyInfo);
    const KeyHandle key = loadPrivateKey(terms.library, keyInfo);
    Transaction transaction(terms.library, terms.authority, terms.trust, terms.hash);
    transaction.protectWith(KeyOwner{certificate, key.get()});
    return transaction.revoke(reason);
}

} // namespace toolkit
