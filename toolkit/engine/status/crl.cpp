// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "toolkit/engine/status/crl.h"

#include "toolkit/engine/base/error.h"
#include "toolkit/engine/base/pem.h"
#include "toolkit/engine/net/fetch.h"
#include "toolkit/engine/trust/issuer.h"
#include "toolkit/engine/trust/path_check.h"
#include "toolkit/engine/trust/soundness.h"
#include "toolkit/engine/trust/trust.h"

namespace toolkit {
namespace {

/** Directories keep the lists about authorities apart. */
int fetchMode(const Certificate& certificate)
{
    return certificate.isAuthority() ? SIGIL_TK_FETCH_ARL : SIGIL_TK_FETCH_CRL;
}

std::vector<const Certificate*> pointersTo(const std::vector<Certificate>& certificates)
{
    std::vector<const Certificate*> pointers;
    pointers.reserve(certificates.size());
    for (const Certificate& certificate : certificates)
        pointers.push_back(&certificate);
    return pointers;
}

} // namespace

CrlHandle parseCrl(const Library& library, View bytes)
{
    const Bytes der = derOf(bytes, SIGIL_TK_CRL_MALFORMED);
    CrlHandle fresh(X509_CRL_new_ex(library.context(), nullptr));
    require(fresh != nullptr, SIGIL_TK_NO_MEMORY);
    const unsigned char* at = der.data();
    CrlHandle crl = decodeInto(std::move(fresh),
        [&](X509_CRL** target) { return d2i_X509_CRL(target, &at, static_cast<long>(der.size())); });
    require(crl != nullptr, SIGIL_TK_CRL_MALFORMED);
    return crl;
}

RevocationLists::RevocationLists(const Library& library, const std::vector<Bytes>& lists, Visits& visits)
    : m_library(library)
    , m_visits(visits)
    , m_lists(sk_X509_CRL_new_null())
{
    require(m_lists != nullptr, SIGIL_TK_NO_MEMORY);
    for (const Bytes& der : lists)
        add(der);
}

void RevocationLists::add(View der)
{
    CrlHandle crl = parseCrl(m_library, der);
    const X509_ALGOR* signature = nullptr;
    X509_CRL_get0_signature(crl.get(), nullptr, &signature);
    if (isForgeable(signature))
        return; // anybody can have made it
    require(sk_X509_CRL_push(m_lists.get(), crl.get()) > 0, SIGIL_TK_NO_MEMORY);
    static_cast<void>(crl.release());
}

void RevocationLists::fetchFrom(std::string_view url, int mode) { add(fetch(url, mode, m_visits)); }

void RevocationLists::fetchFrom(std::string_view url) { fetchFrom(url, SIGIL_TK_FETCH_CRL); }

bool RevocationLists::fetchNext(const Certificate& certificate)
{
    for (const std::string& url : certificate.crlUrls()) {
        if (m_visits.contains(url))
            continue;
        try {
            fetchFrom(url, fetchMode(certificate));
            return true;
        } catch (const Error& error) {
            requireMemory(error); // its absence shows when the path is verified
        }
    }
    return false;
}

bool RevocationLists::fetchFor(const std::vector<const X509*>& certificates)
{
    bool isAnyNew = false;
    for (const X509* const certificate : certificates)
        if (fetchNext(Certificate(m_library, encode<Bytes>(certificate, i2d_X509))))
            isAnyNew = true;
    return isAnyNew;
}

Bytes fetchCrl(const TrustStore& store, const Certificate& certificate)
{
    findIssuer(store, certificate); // a certificate that its issuer did not sign sends nobody anywhere
    Visits visits;
    std::string reason = "the certificate names none";
    for (const std::string& url : certificate.crlUrls()) {
        try {
            return fetch(url, fetchMode(certificate), visits);
        } catch (const Error& error) {
            requireMemory(error);
            reason = error.what();
        }
    }
    fail(SIGIL_TK_VERIFY_NO_CRL, reason);
}

int revocationStatus(
    const Library& library, const TrustStore& store, const Certificate& certificate, std::string_view url)
{
    const Path path{&certificate, &issuerOf(store, certificate)};
    Visits visits;
    RevocationLists lists(library, url.empty() ? store.crls : std::vector<Bytes>(), visits);
    if (!url.empty())
        lists.fetchFrom(url);
    const PathCheck check(library, path, pointersTo(store.authorities));
    const auto run = [&] {
        return check.run(
            {store.time.value_or(std::time(nullptr)), {}}, {SIGIL_TK_REVOCATION_LEAF, false, true, lists.get()});
    };
    Verdict verdict = run();
    while (url.empty() && verdict.code == SIGIL_TK_VERIFY_NO_CRL && lists.fetchFor(verdict.unlisted))
        verdict = run();
    if (verdict.code == SIGIL_TK_VERIFY_REVOKED)
        return SIGIL_TK_STATUS_REVOKED;
    requireGood(verdict);
    return SIGIL_TK_STATUS_GOOD;
}

} // namespace toolkit
