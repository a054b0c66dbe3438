// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  The fields of a usual certificate, read from its DER without OpenSSL.
 *
 *  To list a certificate is to read its fields as text, and OpenSSL decodes all of it into objects of its own first. The
 *  view finds the fields where they stand. It knows the forms that certificates have, no others: a certificate of which
 *  anything is unusual is not known, and one that the view knows OpenSSL takes too and says the same of.
 */
#pragma once

#include "toolkit/engine/base/bytes.h"

#include <ctime>
#include <optional>
#include <string>
#include <vector>

namespace toolkit {

/** The fields are those of Certificate. Nothing stands for a field that has an unusual form; a field that the certificate
 *  does not have is an empty text. */
class CertificateView {
public:
    /** @param der outlives the view. @return nothing for what is not a usual certificate */
    static std::optional<CertificateView> of(View der);

    std::string uid() const;
    int version() const { return m_version; }
    std::string serialNumber() const;
    std::string signatureAlgorithm() const;
    std::string signature() const;
    std::string issuerName() const;
    std::string subjectName() const;
    Bytes subjectNameDer() const { return toBytes(m_subject); }
    std::time_t notBefore() const { return m_notBefore; }
    std::time_t notAfter() const { return m_notAfter; }
    std::string publicKeyAlgorithm() const;
    std::optional<std::string> publicKeyLength() const;
    std::string publicKeyText() const;
    Bytes publicKeyDer() const { return toBytes(m_keyInfo); }

    std::optional<std::optional<unsigned>> usageBits() const;
    std::optional<std::string> policies() const;
    std::optional<std::string> policyIds() const;
    std::optional<std::string> subjectAltName() const;
    std::optional<std::string> authorityKeyId() const;
    std::optional<std::string> subjectKeyId() const;
    std::optional<std::string> crlDistributionPoints() const;
    std::optional<std::string> authorityInfoAccess() const;

private:
    struct Extension {
        View id;
        View value;
    };

    explicit CertificateView(View der);
    void readFields(View fields);
    void readKey(View keyInfo);
    void readExtensions(View extensions);
    template <class T>
    std::optional<T> extension(int nid, T (*read)(View)) const;

    int m_version = 1;
    View m_serial;
    View m_algorithm; ///< its identifier
    View m_signature;
    View m_issuer; ///< names and the key with their own identifier and length octets
    View m_subject;
    std::time_t m_notBefore = 0;
    std::time_t m_notAfter = 0;
    View m_keyInfo;
    View m_keyAlgorithm;
    View m_key;
    std::vector<Extension> m_extensions;
};

/** Bits of the modulus of an RSAPublicKey, which needs no decoder; nothing when it looks unusual. */
std::optional<int> modulusBits(View key);

} // namespace toolkit
