// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "toolkit/engine/enrolment/transaction.h"

#include "toolkit/engine/base/der.h"
#include "toolkit/engine/base/digest.h"
#include "toolkit/engine/base/error.h"
#include "toolkit/engine/x509/text.h"

#include <openssl/cmperr.h>
#include <openssl/err.h>

#include <array>
#include <utility>

namespace toolkit {
namespace {

using MessageHandle = Handle<OSSL_CMP_MSG, OSSL_CMP_MSG_free>;
using StoreHandle = Handle<X509_STORE, X509_STORE_free>;
using BitsHandle = Handle<ASN1_BIT_STRING, ASN1_BIT_STRING_free>;
using ExtensionHandle = Handle<X509_EXTENSION, X509_EXTENSION_free>;

constexpr int errorBody = 23; ///< PKIBody of an ErrorMsgContent
/** Where a store keeps the transaction that it works for: the index that OpenSSL leaves to applications. */
constexpr int ownData = 0;

struct Meaning {
    int reason;
    int code;
};

/** What OpenSSL's last reason of a failed transaction means; any other: the answer does not fit. */
constexpr std::array meanings{
    Meaning{CMP_R_RECEIVED_ERROR, SIGIL_TK_CMP_REFUSED},
    Meaning{CMP_R_REQUEST_REJECTED_BY_SERVER, SIGIL_TK_CMP_REFUSED},
    Meaning{CMP_R_REQUEST_NOT_ACCEPTED, SIGIL_TK_CMP_REFUSED},
    Meaning{CMP_R_ERROR_VALIDATING_PROTECTION, SIGIL_TK_CMP_PROTECTION},
    Meaning{CMP_R_ERROR_VALIDATING_SIGNATURE, SIGIL_TK_CMP_PROTECTION},
    Meaning{CMP_R_MISSING_PROTECTION, SIGIL_TK_CMP_PROTECTION},
    Meaning{CMP_R_MISSING_TRUST_ANCHOR, SIGIL_TK_CMP_PROTECTION},
    Meaning{CMP_R_MISSING_SECRET, SIGIL_TK_CMP_PROTECTION},
    Meaning{CMP_R_NO_SUITABLE_SENDER_CERT, SIGIL_TK_CMP_PROTECTION},
    Meaning{CMP_R_POTENTIALLY_INVALID_CERTIFICATE, SIGIL_TK_CMP_PROTECTION},
    Meaning{CMP_R_RECIPNONCE_UNMATCHED, SIGIL_TK_CMP_PROTECTION},
    Meaning{CMP_R_SRVCERT_DOES_NOT_VALIDATE_MSG, SIGIL_TK_CMP_PROTECTION},
    Meaning{CMP_R_TRANSACTIONID_UNMATCHED, SIGIL_TK_CMP_PROTECTION},
    Meaning{CMP_R_UNKNOWN_ALGORITHM_ID, SIGIL_TK_CMP_PROTECTION},
    Meaning{CMP_R_UNSUPPORTED_ALGORITHM, SIGIL_TK_CMP_PROTECTION},
    Meaning{CMP_R_WRONG_ALGORITHM_OID, SIGIL_TK_CMP_PROTECTION},
    Meaning{CMP_R_WRONG_PBM_VALUE, SIGIL_TK_CMP_PROTECTION},
    Meaning{CMP_R_CERTIFICATE_NOT_ACCEPTED, SIGIL_TK_CMP_OTHER_CERT},
    Meaning{CMP_R_CHECKAFTER_OUT_OF_RANGE, SIGIL_TK_CMP_WAITING},
    Meaning{CMP_R_BAD_CHECKAFTER_IN_POLLREP, SIGIL_TK_CMP_WAITING},
};

int codeOfReason(unsigned long error)
{
    for (const Meaning& meaning : meanings)
        if (ERR_GET_LIB(error) == ERR_LIB_CMP && ERR_GET_REASON(error) == meaning.reason)
            return meaning.code;
    return SIGIL_TK_CMP_MALFORMED;
}

void requireSet(int result) { require(result == 1, SIGIL_TK_NO_MEMORY); }

/** PKIMessage ::= SEQUENCE { PKIHeader, PKIBody, [0] PKIProtection OPTIONAL, [1] SEQUENCE OF Certificate OPTIONAL }
 *  Throws SIGIL_TK_CMP_MALFORMED for a protection with bits that nobody looks at. */
bool isProtected(View message)
{
    der::Reader fields(der::Reader(message).take(der::Sequence).value_or(View()));
    fields.next();
    fields.next();
    const auto protection = fields.take(der::Explicit0);
    const auto bits = protection ? der::Reader(*protection).take(der::BitString) : std::nullopt;
    require(!bits || (!bits->empty() && bits->front() == 0), SIGIL_TK_CMP_MALFORMED, "protection");
    return bits.has_value();
}

/** OpenSSL would print to the host's standard output. */
int beQuiet(const char*, const char*, int, OSSL_CMP_severity, const char*) { return 1; }

Certificate ownCopy(const Library& library, const X509* certificate)
{
    return {library, encode<Bytes>(certificate, i2d_X509)};
}

void append(const Library& library, const STACK_OF(X509) * stack, std::vector<Certificate>& list)
{
    for (int i = 0; i < sk_X509_num(stack); ++i)
        list.push_back(ownCopy(library, sk_X509_value(stack, i)));
}

/** The extension that asks for a certificate for these usages. */
ExtensionHandle usageExtension(unsigned usage)
{
    const unsigned char octet = static_cast<unsigned char>(usage);
    const BitsHandle bits(ASN1_BIT_STRING_new());
    requireSet(bits && ASN1_BIT_STRING_set(bits.get(), const_cast<unsigned char*>(&octet), 1) == 1);
    ExtensionHandle extension(X509V3_EXT_i2d(NID_key_usage, 1, bits.get()));
    require(extension != nullptr, SIGIL_TK_NO_MEMORY);
    return extension;
}

} // namespace

Transaction::Transaction(const Library& library, const Authority& authority, const TrustStore* trust, int hash)
    : m_library(library)
    , m_authority(authority)
    , m_trust(trust)
    , m_context(OSSL_CMP_CTX_new(library.context(), nullptr))
{
    OSSL_CMP_CTX* const context = m_context.get();
    require(context != nullptr, SIGIL_TK_NO_MEMORY);
    const DigestHandle digest = hashAlgorithm(library, hash);
    requireSet(OSSL_CMP_CTX_set_log_cb(context, beQuiet));
    requireSet(OSSL_CMP_CTX_set_transfer_cb(context, transfer));
    requireSet(OSSL_CMP_CTX_set_transfer_cb_arg(context, this));
    requireSet(OSSL_CMP_CTX_set_certConf_cb(context, confirm));
    requireSet(OSSL_CMP_CTX_set_certConf_cb_arg(context, this));
    require(OSSL_CMP_CTX_set_option(context, OSSL_CMP_OPT_DIGEST_ALGNID, EVP_MD_get_type(digest.get())) == 1,
        SIGIL_TK_ALGORITHM, "hash");
    if (!trust)
        return;
    require(!trust->trusted.empty(), SIGIL_TK_VERIFY_NO_ISSUER, "no certificate is trusted");
    StoreHandle store(X509_STORE_new());
    requireSet(store && X509_STORE_set_ex_data(store.get(), ownData, this) == 1);
    for (const Certificate& trusted : trust->trusted) // signers that send no certificate are looked for here
        requireSet(X509_STORE_add_cert(store.get(), trusted.get()));
    X509_STORE_set_verify_cb(store.get(), [](int, X509_STORE_CTX*) { return 1; }); // verifySigner() is the judge
    X509_STORE_set_verify(store.get(), verifySigner);
    requireSet(OSSL_CMP_CTX_set0_trustedStore(context, store.get()));
    static_cast<void>(store.release());
}

void Transaction::protectWith(const SharedSecret& given)
{
    const View reference = view(given.reference);
    const View secret = view(given.secret);
    require(!secret.empty(), SIGIL_TK_ARGUMENT, "secret");
    requireSet(
        OSSL_CMP_CTX_set1_referenceValue(m_context.get(), reference.data(), static_cast<int>(reference.size())));
    requireSet(OSSL_CMP_CTX_set1_secretValue(m_context.get(), secret.data(), static_cast<int>(secret.size())));
}

void Transaction::protectWith(const KeyOwner& owner)
{
    requireSet(OSSL_CMP_CTX_set1_cert(m_context.get(), owner.certificate.get()));
    requireSet(OSSL_CMP_CTX_set1_pkey(m_context.get(), owner.key));
    requireSet(OSSL_CMP_CTX_set1_oldCert(m_context.get(), owner.certificate.get()));
}

Issued Transaction::request(int kind, const CertificateWish& wish)
{
    OSSL_CMP_CTX* const context = m_context.get();
    requireSet(EVP_PKEY_up_ref(wish.key));
    requireSet(OSSL_CMP_CTX_set0_newPkey(context, 1, wish.key));
    if (wish.subject)
        requireSet(OSSL_CMP_CTX_set1_subjectName(context, wish.subject));
    if (wish.usage != 0) {
        X509_EXTENSIONS* extensions = nullptr;
        requireSet(X509v3_add_ext(&extensions, usageExtension(wish.usage).get(), -1) != nullptr);
        requireSet(OSSL_CMP_CTX_set0_reqExtensions(context, extensions));
    }
    m_subject = wish.subjectIsFree ? nullptr : wish.subject;
    int waiting = 0;
    int result = 0;
    while ((result = OSSL_CMP_try_certreq(context, kind, nullptr, &waiting)) < 0)
        m_authority.wait(std::chrono::seconds(waiting));
    requireSuccess(result == 1);
    return {ownCopy(m_library, OSSL_CMP_CTX_get0_newCert(context)), others()};
}

std::string Transaction::revoke(int reason)
{
    requireSet(OSSL_CMP_CTX_set_option(m_context.get(), OSSL_CMP_OPT_REVOCATION_REASON, reason));
    requireSuccess(OSSL_CMP_exec_RR_ses(m_context.get()) == 1);
    return statusText();
}

void Transaction::requireSuccess(bool success)
{
    if (success)
        return;
    if (m_failure)
        std::rethrow_exception(m_failure);
    const int code = codeOfReason(ERR_peek_last_error());
    fail(code, code == SIGIL_TK_CMP_REFUSED ? statusText() : std::string());
}

OSSL_CMP_MSG* Transaction::exchange(const OSSL_CMP_MSG* request)
{
    const Bytes answer = m_authority.ask(encode<Bytes>(request, i2d_OSSL_CMP_MSG));
    const unsigned char* at = answer.data();
    // Read into a copy of the request, which belongs to our library context: so do the keys in the answer then.
    MessageHandle message = decodeInto(MessageHandle(OSSL_CMP_MSG_dup(request)),
        [&](OSSL_CMP_MSG** target) { return d2i_OSSL_CMP_MSG(target, &at, static_cast<long>(answer.size())); });
    // OpenSSL reads more than DER, and verifies what it would have written.
    require(message && encode<Bytes>(message.get(), i2d_OSSL_CMP_MSG) == answer, SIGIL_TK_CMP_MALFORMED);
    // An authority that does not know the user cannot protect its refusal; what it says counts as that, and as nothing else.
    const bool isRefusal = !isProtected(answer) && OSSL_CMP_MSG_get_bodytype(message.get()) == errorBody;
    requireSet(OSSL_CMP_CTX_set_option(m_context.get(), OSSL_CMP_OPT_UNPROTECTED_ERRORS, isRefusal ? 1 : 0));
    return message.release();
}

void Transaction::requireTrusted(const X509* certificate, const STACK_OF(X509) * others) const
{
    VerifyRequest request;
    append(m_library, others, request.authorities);
    verifyCertificate(m_library, *m_trust, ownCopy(m_library, certificate), request);
}

void Transaction::requireWished(const X509* certificate) const
{
    require(!m_subject || X509_NAME_cmp(m_subject, X509_get_subject_name(certificate)) == 0,
        SIGIL_TK_CMP_OTHER_CERT, "another subject");
    if (m_trust)
        verifyCertificate(
            m_library, *m_trust, ownCopy(m_library, certificate), {SIGIL_TK_USAGE_ANY, {}, false, {}, others()});
}

std::vector<Certificate> Transaction::others() const
{
    std::vector<Certificate> list;
    append(m_library, CertificatesHandle(OSSL_CMP_CTX_get1_caPubs(m_context.get())).get(), list);
    append(m_library, CertificatesHandle(OSSL_CMP_CTX_get1_extraCertsIn(m_context.get())).get(), list);
    return list;
}

std::string Transaction::statusText() const
{
    std::array<char, OSSL_CMP_PKISI_BUFLEN> text{};
    const char* const printed = OSSL_CMP_CTX_snprint_PKIStatus(m_context.get(), text.data(), text.size());
    return printed ? cp949FromUtf8(printed) : std::string();
}

OSSL_CMP_MSG* Transaction::transfer(OSSL_CMP_CTX* context, const OSSL_CMP_MSG* request)
{
    auto& self = *static_cast<Transaction*>(OSSL_CMP_CTX_get_transfer_cb_arg(context));
    try {
        return self.exchange(request);
    } catch (...) {
        self.keepFailure();
        return nullptr;
    }
}

int Transaction::confirm(OSSL_CMP_CTX* context, X509* certificate, int failures, const char**)
{
    auto& self = *static_cast<Transaction*>(OSSL_CMP_CTX_get_certConf_cb_arg(context));
    try {
        require(failures == 0, SIGIL_TK_CMP_OTHER_CERT, "another key");
        self.requireWished(certificate);
    } catch (...) {
        self.keepFailure();
        return failures | 1 << OSSL_CMP_PKIFAILUREINFO_incorrectData;
    }
    return 0;
}

int Transaction::verifySigner(X509_STORE_CTX* path)
{
    auto& self = *static_cast<Transaction*>(X509_STORE_get_ex_data(X509_STORE_CTX_get0_store(path), ownData));
    try {
        self.requireTrusted(X509_STORE_CTX_get0_cert(path), X509_STORE_CTX_get0_untrusted(path));
        self.m_failure = nullptr; // of another certificate that might have been the signer's
        return 1;
    } catch (...) {
        self.keepFailure();
        return 0;
    }
}

} // namespace toolkit
