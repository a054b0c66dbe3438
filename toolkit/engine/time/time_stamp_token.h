// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Time-stamp tokens (RFC 3161): signed statements that something existed at a time.
 */
#pragma once

#include "toolkit/engine/base/bytes.h"
#include "toolkit/engine/base/library.h"
#include "toolkit/engine/trust/trust.h"
#include "toolkit/engine/x509/certificate.h"

#include <openssl/cms.h>
#include <openssl/ts.h>

#include <ctime>
#include <string>
#include <vector>

namespace toolkit {

using TokenInfoHandle = Handle<TS_TST_INFO, TS_TST_INFO_free>;

/** What a token says, as texts. What it does not say is an empty text. */
struct TimeStampTexts {
    std::string version;
    std::string accuracy; ///< seconds, "1.5"
    std::string policy;   ///< numbers separated by blanks
    std::string hash;     ///< "SHA256"
    std::string imprint;  ///< hexadecimal
    std::string serial;   ///< hexadecimal
    std::string time;     ///< as timeText
    std::string nonce;    ///< hexadecimal
};

class TimeStampToken {
public:
    /** Throws SIGIL_TK_TSP_MALFORMED. */
    TimeStampToken(const Library& library, View der);

    /** Verifies the signature and whether its maker may stamp: a certificate for time stamps alone (critical), in the token,
     *  named by it, and valid at the time stamped; with trusted certificates in @p store also its path.
     *  @return the authority's certificate
     *  Throws SIGIL_TK_SIGNATURE, SIGIL_TK_TSP_SIGNER, SIGIL_TK_TSP_TIME and the SIGIL_TK_VERIFY_ codes. */
    Bytes verify(const Library& library, const TrustStore& store) const;
    /** The authority's certificate, unverified; empty when the token does not hold it. */
    Bytes authority(const Library& library) const;
    /** Throws SIGIL_TK_TSP_IMPRINT unless the token is about @p data. */
    void requireAbout(const Library& library, View data) const;
    void requireAboutFile(const Library& library, const std::string& path) const;

    const TS_TST_INFO* info() const { return m_info.get(); }
    std::time_t time() const;
    TimeStampTexts texts() const;

private:
    std::vector<Certificate> certificates(const Library& library) const;
    CMS_SignerInfo* signer() const;
    std::vector<Certificate> signerFirst(const Library& library) const;
    void requireImprint(View hash) const;
    DigestHandle imprintHash(const Library& library) const;

    CmsHandle m_cms;
    TokenInfoHandle m_info;
};

} // namespace toolkit
