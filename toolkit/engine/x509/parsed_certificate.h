// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  One certificate as OpenSSL reads it: for every certificate that OpenSSL takes, however unusual.
 */
#pragma once

#include "toolkit/engine/base/bytes.h"
#include "toolkit/engine/base/handles.h"
#include "toolkit/engine/base/library.h"

#include <ctime>
#include <optional>
#include <string>
#include <vector>

namespace toolkit {

/** The fields are those of Certificate. */
class ParsedCertificate {
public:
    /** Throws SIGIL_TK_CERT_MALFORMED. */
    ParsedCertificate(const Library& library, View der);

    /** With its key decoded. Made at its first use. */
    X509* get() const;
    /** Its key stays undecoded. */
    const X509* read() const { return m_read.get(); }
    Bytes der() const;

    std::string uid() const;
    int version() const;
    std::string serialNumber() const;
    std::string signatureAlgorithm() const;
    std::string signature() const;
    std::string issuerName() const;
    std::string subjectName() const;
    Bytes subjectNameDer() const;
    std::time_t notBefore() const;
    std::time_t notAfter() const;
    std::string publicKeyAlgorithm() const;
    std::string publicKeyLength() const;
    std::string publicKeyText() const;
    Bytes publicKeyDer() const;

    std::string basicConstraints() const;
    std::string policies() const;
    std::string policyIds() const;
    std::string policyConstraints() const;
    std::string extendedKeyUsage() const;
    std::string subjectAltName() const;
    std::string issuerAltName() const;
    std::string authorityKeyId() const;
    std::string subjectKeyId() const;
    std::string crlDistributionPoints() const;
    std::vector<std::string> crlUrls() const;
    std::string authorityInfoAccess() const;
    std::vector<std::string> issuerUrls() const;
    std::vector<std::string> responderUrls() const;

    std::optional<unsigned> usageBits() const;
    bool isAuthority() const;
    std::optional<Bytes> identifyData() const;

private:
    const Library* m_library;
    X509Handle m_read;
    mutable X509Handle m_judged;
};

} // namespace toolkit
