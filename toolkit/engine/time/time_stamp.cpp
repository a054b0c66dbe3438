// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "toolkit/engine/time/time_stamp.h"

#include "toolkit/engine/base/der.h"
#include "toolkit/engine/base/digest.h"
#include "toolkit/engine/base/error.h"
#include "toolkit/engine/net/fetch.h"
#include "toolkit/engine/x509/text.h"

#include <array>

namespace toolkit {
namespace {

using StatusHandle = Handle<TS_STATUS_INFO, TS_STATUS_INFO_free>;
using NumberFieldHandle = Handle<ASN1_INTEGER, ASN1_INTEGER_free>;
using ImprintHandle = Handle<TS_MSG_IMPRINT, TS_MSG_IMPRINT_free>;

void setImprint(const Library& library, TS_REQ* request, const TimeStampWish& wish)
{
    const DigestHandle digest = hashAlgorithm(library, wish.hash);
    const AlgorithmHandle algorithm(X509_ALGOR_new());
    const ImprintHandle imprint(TS_MSG_IMPRINT_new());
    require(algorithm && imprint, SIGIL_TK_NO_MEMORY);
    X509_ALGOR_set_md(algorithm.get(), digest.get());
    Bytes hash = wish.imprint;
    require(TS_MSG_IMPRINT_set_algo(imprint.get(), algorithm.get()) == 1 &&
            TS_MSG_IMPRINT_set_msg(imprint.get(), hash.data(), static_cast<int>(hash.size())) == 1 &&
            TS_REQ_set_msg_imprint(request, imprint.get()) == 1,
        SIGIL_TK_NO_MEMORY);
}

void setPolicy(TS_REQ* request, std::string_view policy)
{
    if (policy.empty())
        return;
    const ObjectHandle object(OBJ_txt2obj(dotted(policy).c_str(), 1));
    require(object != nullptr, SIGIL_TK_ARGUMENT, "policy");
    require(TS_REQ_set_policy_id(request, object.get()) == 1, SIGIL_TK_NO_MEMORY);
}

void setNonce(const Library& library, TS_REQ* request)
{
    std::array bytes = library.nonce();
    bytes[0] = static_cast<unsigned char>((bytes[0] & 0x3F) | 0x40); // positive, and as long in every request
    const NumberHandle number(BN_bin2bn(bytes.data(), static_cast<int>(bytes.size()), nullptr));
    const NumberFieldHandle field(number ? BN_to_ASN1_INTEGER(number.get(), nullptr) : nullptr);
    require(field && TS_REQ_set_nonce(request, field.get()) == 1, SIGIL_TK_NO_MEMORY);
}

/** What an authority says about its refusal, for people. */
std::string wordsOf(const TS_STATUS_INFO* info)
{
    std::string words = "status " + std::to_string(ASN1_INTEGER_get(TS_STATUS_INFO_get0_status(info)));
    const STACK_OF(ASN1_UTF8STRING)* const texts = TS_STATUS_INFO_get0_text(info);
    for (int i = 0; i < sk_ASN1_UTF8STRING_num(texts); ++i)
        words += ", " + asn1Text(sk_ASN1_UTF8STRING_value(texts, i));
    return words;
}

void requireGranted(View statusInfo)
{
    const unsigned char* at = statusInfo.data();
    const StatusHandle info(d2i_TS_STATUS_INFO(nullptr, &at, static_cast<long>(statusInfo.size())));
    require(info != nullptr, SIGIL_TK_TSP_MALFORMED);
    const long status = ASN1_INTEGER_get(TS_STATUS_INFO_get0_status(info.get()));
    require(status == TS_STATUS_GRANTED || status == TS_STATUS_GRANTED_WITH_MODS, SIGIL_TK_TSP_REFUSED,
        wordsOf(info.get()));
}

/** TimeStampResp ::= SEQUENCE { PKIStatusInfo, TimeStampToken OPTIONAL } */
View tokenIn(View response)
{
    der::Reader outer(response);
    const auto fields = outer.take(der::Sequence);
    require(fields && outer.atEnd(), SIGIL_TK_TSP_MALFORMED);
    der::Reader reader(*fields);
    const auto status = reader.next();
    require(status.has_value(), SIGIL_TK_TSP_MALFORMED);
    requireGranted(status->whole);
    const auto token = reader.next();
    require(token && reader.atEnd(), SIGIL_TK_TSP_MALFORMED, "no token");
    return token->whole;
}

bool sameNumber(const ASN1_INTEGER* left, const ASN1_INTEGER* right)
{
    return left && right ? ASN1_INTEGER_cmp(left, right) == 0 : left == right;
}

bool sameImprint(TS_MSG_IMPRINT* left, TS_MSG_IMPRINT* right)
{
    return OBJ_cmp(TS_MSG_IMPRINT_get_algo(left)->algorithm, TS_MSG_IMPRINT_get_algo(right)->algorithm) == 0 &&
        ASN1_OCTET_STRING_cmp(TS_MSG_IMPRINT_get_msg(left), TS_MSG_IMPRINT_get_msg(right)) == 0;
}

} // namespace

Bytes TimeStampExchange::makeRequest(const Library& library, const TimeStampWish& wish)
{
    Handle<TS_REQ, TS_REQ_free> request(TS_REQ_new());
    require(request && TS_REQ_set_version(request.get(), 1) == 1, SIGIL_TK_NO_MEMORY);
    setImprint(library, request.get(), wish);
    setPolicy(request.get(), wish.policy);
    if (wish.withNonce)
        setNonce(library, request.get());
    TS_REQ_set_cert_req(request.get(), 1);
    Bytes der = encode<Bytes>(request.get(), i2d_TS_REQ);
    m_request = std::move(request);
    return der;
}

void TimeStampExchange::requireAnswer(const TS_TST_INFO* info) const
{
    auto* const answer = const_cast<TS_TST_INFO*>(info);
    require(sameNumber(TS_REQ_get_nonce(m_request.get()), TS_TST_INFO_get_nonce(answer)), SIGIL_TK_TSP_NONCE);
    require(sameImprint(TS_REQ_get_msg_imprint(m_request.get()), TS_TST_INFO_get_msg_imprint(answer)),
        SIGIL_TK_TSP_IMPRINT);
    const ASN1_OBJECT* const policy = TS_REQ_get_policy_id(m_request.get());
    require(!policy || OBJ_cmp(policy, TS_TST_INFO_get_policy_id(answer)) == 0, SIGIL_TK_TSP_POLICY);
}

TimeStamp TimeStampExchange::verify(const Library& library, const TrustStore& store, View response) const
{
    require(m_request != nullptr, SIGIL_TK_TSP_NONCE, "no request was made");
    const View der = tokenIn(response);
    const TimeStampToken token(library, der);
    Bytes authority = token.verify(library, store);
    requireAnswer(token.info());
    return {toBytes(der), std::move(authority)};
}

Bytes sendToTimeStamper(std::string_view address, int port, View request)
{
    return post(webAddress(address, port), "application/timestamp-query", request, maximumAnswerSize);
}

} // namespace toolkit
