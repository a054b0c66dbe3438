// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "toolkit/engine/trust/paths.h"

#include "toolkit/engine/base/error.h"
#include "toolkit/engine/net/fetch.h"
#include "toolkit/engine/trust/issuer.h"

#include <algorithm>

namespace toolkit {
namespace {

bool isSelfSigned(const Certificate& certificate) { return X509_self_signed(certificate.get(), 0) == 1; }

Bytes fetchIssuer(const Certificate& certificate, std::string_view directory, Visits& visits)
{
    if (!directory.empty())
        return fetch(std::string(directory) + "/" + certificate.issuerName(), SIGIL_TK_FETCH_CA_CERT, visits);
    const std::vector<std::string> urls = certificate.issuerUrls();
    require(!urls.empty(), SIGIL_TK_VERIFY_NO_ISSUER, "the certificate names no address of its issuer");
    return fetch(urls.front(), SIGIL_TK_FETCH_CA_CERT, visits);
}

} // namespace

void addTrusted(TrustStore& store, Certificate certificate)
{
    const bool known = std::any_of(store.trusted.begin(), store.trusted.end(),
        [&](const Certificate& other) { return X509_cmp(other.get(), certificate.get()) == 0; });
    if (!known)
        store.trusted.push_back(std::move(certificate));
}

bool isTrusted(const Library& library, const TrustStore& store, const Certificate& certificate,
    std::vector<Certificate> anchors)
{
    TrustStore own;
    own.trusted = std::move(anchors);
    own.time = store.time;
    VerifyRequest request;
    for (const Certificate& authority : store.authorities)
        request.authorities.emplace_back(library, authority.der());
    try {
        verifyCertificate(library, own, certificate, request);
        return true;
    } catch (const Error&) {
        return false;
    }
}

std::vector<Bytes> fetchPath(const Library& library, const Certificate& certificate, std::string_view directory)
{
    std::vector<Bytes> path{certificate.der()};
    Certificate subject(library, path.back());
    Visits visits;
    while (!isSelfSigned(subject)) {
        Certificate issuer(library, fetchIssuer(subject, directory, visits));
        require(
            issued(issuer, subject), SIGIL_TK_VERIFY_NO_ISSUER, "the fetched certificate is of another authority");
        requireSigned(issuer, subject);
        path.push_back(issuer.der());
        subject = std::move(issuer);
    }
    return path;
}

} // namespace toolkit
