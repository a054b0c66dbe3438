// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  The response of a validation server (SCVP, RFC 5055, section 4), as OpenSSL reads it. A field that nobody looks into
 *  is held as its elements; a field that is absent is null.
 */
#pragma once

#include "toolkit/engine/base/handles.h"

#include <openssl/asn1t.h>

namespace toolkit::scvp {

struct ResponseStatus {
    ASN1_ENUMERATED* code; ///< DEFAULT okay (0)
    ASN1_UTF8STRING* message;
};

struct HashValue {
    X509_ALGOR* algorithm; ///< DEFAULT SHA-1
    ASN1_OCTET_STRING* value;
};

/** The request that a response belongs to. */
struct RequestReference {
    enum Type { Hash, Request };
    int type;
    union {
        HashValue* hash; ///< of the DER of the CVRequest
        ASN1_SEQUENCE_ANY* request;
    } value;
};

/** The certificate that a reply is about. */
struct CertReference {
    enum Type { Certificate, CertificateHash, Attribute, AttributeHash };
    int type;
    ASN1_SEQUENCE_ANY* value; ///< of each type
};

struct ReplyCheck {
    ASN1_OBJECT* check;
    ASN1_INTEGER* status; ///< DEFAULT 0, which is the good one for every check
};
DEFINE_STACK_OF(ReplyCheck)

struct CertReply {
    CertReference* subject;
    ASN1_ENUMERATED* status; ///< DEFAULT success (0)
    ASN1_GENERALIZEDTIME* validationTime;
    STACK_OF(ReplyCheck) * checks;
    ASN1_SEQUENCE_ANY* wantBacks;
    STACK_OF(ASN1_OBJECT) * errors;
    ASN1_GENERALIZEDTIME* nextUpdate;
    STACK_OF(X509_EXTENSION) * extensions;
};
DEFINE_STACK_OF(CertReply)

struct CVResponse {
    ASN1_INTEGER* version;
    ASN1_INTEGER* configuration;
    ASN1_GENERALIZEDTIME* producedAt;
    ResponseStatus* status;
    ASN1_SEQUENCE_ANY* policy;
    RequestReference* request;
    ASN1_SEQUENCE_ANY* requestorReference;
    ASN1_SEQUENCE_ANY* requestorName;
    STACK_OF(CertReply) * replies;
    ASN1_OCTET_STRING* nonce;
    ASN1_OCTET_STRING* serverContext;
    STACK_OF(X509_EXTENSION) * extensions;
    ASN1_UTF8STRING* requestorText;
};
DECLARE_ASN1_FUNCTIONS(CVResponse)

/** The ContentInfo of a response that nobody signed. */
struct PlainResponse {
    ASN1_OBJECT* type;
    CVResponse* content;
};
DECLARE_ASN1_FUNCTIONS(PlainResponse)

using ResponseHandle = Handle<CVResponse, CVResponse_free>;
using PlainResponseHandle = Handle<PlainResponse, PlainResponse_free>;

} // namespace toolkit::scvp
