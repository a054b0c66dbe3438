// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  One transaction with a certification authority (RFC 4210): a request, the waiting for it, the answer, the confirmation.
 *  The protocol itself is OpenSSL's.
 */
#pragma once

#include "toolkit/engine/base/handles.h"
#include "toolkit/engine/base/library.h"
#include "toolkit/engine/enrolment/authority.h"
#include "toolkit/engine/trust/trust.h"
#include "toolkit/engine/x509/certificate.h"
#include "toolkit/engine/x509/name.h"

#include <openssl/cmp.h>

#include <exception>
#include <string>
#include <vector>

namespace toolkit {

/** What an authority gave a user beforehand: protects requests and answers alike. */
struct SharedSecret {
    std::string_view reference;
    std::string_view secret;
};

/** A certificate with its key: what signs a request. */
struct KeyOwner {
    const Certificate& certificate;
    EVP_PKEY* key;
};

/** What a certificate is asked for. */
struct CertificateWish {
    EVP_PKEY* key;            ///< whose public part is certified; the private part proves that we have it
    const X509_NAME* subject; ///< null: that of the certificate that is renewed
    bool subjectIsFree;       ///< the authority may choose another one
    unsigned usage;           ///< KU_ bits of <openssl/x509v3.h>; 0: nothing is said about it
};

/** What an authority handed out. */
struct Issued {
    Certificate certificate;
    std::vector<Certificate> others; ///< certificates of authorities that came with it
};

class Transaction {
public:
    /** @param trust answers that are signed, and certificates that are handed out, must lead to its trusted certificates;
     *  null: a shared secret vouches for them
     *  @param hash SigilToolkitHash, not the default one, of signatures */
    Transaction(const Library& library, const Authority& authority, const TrustStore* trust, int hash);
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;

    void protectWith(const SharedSecret& secret);
    void protectWith(const KeyOwner& owner);

    /** Asks for a certificate and confirms it.
     *  @param kind OSSL_CMP_IR, OSSL_CMP_CR, or OSSL_CMP_KUR for the one of protectWith()
     *  Throws SIGIL_TK_CMP_ codes, those of Authority, and of verifyCertificate() for what does not lead to trusted
     *  certificates. */
    Issued request(int kind, const CertificateWish& wish);
    /** Asks for the revocation of the certificate of protectWith().
     *  @param reason CRLReason of RFC 5280
     *  @return what the authority says of it. Throws as above. */
    std::string revoke(int reason);

private:
    /** Keeps the exception in flight for later: none may pass through OpenSSL. */
    void keepFailure() { m_failure = std::current_exception(); }
    void requireSuccess(bool success);
    OSSL_CMP_MSG* exchange(const OSSL_CMP_MSG* request);
    void requireTrusted(const X509* certificate, const STACK_OF(X509) * others) const;
    void requireWished(const X509* certificate) const;
    std::vector<Certificate> others() const;
    std::string statusText() const;

    static OSSL_CMP_MSG* transfer(OSSL_CMP_CTX* context, const OSSL_CMP_MSG* request);
    static int confirm(OSSL_CMP_CTX* context, X509* certificate, int failures, const char** text);
    static int verifySigner(X509_STORE_CTX* path);

    const Library& m_library;
    const Authority& m_authority;
    const TrustStore* m_trust;
    Handle<OSSL_CMP_CTX, OSSL_CMP_CTX_free> m_context;
    const X509_NAME* m_subject = nullptr; ///< whom the certificate must be for; null: anybody
    std::exception_ptr m_failure;
};

} // namespace toolkit
