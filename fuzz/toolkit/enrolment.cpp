// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Any bytes as the answer of a certification authority: as they are, and with the numbers and the protection that make them
// an answer to the request.

#include "fuzz/toolkit/input.h"
#include "toolkit/engine/base/der.h"
#include "toolkit/engine/base/oid.h"
#include "toolkit/engine/enrolment/transaction.h"
#include "toolkit/engine/keys/private_key.h"
#include "toolkit/engine/x509/name.h"

#include <openssl/err.h>

namespace {

using namespace toolkit;
using MessageHandle = Handle<OSSL_CMP_MSG, OSSL_CMP_MSG_free>;

constexpr std::string_view secret = "secret";
constexpr der::Tag senderNonce{0xA5};

const KeyHandle& ownKey()
{
    static const KeyHandle key = loadPrivateKey(fuzz::library(), fuzz::ownKeyInfo());
    return key;
}

View nonceOf(View request)
{
    der::Reader message(der::Reader(request).take(der::Sequence).value_or(View()));
    der::Reader header(message.take(der::Sequence).value_or(View()));
    while (const auto field = header.next())
        if (field->tag == senderNonce)
            return der::Reader(field->content).take(der::OctetString).value_or(View());
    return {};
}

MessageHandle parsed(View der)
{
    const unsigned char* at = der.data();
    return MessageHandle(d2i_OSSL_CMP_MSG(nullptr, &at, static_cast<long>(der.size())));
}

/** @p answer as one to @p request, under the secret; as it is when it is no message. */
Bytes adapted(View request, const Bytes& answer)
{
    const MessageHandle asked = parsed(request);
    const MessageHandle message = parsed(answer);
    const Handle<OSSL_CMP_CTX, OSSL_CMP_CTX_free> own(OSSL_CMP_CTX_new(fuzz::library().context(), nullptr));
    ASN1_OCTET_STRING* const nonce =
        message ? OSSL_CMP_HDR_get0_recipNonce(OSSL_CMP_MSG_get0_header(message.get())) : nullptr;
    if (!nonce)
        return answer;
    const View wanted = nonceOf(request);
    const View known = view(secret);
    const bool ready = ASN1_OCTET_STRING_set(nonce, wanted.data(), static_cast<int>(wanted.size())) == 1 &&
        OSSL_CMP_CTX_set1_referenceValue(own.get(), known.data(), static_cast<int>(known.size())) == 1 &&
        OSSL_CMP_CTX_set1_secretValue(own.get(), known.data(), static_cast<int>(known.size())) == 1 &&
        OSSL_CMP_CTX_set1_transactionID(
            own.get(), OSSL_CMP_HDR_get0_transactionID(OSSL_CMP_MSG_get0_header(asked.get()))) == 1 &&
        OSSL_CMP_MSG_update_transactionID(own.get(), message.get()) == 1;
    return ready ? encode<Bytes>(message.get(), i2d_OSSL_CMP_MSG) : answer;
}

void askFor(const Authority& authority)
{
    fuzz::attempt([&] {
        const NameHandle subject = nameFromText("cn=x");
        Transaction transaction(fuzz::library(), authority, nullptr, SIGIL_TK_HASH_SHA256);
        transaction.protectWith(SharedSecret{"ref", secret});
        transaction.request(OSSL_CMP_IR, {ownKey().get(), subject.get(), true, 0});
    });
}

} // namespace

FUZZ_TARGET(toolkit_enrolment, input)
{
    const Bytes answer = fuzz::der(input);
    constexpr std::chrono::milliseconds noPatience{50}; // never long enough for the second that a wait takes
    askFor(Authority([&](View, auto) { return answer; }, noPatience));
    askFor(Authority([&](View request, auto) { return adapted(request, answer); }, noPatience));
}
