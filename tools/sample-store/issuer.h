// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  The root, the authorities below it, and the certificates that they issue.
 */
#pragma once

#include "toolkit/engine/base/bytes.h"
#include "toolkit/engine/base/handles.h"
#include "tools/sample-store/key_pool.h"
#include "tools/sample-store/plan.h"

#include <ctime>
#include <map>

namespace sample {

/** A certificate with the key that it is for, which belongs to a pool. */
struct Issuer {
    toolkit::X509Handle certificate;
    EVP_PKEY* key;
};

/** All issuers of one store; an authority is made when its first certificate is issued. */
class Issuers {
public:
    /** @param keys key pairs that the authorities share */
    Issuers(std::time_t now, std::size_t keys);

    const X509* root() const { return m_root.certificate.get(); }
    const X509* certificateOf(const Authority& authority) { return issuerOf(authority).certificate.get(); }

    /** The signing certificate.
     *  @param identifyData DER of the holder's identity data; empty: the certificate has no subjectAltName */
    toolkit::X509Handle issueSigning(const PlannedCertificate& planned, EVP_PKEY* key, toolkit::View identifyData);

    /** The key-management certificate: same subject, next serial number, no identity data. */
    toolkit::X509Handle issueKeyManagement(const PlannedCertificate& planned, EVP_PKEY* key);

private:
    const Issuer& issuerOf(const Authority& authority);
    toolkit::X509Handle beginUserCertificate(const PlannedCertificate& planned, EVP_PKEY* key, bool keyManagement);
    toolkit::X509Handle finishUserCertificate(const PlannedCertificate& planned, toolkit::X509Handle certificate);

    std::time_t m_now;
    KeyPool m_rootKey;
    KeyPool m_keys;
    Issuer m_root;
    std::map<const Authority*, Issuer> m_authorities;
};

} // namespace sample
