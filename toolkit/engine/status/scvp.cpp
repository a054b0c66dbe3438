// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "toolkit/engine/status/scvp.h"

// The templates follow the module of RFC 5055, section 8, whose tags are implicit; a tag around a CHOICE is explicit all
// the same.
namespace toolkit::scvp {

// clang-format takes a template that no semicolon ends for the begin of one long expression.
// clang-format off
ASN1_SEQUENCE(ResponseStatus) = {
    ASN1_OPT(ResponseStatus, code, ASN1_ENUMERATED),
    ASN1_OPT(ResponseStatus, message, ASN1_UTF8STRING),
} static_ASN1_SEQUENCE_END(ResponseStatus)

ASN1_SEQUENCE(HashValue) = {
    ASN1_OPT(HashValue, algorithm, X509_ALGOR),
    ASN1_SIMPLE(HashValue, value, ASN1_OCTET_STRING),
} static_ASN1_SEQUENCE_END(HashValue)

ASN1_CHOICE(RequestReference) = {
    ASN1_IMP(RequestReference, value.hash, HashValue, 0),
    ASN1_IMP_SEQUENCE_OF(RequestReference, value.request, ASN1_ANY, 1),
} static_ASN1_CHOICE_END(RequestReference)

ASN1_CHOICE(CertReference) = {
    ASN1_IMP_SEQUENCE_OF(CertReference, value, ASN1_ANY, 0),
    ASN1_IMP_SEQUENCE_OF(CertReference, value, ASN1_ANY, 1),
    ASN1_IMP_SEQUENCE_OF(CertReference, value, ASN1_ANY, 2),
    ASN1_IMP_SEQUENCE_OF(CertReference, value, ASN1_ANY, 3),
} static_ASN1_CHOICE_END(CertReference)

ASN1_SEQUENCE(ReplyCheck) = {
    ASN1_SIMPLE(ReplyCheck, check, ASN1_OBJECT),
    ASN1_OPT(ReplyCheck, status, ASN1_INTEGER),
} static_ASN1_SEQUENCE_END(ReplyCheck)

ASN1_SEQUENCE(CertReply) = {
    ASN1_SIMPLE(CertReply, subject, CertReference),
    ASN1_OPT(CertReply, status, ASN1_ENUMERATED),
    ASN1_SIMPLE(CertReply, validationTime, ASN1_GENERALIZEDTIME),
    ASN1_SEQUENCE_OF(CertReply, checks, ReplyCheck),
    ASN1_SEQUENCE_OF(CertReply, wantBacks, ASN1_ANY),
    ASN1_IMP_SEQUENCE_OF_OPT(CertReply, errors, ASN1_OBJECT, 0),
    ASN1_IMP_OPT(CertReply, nextUpdate, ASN1_GENERALIZEDTIME, 1),
    ASN1_IMP_SEQUENCE_OF_OPT(CertReply, extensions, X509_EXTENSION, 2),
} static_ASN1_SEQUENCE_END(CertReply)

ASN1_SEQUENCE(CVResponse) = {
    ASN1_SIMPLE(CVResponse, version, ASN1_INTEGER),
    ASN1_SIMPLE(CVResponse, configuration, ASN1_INTEGER),
    ASN1_SIMPLE(CVResponse, producedAt, ASN1_GENERALIZEDTIME),
    ASN1_SIMPLE(CVResponse, status, ResponseStatus),
    ASN1_IMP_SEQUENCE_OF_OPT(CVResponse, policy, ASN1_ANY, 0),
    ASN1_EXP_OPT(CVResponse, request, RequestReference, 1),
    ASN1_IMP_SEQUENCE_OF_OPT(CVResponse, requestorReference, ASN1_ANY, 2),
    ASN1_IMP_SEQUENCE_OF_OPT(CVResponse, requestorName, ASN1_ANY, 3),
    ASN1_IMP_SEQUENCE_OF_OPT(CVResponse, replies, CertReply, 4),
    ASN1_IMP_OPT(CVResponse, nonce, ASN1_OCTET_STRING, 5),
    ASN1_IMP_OPT(CVResponse, serverContext, ASN1_OCTET_STRING, 6),
    ASN1_IMP_SEQUENCE_OF_OPT(CVResponse, extensions, X509_EXTENSION, 7),
    ASN1_IMP_OPT(CVResponse, requestorText, ASN1_UTF8STRING, 8),
} ASN1_SEQUENCE_END(CVResponse)
IMPLEMENT_ASN1_FUNCTIONS(CVResponse)

ASN1_SEQUENCE(PlainResponse) = {
    ASN1_SIMPLE(PlainResponse, type, ASN1_OBJECT),
    ASN1_EXP(PlainResponse, content, CVResponse, 0),
} ASN1_SEQUENCE_END(PlainResponse)
IMPLEMENT_ASN1_FUNCTIONS(PlainResponse)
// clang-format on

} // namespace toolkit::scvp
