// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "toolkit/engine/trust/issuer.h"

#include "toolkit/engine/base/error.h"
#include "toolkit/engine/trust/soundness.h"

#include <optional>

namespace toolkit {

bool issued(const Certificate& issuer, const Certificate& subject)
{
    return X509_check_issued(issuer.get(), subject.get()) == X509_V_OK;
}

bool hasSigned(const X509* issuer, X509* subject)
{
    EVP_PKEY* const key = X509_get0_pubkey(issuer);
    return key && !isForgeable(X509_get0_tbs_sigalg(subject), key) && X509_verify(subject, key) == 1;
}

void requireSigned(const Certificate& issuer, const Certificate& subject)
{
    require(!isForgeable(X509_get0_tbs_sigalg(subject.get()), X509_get0_pubkey(issuer.get())),
        SIGIL_TK_VERIFY_FAILED, "anybody can have made the signature");
    require(hasSigned(issuer.get(), subject.get()), SIGIL_TK_VERIFY_SIGNATURE);
}

const Certificate* findIssuer(const TrustStore& store, const Certificate& certificate, const Certificate* other)
{
    std::vector<const Certificate*> candidates;
    for (const auto* const list : {&store.trusted, &store.authorities})
        for (const Certificate& candidate : *list)
            candidates.push_back(&candidate);
    if (other)
        candidates.push_back(other);
    std::optional<Error> failure;
    for (const Certificate* const candidate : candidates) {
        if (!issued(*candidate, certificate))
            continue;
        try {
            requireSigned(*candidate, certificate);
            return candidate;
        } catch (const Error& error) {
            requireMemory(error);
            failure = error;
        }
    }
    if (failure)
        throw Error(*failure);
    return nullptr;
}

const Certificate& issuerOf(const TrustStore& store, const Certificate& certificate, const Certificate* other)
{
    const Certificate* const found = findIssuer(store, certificate, other);
    require(found != nullptr, SIGIL_TK_VERIFY_NO_ISSUER);
    return *found;
}

} // namespace toolkit
