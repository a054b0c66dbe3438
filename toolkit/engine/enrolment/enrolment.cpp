// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "toolkit/engine/enrolment/enrolment.h"

#include "toolkit/engine/base/error.h"
#include "toolkit/engine/keys/asymmetric.h"
#include "toolkit/engine/keys/private_key.h"

namespace toolkit {
namespace {

EnrolledPair pairOf(const Certificate& certificate, const EVP_PKEY* key)
{
    return {certificate.der(), encodePrivateKey(key)};
}

/** A pair for key management, asked for with the signing pair. */
std::optional<EnrolledPair> enrolKeyManagement(const EnrolmentTerms& terms, const KeyOwner& owner)
{
    try {
        const KeyHandle key = generateKey(terms.library, SIGIL_TK_KEYPAIR_RSA2048);
        return pairOf(requestKeyManagement(terms, owner, key.get()), key.get());
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
    const KeyHandle key = generateKey(terms.library, SIGIL_TK_KEYPAIR_RSA2048);
    const Introduction first = introduce(terms, enrolment.secret, enrolment.subject, key.get());
    Enrolled enrolled{pairOf(first.certificate, key.get()), {}, first.issuer};
    if (!enrolment.withKeyManagement)
        return enrolled;
    TrustStore introduced; // by the secret: whoever issued what it protects
    if (!first.issuer.empty())
        introduced.trusted.emplace_back(terms.library, first.issuer);
    const EnrolmentTerms later{terms.library, terms.authority, terms.trust ? terms.trust : &introduced, terms.hash};
    enrolled.keyManagement = enrolKeyManagement(later, {first.certificate, key.get()});
    return enrolled;
}

EnrolledPair renew(const EnrolmentTerms& terms, const Certificate& certificate, View keyInfo, bool freshKey)
{
    checkKeyPair(terms.library, certificate, keyInfo);
    const KeyHandle old = loadPrivateKey(terms.library, keyInfo);
    const KeyHandle fresh = freshKey ? generateKey(terms.library, kindLike(old.get())) : nullptr;
    EVP_PKEY* const key = fresh ? fresh.get() : old.get();
    const Certificate renewed = requestRenewal(terms, {certificate, old.get()}, key);
    return {renewed.der(), fresh ? inheritingRandom(encodePrivateKey(key), keyInfo) : toSecret(keyInfo)};
}

std::string revoke(const EnrolmentTerms& terms, const Certificate& certificate, View keyInfo, int reason)
{
    checkKeyPair(terms.library, certificate, keyInfo);
    const KeyHandle key = loadPrivateKey(terms.library, keyInfo);
    return requestRevocation(terms, {certificate, key.get()}, reason);
}

} // namespace toolkit
