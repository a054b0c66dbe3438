#include "toolkit/engine/base/paths.h"

#include "toolkit/engine/base/error.h"
#include "toolkit/engine/net/fetch.h"

#include <algorithm>

namespace toolkit {
namespace {

constexpr std::size_t maximumPath = 16;

bool isSelfSigned(const Certificate& certificate) { return X509_self_signed(certificate.get(), 0) == 1; }

Bytes fetchIssuer(const Certificate& certificate, std::string_view directory)
{
    if (!directory.empty())
        return fetch(std::string(directory) + "/" + certificate.issuerName(), SIGIL_TK_FETCH_CA_CERT);
    const std::vector<std::string> urls = certificate.issuerUrls();
    require(!urls.empty(), SIGIL_TK_VERIFY_NO_ISSUER, "the certificate names no address of its issuer");
    return fetch(urls.front(), SIGIL_TK_FETCH_CA_CERT);
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
    while (!isSelfSigned(subject)) {
        require(path.size() < maximumPath, SIGIL_TK_VERIFY_NO_ISSUER, "the path is too long");
        Certificate issuer(library, fetchIssuer(subject, directory));
        require(X509_check_issued(issuer.get(), subject.get()) == X509_V_OK, SIGIL_TK_VERIFY_NO_ISSUER,
            "the fetched certificate is of another authority");
        path.push_back(issuer.der());
        subject = std::move(issuer);
    }
    return path;
}

} // namespace toolkit
