#include "toolkit/engine/status/crl.h"

#include "toolkit/engine/base/error.h"
#include "toolkit/engine/base/pem.h"
#include "toolkit/engine/net/fetch.h"
#include "toolkit/engine/trust/trust.h"

namespace toolkit {
namespace {

bool isOf(const X509_CRL* crl, const Certificate& certificate)
{
    return X509_NAME_cmp(X509_CRL_get_issuer(crl), X509_get_issuer_name(certificate.get())) == 0;
}

/** A list with anything else that must not be ignored, such as one of changes only, does not stand for itself. */
bool isUnderstood(const X509_CRL* crl)
{
    for (int i = 0; i < X509_CRL_get_ext_count(crl); ++i) {
        X509_EXTENSION* const extension = X509_CRL_get_ext(crl, i);
        if (X509_EXTENSION_get_critical(extension) == 1 &&
            OBJ_obj2nid(X509_EXTENSION_get_object(extension)) != NID_issuing_distribution_point)
            return false;
    }
    return true;
}

/** Authorities divide their certificates among several lists (RFC 5280, 5.2.5). One that does not name a certificate says
 *  nothing about those of the other lists. */
bool covers(const X509_CRL* crl, const Certificate& certificate)
{
    constexpr int absent = -1;
    int critical = 0;
    const Handle<ISSUING_DIST_POINT, ISSUING_DIST_POINT_free> part(static_cast<ISSUING_DIST_POINT*>(
        X509_CRL_get_ext_d2i(crl, NID_issuing_distribution_point, &critical, nullptr)));
    if (!part)
        return critical == absent;
    const ASN1_BOOLEAN othersOnly = certificate.isAuthority() ? part->onlyuser : part->onlyCA;
    if (othersOnly > 0 || part->onlyattr > 0 || part->onlysomereasons)
        return false;
    const DIST_POINT_NAME* const name = part->distpoint;
    return !name || (name->type == 0 && certificate.hasCrlName(name->name.fullname));
}

bool answersFor(const X509_CRL* crl, const Certificate& certificate)
{
    return isOf(crl, certificate) && isUnderstood(crl) && covers(crl, certificate);
}

/** The list in which a certificate is looked up. */
CrlHandle findCrl(
    const Library& library, const TrustStore& store, const Certificate& certificate, std::string_view url)
{
    if (!url.empty())
        return parseCrl(library, fetch(url, SIGIL_TK_FETCH_CRL));
    for (const Bytes& der : store.crls) {
        CrlHandle crl = parseCrl(library, der);
        if (answersFor(crl.get(), certificate))
            return crl;
    }
    return parseCrl(library, fetchCrl(certificate));
}

void requireCurrent(const X509_CRL* crl, std::time_t time)
{
    const ASN1_TIME* const next = X509_CRL_get0_nextUpdate(crl);
    const bool current =
        X509_cmp_time(X509_CRL_get0_lastUpdate(crl), &time) < 0 && (!next || X509_cmp_time(next, &time) > 0);
    require(current, SIGIL_TK_VERIFY_NO_CRL, "the list is not current");
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

bool hasCrlFor(const STACK_OF(X509_CRL) * crls, const Certificate& certificate)
{
    for (int i = 0; i < sk_X509_CRL_num(crls); ++i)
        if (answersFor(sk_X509_CRL_value(crls, i), certificate))
            return true;
    return false;
}

Bytes fetchCrl(const Certificate& certificate)
{
    const int mode = certificate.isAuthority() ? SIGIL_TK_FETCH_ARL : SIGIL_TK_FETCH_CRL;
    std::string reason = "the certificate names none";
    for (const std::string& url : certificate.crlUrls()) {
        try {
            return fetch(url, mode);
        } catch (const Error& error) {
            reason = error.what();
        }
    }
    fail(SIGIL_TK_VERIFY_NO_CRL, reason);
}

int revocationStatus(
    const Library& library, const TrustStore& store, const Certificate& certificate, std::string_view url)
{
    const Certificate* const issuer = findIssuer(store, certificate);
    require(issuer != nullptr, SIGIL_TK_VERIFY_NO_ISSUER);
    const CrlHandle crl = findCrl(library, store, certificate, url);
    require(answersFor(crl.get(), certificate), SIGIL_TK_VERIFY_NO_CRL, "the list is about other certificates");
    require(X509_CRL_verify(crl.get(), issuer->publicKey().get()) == 1, SIGIL_TK_VERIFY_SIGNATURE);
    requireCurrent(crl.get(), store.time.value_or(std::time(nullptr)));
    X509_REVOKED* entry = nullptr;
    // 2 stands for an entry that takes an earlier one back.
    const bool revoked = X509_CRL_get0_by_cert(crl.get(), &entry, certificate.get()) == 1;
    return revoked ? SIGIL_TK_STATUS_REVOKED : SIGIL_TK_STATUS_GOOD;
}

} // namespace toolkit
