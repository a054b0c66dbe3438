// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  One X.509 certificate and its fields as text (RFC 5280). Texts are CP949; a field that the certificate does not have
 *  is an empty text.
 */
#pragma once

#include "toolkit/engine/base/bytes.h"
#include "toolkit/engine/base/handles.h"
#include "toolkit/engine/base/library.h"
#include "toolkit/engine/x509/certificate_view.h"
#include "toolkit/engine/x509/parsed_certificate.h"

#include <ctime>
#include <optional>
#include <string>
#include <vector>

namespace toolkit {

/** Most certificates are as usual as certificates can be: their fields are read from their bytes. What the view does not
 *  know, and all that OpenSSL must judge, OpenSSL reads. */
class Certificate {
public:
    /** Parses DER, or PEM when the bytes begin with its marker. Throws SIGIL_TK_CERT_MALFORMED. */
    Certificate(const Library& library, View bytes);

    /** For OpenSSL to judge: verification, keys. Made at its first use. */
    X509* get() const { return parsed().get(); }
    /** For reading: its key stays undecoded. */
    const X509* read() const { return parsed().read(); }
    Bytes der() const;
    /** Throws SIGIL_TK_ALGORITHM when OpenSSL does not know the key's algorithm. */
    KeyHandle publicKey() const;

    /** The subject's common name. */
    std::string uid() const;
    int version() const;
    /** Lower-case hexadecimal, an even number of digits. */
    std::string serialNumber() const;
    std::string signatureAlgorithm() const;
    std::string signature() const;
    std::string issuerName() const;
    std::string subjectName() const;
    Bytes subjectNameDer() const;
    std::time_t notBefore() const;
    std::time_t notAfter() const;
    /** Whole days until the end of validity; negative after it. */
    int remainingDays(std::time_t now) const;
    /** "RSA", "EC" or OpenSSL's name of the algorithm. */
    std::string publicKeyAlgorithm() const;
    /** "2048 Bits". */
    std::string publicKeyLength() const;
    /** Content of the subjectPublicKey bit string in hexadecimal. */
    std::string publicKeyText() const;
    Bytes publicKeyDer() const;

    /** Names as "digitalSignature, nonRepudiation". */
    std::string keyUsage() const;
    std::string basicConstraints() const;
    /** "1 2 410 200004 5 2 1 2 [CPS: http://...; notice text]", one after another, joined with ", ". */
    std::string policies() const;
    /** Policy identifiers with blanks, joined with ", ". */
    std::string policyIds() const;
    std::string policyConstraints() const;
    std::string extendedKeyUsage() const;
    std::string subjectAltName() const;
    std::string issuerAltName() const;
    /** "KeyID=..., issuer=..., serial=...". */
    std::string authorityKeyId() const;
    std::string subjectKeyId() const;
    std::string crlDistributionPoints() const;
    /** Addresses of the distribution points. */
    std::vector<std::string> crlUrls() const;
    std::string crlUrlText() const;
    /** "OCSP=http://..., caIssuers=ldap://...". */
    std::string authorityInfoAccess() const;
    /** Addresses from which the issuer's certificate can be fetched. */
    std::vector<std::string> issuerUrls() const;
    /** Addresses of its authority's OCSP responders. */
    std::vector<std::string> responderUrls() const;

    /** KU_ bits of <openssl/x509v3.h>; nothing when the certificate does not limit its usage. */
    std::optional<unsigned> usageBits() const;
    bool isAuthority() const;
    /** The otherName of identity data in the subject alternative name: DER of IdentifyData. */
    std::optional<Bytes> identifyData() const;

private:
    const ParsedCertificate& parsed() const;
    template <class T, class View>
    T field(View view, T (ParsedCertificate::*otherwise)() const) const;

    const Library* m_library;
    Bytes m_der; ///< as it came
    std::optional<CertificateView> m_view;
    mutable std::optional<ParsedCertificate> m_parsed;
};

} // namespace toolkit
