// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Verification of one path that is already found (RFC 5280, 6): time, constraints, policies, revocation.
 */
#pragma once

#include "toolkit/engine/base/handles.h"
#include "toolkit/engine/base/library.h"
#include "toolkit/engine/x509/certificate.h"

#include <sigildesk/open_toolkit.h>

#include <ctime>
#include <string>
#include <vector>

namespace toolkit {

/** A certificate, its issuer, and so on; the last one is trusted. */
using Path = std::vector<const Certificate*>;

/** Which revocation lists a path needs. */
struct RevocationRules {
    int range = SIGIL_TK_REVOCATION_NONE;
    bool toleratesMissing = false;
    bool nothingElse = false; ///< an expired certificate or one for other purposes is good enough
    const STACK_OF(X509_CRL) * lists = nullptr;
};

struct PathRules {
    std::time_t time = 0;
    std::vector<std::string> policies; ///< dotted; one of them must hold. Empty: any
};

/** What a verification says. */
struct Verdict {
    int code = SIGIL_TK_OK;
    std::string reason; ///< OpenSSL's, for people
    /** Certificates about which no list at hand told anything, also when that is tolerated. */
    std::vector<const X509*> unlisted;
};

/** Checks paths of one verification.
 *
 *  Which list tells about which certificate (parts of an authority's certificates, reasons, lists of other authorities,
 *  changes of a list) is OpenSSL's to say, here and wherever else revocation is looked up. */
class PathCheck {
public:
    /** @param others authorities among which the signers of lists are looked for */
    PathCheck(const Library& library, const Path& path, const std::vector<const Certificate*>& others);

    /** Never throws for a path that does not verify. */
    Verdict run(const PathRules& rules, const RevocationRules& revocation) const;

private:
    const Library& m_library;
    const Path& m_path;
    Handle<X509_STORE, X509_STORE_free> m_anchor;
    CertificatesHandle m_others;
};

/** Throws the code of a verdict unless it is good. */
void requireGood(const Verdict& verdict);

} // namespace toolkit
