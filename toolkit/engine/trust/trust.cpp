#include "toolkit/engine/trust/trust.h"

#include "toolkit/engine/base/error.h"
#include "toolkit/engine/net/fetch.h"
#include "toolkit/engine/status/crl.h"
#include "toolkit/engine/x509/object_list.h"
#include "toolkit/engine/x509/text.h"

#include <openssl/objects.h>

#include <algorithm>
#include <array>

namespace toolkit {
namespace {

constexpr int maximumFetchedIssuers = 8;
constexpr unsigned signingUsage = KU_DIGITAL_SIGNATURE | KU_NON_REPUDIATION;
constexpr unsigned keyManagementUsage = KU_KEY_ENCIPHERMENT | KU_DATA_ENCIPHERMENT | KU_KEY_AGREEMENT;

void releaseCrls(STACK_OF(X509_CRL) * stack) { sk_X509_CRL_pop_free(stack, X509_CRL_free); }

using StoreHandle = Handle<X509_STORE, X509_STORE_free>;
using StoreContextHandle = Handle<X509_STORE_CTX, X509_STORE_CTX_free>;
using CrlsHandle = Handle<STACK_OF(X509_CRL), releaseCrls>;

struct VerifyCode {
    int reason;
    int code;
};

constexpr std::array verifyCodes{
    VerifyCode{X509_V_ERR_UNABLE_TO_GET_ISSUER_CERT, SIGIL_TK_VERIFY_NO_ISSUER},
    VerifyCode{X509_V_ERR_UNABLE_TO_GET_ISSUER_CERT_LOCALLY, SIGIL_TK_VERIFY_NO_ISSUER},
    VerifyCode{X509_V_ERR_UNABLE_TO_VERIFY_LEAF_SIGNATURE, SIGIL_TK_VERIFY_NO_ISSUER},
    VerifyCode{X509_V_ERR_DEPTH_ZERO_SELF_SIGNED_CERT, SIGIL_TK_VERIFY_NO_ISSUER},
    VerifyCode{X509_V_ERR_SELF_SIGNED_CERT_IN_CHAIN, SIGIL_TK_VERIFY_NO_ISSUER},
    VerifyCode{X509_V_ERR_CERT_HAS_EXPIRED, SIGIL_TK_VERIFY_EXPIRED},
    VerifyCode{X509_V_ERR_CERT_NOT_YET_VALID, SIGIL_TK_VERIFY_NOT_YET},
    VerifyCode{X509_V_ERR_CERT_REVOKED, SIGIL_TK_VERIFY_REVOKED},
    VerifyCode{X509_V_ERR_CERT_SIGNATURE_FAILURE, SIGIL_TK_VERIFY_SIGNATURE},
    VerifyCode{X509_V_ERR_CRL_SIGNATURE_FAILURE, SIGIL_TK_VERIFY_SIGNATURE},
    VerifyCode{X509_V_ERR_NO_EXPLICIT_POLICY, SIGIL_TK_VERIFY_POLICY},
    VerifyCode{X509_V_ERR_INVALID_POLICY_EXTENSION, SIGIL_TK_VERIFY_POLICY},
    VerifyCode{X509_V_ERR_UNABLE_TO_GET_CRL, SIGIL_TK_VERIFY_NO_CRL},
    VerifyCode{X509_V_ERR_UNABLE_TO_GET_CRL_ISSUER, SIGIL_TK_VERIFY_NO_CRL},
    VerifyCode{X509_V_ERR_CRL_HAS_EXPIRED, SIGIL_TK_VERIFY_NO_CRL},
    VerifyCode{X509_V_ERR_CRL_NOT_YET_VALID, SIGIL_TK_VERIFY_NO_CRL},
    VerifyCode{X509_V_ERR_DIFFERENT_CRL_SCOPE, SIGIL_TK_VERIFY_NO_CRL},
};

int codeOf(int reason)
{
    for (const VerifyCode& entry : verifyCodes)
        if (entry.reason == reason)
            return entry.code;
    return SIGIL_TK_VERIFY_FAILED;
}

void push(STACK_OF(X509) * stack, const Certificate& certificate)
{
    require(X509_add_cert(stack, certificate.get(), X509_ADD_FLAG_UP_REF) == 1, SIGIL_TK_NO_MEMORY);
}

/** Issuers that nobody gave, from the addresses in the certificates. What cannot be fetched is simply not there. */
std::vector<Certificate> fetchIssuers(
    const Library& library, const TrustStore& store, const std::vector<Certificate>& given, const Certificate& leaf)
{
    std::vector<Certificate> fetched;
    const Certificate* subject = &leaf;
    fetched.reserve(maximumFetchedIssuers);
    while (fetched.size() < maximumFetchedIssuers) {
        const auto known = std::find_if(
            given.begin(), given.end(), [&](const Certificate& candidate) { return issued(candidate, *subject); });
        if (findIssuer(store, *subject) || known != given.end() || issued(*subject, *subject))
            break;
        for (const std::string& url : subject->issuerUrls()) {
            try {
                fetched.emplace_back(library, fetch(url, SIGIL_TK_FETCH_CA_CERT));
                break;
            } catch (const Error&) {
                continue;
            }
        }
        if (fetched.empty() || subject == &fetched.back())
            break;
        subject = &fetched.back();
    }
    return fetched;
}

unsigned long revocationFlags(int revocation)
{
    switch (revocation) {
    case SIGIL_TK_REVOCATION_PATH:
        return X509_V_FLAG_CRL_CHECK | X509_V_FLAG_CRL_CHECK_ALL;
    case SIGIL_TK_REVOCATION_LEAF:
        return X509_V_FLAG_CRL_CHECK;
    default:
        return 0;
    }
}

/** The lists of the store, and those that the certificates to check name. */
CrlsHandle collectCrls(
    const Library& library, const TrustStore& store, const std::vector<const Certificate*>& checked)
{
    CrlsHandle crls(sk_X509_CRL_new_null());
    require(crls != nullptr, SIGIL_TK_NO_MEMORY);
    const auto add = [&](View der) {
        CrlHandle crl = parseCrl(library, der);
        require(sk_X509_CRL_push(crls.get(), crl.get()) > 0, SIGIL_TK_NO_MEMORY);
        static_cast<void>(crl.release());
    };
    for (const Bytes& der : store.crls)
        add(der);
    for (const Certificate* certificate : checked) {
        try {
            if (!hasCrlFor(crls.get(), *certificate))
                add(fetchCrl(*certificate));
        } catch (const Error&) {
            continue; // its absence shows when the path is verified
        }
    }
    return crls;
}

void setPolicies(X509_VERIFY_PARAM* parameters, const std::vector<std::string>& policies)
{
    for (const std::string& policy : policies) {
        ObjectHandle object(OBJ_txt2obj(policy.c_str(), 1));
        require(object != nullptr, SIGIL_TK_ARGUMENT, "policy " + policy);
        require(X509_VERIFY_PARAM_add0_policy(parameters, object.get()) == 1, SIGIL_TK_NO_MEMORY);
        static_cast<void>(object.release());
    }
    if (!policies.empty())
        X509_VERIFY_PARAM_set_flags(parameters, X509_V_FLAG_POLICY_CHECK | X509_V_FLAG_EXPLICIT_POLICY);
}

/** An absent extension limits nothing. */
bool hasUsage(const Certificate& certificate, unsigned wanted)
{
    const auto bits = certificate.usageBits();
    return !bits || (*bits & wanted) != 0;
}

bool fitsUsage(const Certificate& certificate, int usage)
{
    switch (usage) {
    case SIGIL_TK_USAGE_ANY:
        return true;
    case SIGIL_TK_USAGE_USER:
        return !certificate.isAuthority();
    case SIGIL_TK_USAGE_SIGN:
        return !certificate.isAuthority() && hasUsage(certificate, signingUsage);
    case SIGIL_TK_USAGE_KEY_MANAGEMENT:
        return !certificate.isAuthority() && hasUsage(certificate, keyManagementUsage);
    case SIGIL_TK_USAGE_AUTHORITY:
        return certificate.isAuthority();
    default:
        fail(SIGIL_TK_OPTION, "usage");
    }
}

bool isMissingCrl(int ok, const X509_STORE_CTX* context)
{
    return ok != 1 && codeOf(X509_STORE_CTX_get_error(context)) == SIGIL_TK_VERIFY_NO_CRL;
}

int accept(X509_STORE_CTX* context)
{
    X509_STORE_CTX_set_error(context, X509_V_OK);
    return 1;
}

int acceptMissingCrl(int ok, X509_STORE_CTX* context) { return isMissingCrl(ok, context) ? accept(context) : ok; }

/** OpenSSL wants a list for the end of the path too, but what is trusted needs no proof. */
int acceptMissingCrlOfAnchor(int ok, X509_STORE_CTX* context)
{
    const int end = sk_X509_num(X509_STORE_CTX_get0_chain(context)) - 1;
    return isMissingCrl(ok, context) && X509_STORE_CTX_get_error_depth(context) == end ? accept(context) : ok;
}

/** What OpenSSL needs for one verification, owned together. */
class PathVerifier {
public:
    PathVerifier(
        const Library& library, const TrustStore& store, const Certificate& leaf, const VerifyRequest& request)
        : m_anchors(X509_STORE_new())
        , m_untrusted(sk_X509_new_null())
        , m_context(X509_STORE_CTX_new_ex(library.context(), nullptr))
    {
        require(m_anchors && m_untrusted && m_context, SIGIL_TK_NO_MEMORY);
        for (const Certificate& certificate : store.trusted)
            require(X509_STORE_add_cert(m_anchors.get(), certificate.get()) == 1, SIGIL_TK_NO_MEMORY);
        for (const Certificate& certificate : store.authorities)
            push(m_untrusted.get(), certificate);
        for (const Certificate& certificate : request.authorities)
            push(m_untrusted.get(), certificate);
        if (store.pathSource == SIGIL_TK_PATH_FETCH)
            for (const Certificate& certificate : fetchIssuers(library, store, request.authorities, leaf))
                push(m_untrusted.get(), certificate);
    }

    /** The path, the leaf first. Throws. */
    std::vector<Certificate> verify(const Library& library, const Certificate& leaf, unsigned long flags,
        const CrlsHandle& crls, const VerifyRequest& request, std::time_t time, bool toleratesMissingCrl)
    {
        X509_STORE_CTX* const context = m_context.get();
        X509_STORE_CTX_cleanup(context);
        require(
            X509_STORE_CTX_init(context, m_anchors.get(), leaf.get(), m_untrusted.get()) == 1, SIGIL_TK_INTERNAL);
        X509_VERIFY_PARAM* const parameters = X509_STORE_CTX_get0_param(context);
        X509_VERIFY_PARAM_set_flags(parameters, X509_V_FLAG_PARTIAL_CHAIN | flags);
        X509_VERIFY_PARAM_set_time(parameters, time);
        X509_VERIFY_PARAM_set_auth_level(parameters, 0); // old certificates are signed with SHA-1
        setPolicies(parameters, request.policies);
        X509_STORE_CTX_set0_crls(context, crls.get());
        X509_STORE_CTX_set_verify_cb(context, toleratesMissingCrl ? acceptMissingCrl : acceptMissingCrlOfAnchor);
        const int verified = X509_verify_cert(context);
        const int reason = X509_STORE_CTX_get_error(context);
        require(verified == 1, codeOf(reason), X509_verify_cert_error_string(reason));
        return chain(library);
    }

private:
    std::vector<Certificate> chain(const Library& library) const
    {
        const STACK_OF(X509)* const found = X509_STORE_CTX_get0_chain(m_context.get());
        std::vector<Certificate> path;
        path.reserve(static_cast<std::size_t>(std::max(sk_X509_num(found), 0)));
        for (int i = 0; i < sk_X509_num(found); ++i)
            path.emplace_back(library, encode<Bytes>(sk_X509_value(found, i), i2d_X509));
        return path;
    }

    StoreHandle m_anchors;
    CertificatesHandle m_untrusted;
    StoreContextHandle m_context;
};

/** The certificates of a path whose revocation matters: never the trusted one at its end. */
std::vector<const Certificate*> checkedCertificates(const std::vector<Certificate>& path, int revocation)
{
    std::vector<const Certificate*> checked;
    const std::size_t below = path.size() - 1;
    const std::size_t count = revocation == SIGIL_TK_REVOCATION_LEAF ? std::min<std::size_t>(below, 1) : below;
    for (std::size_t i = 0; i < count; ++i)
        checked.push_back(&path[i]);
    return checked;
}

} // namespace

bool issued(const Certificate& issuer, const Certificate& subject)
{
    return X509_check_issued(issuer.get(), subject.get()) == X509_V_OK;
}

const Certificate* findIssuer(const TrustStore& store, const Certificate& certificate)
{
    for (const auto* const list : {&store.trusted, &store.authorities})
        for (const Certificate& candidate : *list)
            if (issued(candidate, certificate))
                return &candidate;
    return nullptr;
}

std::vector<Bytes> verifyCertificate(
    const Library& library, const TrustStore& store, const Certificate& certificate, const VerifyRequest& request)
{
    require(fitsUsage(certificate, request.usage), SIGIL_TK_VERIFY_USAGE);
    const int revocation = request.checksRevocation ? static_cast<int>(SIGIL_TK_REVOCATION_PATH) : store.revocation;
    const std::time_t time = request.time.value_or(store.time.value_or(std::time(nullptr)));
    PathVerifier verifier(library, store, certificate, request);
    const CrlsHandle none;
    std::vector<Certificate> path = verifier.verify(library, certificate, 0, none, request, time, false);
    if (revocation != SIGIL_TK_REVOCATION_NONE) {
        const CrlsHandle crls = collectCrls(library, store, checkedCertificates(path, revocation));
        path = verifier.verify(
            library, certificate, revocationFlags(revocation), crls, request, time, store.toleratesMissingCrl);
    }
    std::vector<Bytes> ders;
    ders.reserve(path.size());
    for (const Certificate& part : path)
        ders.push_back(part.der());
    return ders;
}

std::vector<std::string> policiesOf(std::string_view text)
{
    std::vector<std::string> policies;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find_first_of("|,"), text.size());
        std::string_view item = text.substr(0, end);
        while (!item.empty() && item.front() == ' ')
            item.remove_prefix(1);
        while (!item.empty() && item.back() == ' ')
            item.remove_suffix(1);
        if (!item.empty())
            policies.push_back(dotted(item));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return policies;
}

std::optional<std::time_t> optionalTime(std::string_view text)
{
    if (text.empty())
        return {};
    const auto time = timeFromText(text);
    require(time.has_value(), SIGIL_TK_ENCODING, "time");
    return time;
}

void setEnvironment(
    TrustStore& store, int pathSource, int revocation, bool toleratesMissingCrl, std::string_view time)
{
    require(pathSource >= SIGIL_TK_PATH_GIVEN && pathSource <= SIGIL_TK_PATH_FETCH, SIGIL_TK_OPTION, "path source");
    require(revocation >= SIGIL_TK_REVOCATION_PATH && revocation <= SIGIL_TK_REVOCATION_NONE, SIGIL_TK_OPTION,
        "revocation");
    store.time = optionalTime(time);
    store.pathSource = pathSource;
    store.revocation = revocation;
    store.toleratesMissingCrl = toleratesMissingCrl;
}

void setTrust(const Library& library, TrustStore& store, std::string_view time, View trusted, View crls)
{
    auto certificates = certificatesOf(library, trusted);
    std::vector<Bytes> lists;
    for (const Secret& crl : listOrSingle(crls)) {
        parseCrl(library, crl);
        lists.push_back(toBytes(crl));
    }
    store.time = optionalTime(time);
    store.trusted = std::move(certificates);
    store.crls = std::move(lists);
}

} // namespace toolkit
