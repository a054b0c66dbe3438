// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "toolkit/engine/trust/path_search.h"

#include "toolkit/engine/trust/issuer.h"
#include "toolkit/engine/trust/soundness.h"

#include <algorithm>
#include <utility>

namespace toolkit {
namespace {

constexpr std::size_t maximumLength = 16;
/** Signatures that are verified for one search: a few lists of authorities can be combined to any number of paths. */
constexpr int maximumSteps = 256;

bool isValidAt(const Certificate& certificate, std::time_t time)
{
    return X509_cmp_time(X509_get0_notBefore(certificate.get()), &time) < 0 &&
        X509_cmp_time(X509_get0_notAfter(certificate.get()), &time) > 0;
}

bool bearsIssuersName(const Certificate& candidate, const Certificate& subject)
{
    return X509_NAME_cmp(X509_get_subject_name(candidate.get()), X509_get_issuer_name(subject.get())) == 0;
}

bool contains(const std::vector<const Certificate*>& list, const Certificate& certificate)
{
    return std::any_of(list.begin(), list.end(),
        [&](const Certificate* other) { return X509_cmp(other->get(), certificate.get()) == 0; });
}

} // namespace

PathSearch::PathSearch(
    std::vector<const Certificate*> trusted, std::vector<const Certificate*> authorities, std::time_t time)
    : m_trusted(std::move(trusted))
    , m_candidates(m_trusted)
{
    std::copy_if(authorities.begin(), authorities.end(), std::back_inserter(m_candidates),
        [&](const Certificate* authority) { return !isTrusted(*authority); });
    std::stable_partition(m_candidates.begin(), m_candidates.end(),
        [&](const Certificate* candidate) { return isValidAt(*candidate, time); });
}

const Path& PathSearch::find(const Certificate& leaf, Attempt attempt, Fetch fetch)
{
    m_attempt = std::move(attempt);
    m_fetch = std::move(fetch);
    requireSound(leaf);
    m_path = {&leaf};
    if (climb())
        return m_path;
    for (const auto& failure : {m_failedPath, m_failedStep})
        if (failure)
            throw Error(*failure);
    fail(SIGIL_TK_VERIFY_NO_ISSUER, X509_verify_cert_error_string(X509_V_ERR_UNABLE_TO_GET_ISSUER_CERT_LOCALLY));
}

bool PathSearch::climb()
{
    const Certificate& top = *m_path.back();
    if (isTrusted(top))
        return passes();
    if (m_path.size() == maximumLength)
        return false;
    bool isIssuerKnown = issued(top, top);
    for (const Certificate* const candidate : m_candidates) {
        if (!bearsIssuersName(*candidate, top) || isOnPath(*candidate))
            continue;
        isIssuerKnown = isIssuerKnown || issued(*candidate, top);
        if (hasSigned(*candidate, top) && climbTo(*candidate))
            return true;
    }
    return !isIssuerKnown && climbToFetched();
}

bool PathSearch::climbTo(const Certificate& issuer)
{
    m_path.push_back(&issuer);
    if (climb())
        return true;
    m_path.pop_back();
    return false;
}

bool PathSearch::climbToFetched()
{
    auto issuer = m_fetch(*m_path.back());
    if (!issuer || isOnPath(*issuer) || !hasSigned(*issuer, *m_path.back()))
        return false;
    return climbTo(m_fetched.emplace_back(std::move(*issuer)));
}

bool PathSearch::passes()
{
    try {
        m_attempt(m_path);
        return true;
    } catch (const Error& error) {
        requireMemory(error);
        if (!m_failedPath)
            m_failedPath = error;
        return false;
    }
}

bool PathSearch::isTrusted(const Certificate& certificate) const { return contains(m_trusted, certificate); }

bool PathSearch::isOnPath(const Certificate& certificate) const { return contains(m_path, certificate); }

bool PathSearch::hasSigned(const Certificate& issuer, const Certificate& subject)
{
    try {
        require(++m_steps <= maximumSteps, SIGIL_TK_VERIFY_FAILED, "too many authorities");
        requireSound(issuer);
        if (!issued(issuer, subject))
            return false;
        requireSigned(issuer, subject);
        return true;
    } catch (const Error& error) {
        requireMemory(error);
        if (!m_failedStep)
            m_failedStep = error;
        return false;
    }
}

} // namespace toolkit
