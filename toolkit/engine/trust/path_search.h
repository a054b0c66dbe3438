// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Looks for paths from a certificate to trusted ones. Authorities may share a name, renew their keys and certify each other,
 *  so there can be several paths, of which one is good.
 */
#pragma once

#include "toolkit/engine/base/error.h"
#include "toolkit/engine/trust/path_check.h"
#include "toolkit/engine/x509/certificate.h"

#include <ctime>
#include <functional>
#include <list>
#include <optional>
#include <vector>

namespace toolkit {

class PathSearch {
public:
    /** Throws when a path does not verify. */
    using Attempt = std::function<void(const Path&)>;
    /** The issuer of a certificate that nobody gave; nothing when it cannot be had. */
    using Fetch = std::function<std::optional<Certificate>(const Certificate&)>;

    /** @param time authorities that are valid then are tried before others */
    PathSearch(
        std::vector<const Certificate*> trusted, std::vector<const Certificate*> authorities, std::time_t time);

    /** Tries paths until one passes, and answers it. When none does, throws what the first one that reached a trusted
     *  certificate failed with; when none reached one, why, or SIGIL_TK_VERIFY_NO_ISSUER. */
    const Path& find(const Certificate& leaf, Attempt attempt, Fetch fetch);

private:
    bool climb();
    bool climbTo(const Certificate& issuer);
    bool climbToFetched();
    bool passes();
    bool isTrusted(const Certificate& certificate) const;
    bool isOnPath(const Certificate& certificate) const;
    bool hasSigned(const Certificate& issuer, const Certificate& subject);

    std::vector<const Certificate*> m_trusted;
    std::vector<const Certificate*> m_candidates; ///< the trusted ones first
    std::list<Certificate> m_fetched;
    Path m_path;
    Attempt m_attempt;
    Fetch m_fetch;
    std::optional<Error> m_failedPath;
    std::optional<Error> m_failedStep;
    int m_steps = 0;
};

} // namespace toolkit
