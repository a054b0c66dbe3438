// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "toolkit/engine/trust/trust.h"

#include "toolkit/engine/base/error.h"
#include "toolkit/engine/net/fetch.h"
#include "toolkit/engine/status/crl.h"
#include "toolkit/engine/trust/issuer.h"
#include "toolkit/engine/trust/path_search.h"

namespace toolkit {
namespace {

constexpr unsigned signingUsage = KU_DIGITAL_SIGNATURE | KU_NON_REPUDIATION;
constexpr unsigned keyManagementUsage = KU_KEY_ENCIPHERMENT | KU_DATA_ENCIPHERMENT | KU_KEY_AGREEMENT;

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

void append(std::vector<const Certificate*>& list, const std::vector<Certificate>& certificates)
{
    for (const Certificate& certificate : certificates)
        list.push_back(&certificate);
}

/** One verification with everything that it may rely on. */
class Verification {
public:
    Verification(const Library& library, const TrustStore& store, const VerifyRequest& request)
        : m_library(library)
        , m_store(store)
        , m_rules{request.time.value_or(store.time.value_or(std::time(nullptr))), request.policies}
        , m_range(request.checksRevocation ? static_cast<int>(SIGIL_TK_REVOCATION_PATH) : store.revocation)
        , m_lists(library, store.crls, m_visits)
    {
        append(m_trusted, store.trusted);
        append(m_authorities, store.authorities);
        append(m_authorities, request.authorities);
    }

    std::vector<Bytes> run(const Certificate& certificate)
    {
        PathSearch search(m_trusted, m_authorities, m_rules.time);
        std::vector<Bytes> ders;
        for (const Certificate* part : search.find(
                 certificate, [this](const Path& path) { check(path); },
                 [this](const Certificate& subject) { return fetchIssuer(subject); }))
            ders.push_back(part->der());
        return ders;
    }

private:
    /** Revocation comes last: only a path that holds otherwise sends anybody to the addresses in its certificates. */
    void check(const Path& path)
    {
        const PathCheck checker(m_library, path, m_authorities);
        requireGood(checker.run(m_rules, {}));
        if (m_range == SIGIL_TK_REVOCATION_NONE)
            return;
        const auto withLists = [&] {
            return checker.run(m_rules, {m_range, m_store.toleratesMissingCrl, false, m_lists.get()});
        };
        Verdict verdict = withLists();
        while (m_lists.fetchFor(verdict.unlisted))
            verdict = withLists();
        requireGood(verdict);
    }

    std::optional<Certificate> fetchIssuer(const Certificate& subject)
    {
        if (m_store.pathSource != SIGIL_TK_PATH_FETCH)
            return {};
        for (const std::string& url : subject.issuerUrls()) {
            if (m_visits.contains(url))
                continue;
            try {
                return Certificate(m_library, fetch(url, SIGIL_TK_FETCH_CA_CERT, m_visits));
            } catch (const Error& error) {
                requireMemory(error); // what cannot be had is simply not there
            }
        }
        return {};
    }

    const Library& m_library;
    const TrustStore& m_store;
    PathRules m_rules;
    int m_range;
    Visits m_visits;
    RevocationLists m_lists;
    std::vector<const Certificate*> m_trusted;
    std::vector<const Certificate*> m_authorities;
};

} // namespace

std::vector<Bytes> verifyCertificate(
    const Library& library, const TrustStore& store, const Certificate& certificate, const VerifyRequest& request)
{
    require(fitsUsage(certificate, request.usage), SIGIL_TK_VERIFY_USAGE);
    return Verification(library, store, request).run(certificate);
}

} // namespace toolkit
