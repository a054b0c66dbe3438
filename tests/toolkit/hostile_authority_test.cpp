// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Answers of an authority that were tampered with on their way: none is believed, whatever was changed.

#include "tests/toolkit/workshop.h"
#include "toolkit/engine/base/der.h"
#include "toolkit/engine/enrolment/requests.h"
#include "toolkit/engine/enrolment/transaction.h"
#include "toolkit/engine/keys/asymmetric.h"
#include "toolkit/engine/keys/private_key.h"

#include <gtest/gtest.h>

#include <functional>
#include <vector>

using namespace toolkit_test;
using namespace toolkit;

namespace {

using MessageHandle = Handle<OSSL_CMP_MSG, OSSL_CMP_MSG_free>;
using ServerHandle = Handle<OSSL_CMP_SRV_CTX, OSSL_CMP_SRV_CTX_free>;
using StatusHandle = Handle<OSSL_CMP_PKISI, OSSL_CMP_PKISI_free>;

const std::string secret = "the secret";

/** What is done to an answer; its number begins at 0 in every transaction. */
using Tampering = std::function<void(int number, Bytes& answer)>;

class HostileAuthority : public testing::TestWithParam<bool> {
protected:
    HostileAuthority()
    {
        const std::string curve = "ec -pkeyopt ec_paramgen_curve:P-256";
        workshop.certificate("ca", "/CN=CA", "basicConstraints=critical,CA:TRUE", "", "-days 365", curve);
        workshop.certificate("user", "/CN=Kim", "", "ca", "-days 365", curve);
        workshop.certificate("other", "/CN=Kim", "", "ca", "-days 365", curve);
        trust.trusted.emplace_back(library, view(workshop.read("ca.crt")));
    }

    static bool isSigned() { return GetParam(); }
    X509* certificate(const std::string& name) const
    {
        const std::string der = workshop.read(name + ".crt");
        const auto* at = reinterpret_cast<const unsigned char*>(der.data());
        return d2i_X509(nullptr, &at, static_cast<long>(der.size()));
    }
    KeyHandle key(const std::string& name) const
    {
        return loadPrivateKey(library, view(workshop.read(name + ".key")));
    }

    /** A server that hands out the user's certificate, in this process. */
    ServerHandle server()
    {
        ServerHandle made(OSSL_CMP_SRV_CTX_new(nullptr, nullptr));
        OSSL_CMP_SRV_CTX_init(made.get(), this, grant, nullptr, nullptr, nullptr, confirm, nullptr);
        OSSL_CMP_CTX* const own = OSSL_CMP_SRV_CTX_get0_cmp_ctx(made.get());
        OSSL_CMP_CTX_set_log_verbosity(own, 0);
        if (isSigned()) {
            OSSL_CMP_CTX_set1_cert(own, X509Handle(certificate("ca")).get());
            OSSL_CMP_CTX_set1_pkey(own, key("ca").get());
            OSSL_CMP_SRV_CTX_set_accept_unprotected(made.get(), 1);
            return made;
        }
        const View bytes = view(secret);
        OSSL_CMP_CTX_set1_referenceValue(own, bytes.data(), static_cast<int>(bytes.size()));
        OSSL_CMP_CTX_set1_secretValue(own, bytes.data(), static_cast<int>(bytes.size()));
        return made;
    }
    static OSSL_CMP_PKISI* grant(OSSL_CMP_SRV_CTX* server, const OSSL_CMP_MSG*, int, const OSSL_CRMF_MSG*,
        const X509_REQ*, X509** certificate, STACK_OF(X509) **, STACK_OF(X509) * *authorities)
    {
        auto* const self = static_cast<HostileAuthority*>(OSSL_CMP_SRV_CTX_get0_custom_ctx(server));
        *certificate = self->certificate("user");
        *authorities = sk_X509_new_null();
        for (const std::string& name : self->authorities)
            sk_X509_push(*authorities, self->certificate(name));
        return OSSL_CMP_STATUSINFO_new(OSSL_CMP_PKISTATUS_accepted, 0, nullptr);
    }
    static int confirm(OSSL_CMP_SRV_CTX*, const OSSL_CMP_MSG*, int, const ASN1_OCTET_STRING*, const OSSL_CMP_PKISI*)
    {
        return 1;
    }

    /** The code of a request whose answers are tampered with; a certificate that comes must be the right one. */
    int outcome(const Tampering& tamper)
    {
        const ServerHandle answering = server();
        int number = 0;
        const Authority authority([&](View request, auto) {
            const unsigned char* at = request.data();
            const MessageHandle asked(d2i_OSSL_CMP_MSG(nullptr, &at, static_cast<long>(request.size())));
            const MessageHandle answer(OSSL_CMP_SRV_process_request(answering.get(), asked.get()));
            Bytes bytes = encode<Bytes>(answer.get(), i2d_OSSL_CMP_MSG);
            tamper(number++, bytes);
            return bytes;
        });
        const ErrorScope scope;
        try {
            Transaction transaction(library, authority, isSigned() ? &trust : nullptr, SIGIL_TK_HASH_SHA256);
            transaction.protectWith(SharedSecret{"ref", secret});
            const KeyHandle own = key("user");
            const NameHandle subject = nameFromText("cn=Kim");
            const Issued issued = transaction.request(OSSL_CMP_IR, {own.get(), subject.get(), false, 0});
            EXPECT_EQ(issued.certificate.der(), toBytes(view(workshop.read("user.crt"))));
            return SIGIL_TK_OK;
        } catch (const Error& error) {
            return error.code();
        }
    }
    /** The answers of a transaction. */
    std::vector<Bytes> answers()
    {
        std::vector<Bytes> found;
        EXPECT_EQ(outcome([&](int, Bytes& answer) { found.push_back(answer); }), SIGIL_TK_OK);
        return found;
    }
    /** What neither secret nor signature protects: certificates that may help to verify. */
    static std::size_t unprotectedAt(View answer)
    {
        der::Reader fields(der::Reader(answer).take(der::Sequence).value_or(View()));
        View last;
        for (int i = 0; i < 3; ++i)
            last = fields.next().value_or(der::Element{}).whole;
        return static_cast<std::size_t>(last.data() + last.size() - answer.data());
    }

    std::vector<std::string> authorities; ///< that come along with the certificate
    Library library;
    Workshop workshop;
    TrustStore trust;
};

bool isRefusal(int code) { return code >= SIGIL_TK_CMP_MALFORMED && code <= SIGIL_TK_CMP_WAITING; }

} // namespace

INSTANTIATE_TEST_SUITE_P(Protection, HostileAuthority, testing::Bool(),
    [](const auto& suite) { return suite.param ? "Signature" : "Secret"; });

TEST_P(HostileAuthority, NoByteMayBeChanged)
{
    const std::vector<Bytes> honest = answers();
    ASSERT_EQ(honest.size(), 2U) << "certificate and confirmation";
    for (int number = 0; number < 2; ++number)
        for (std::size_t at = 0; at < honest[static_cast<std::size_t>(number)].size(); ++at) {
            bool isProtected = false;
            const int code = outcome([&](int i, Bytes& bytes) {
                if (i != number || at >= bytes.size())
                    return;
                isProtected = at < unprotectedAt(bytes);
                bytes[at] = static_cast<unsigned char>(bytes[at] ^ (1U << at % 8));
            });
            EXPECT_TRUE(isRefusal(code) || (code == SIGIL_TK_OK && !isProtected))
                << "answer " << number << ", byte " << at << ": " << code;
        }
}

TEST_P(HostileAuthority, NothingMayBeMissingOrAdded)
{
    const std::size_t size = answers().front().size();
    for (std::size_t length = 0; length < size; length += 3)
        EXPECT_EQ(outcome([&](int, Bytes& answer) { answer.resize(length); }), SIGIL_TK_CMP_MALFORMED) << length;
    EXPECT_EQ(outcome([&](int, Bytes& answer) { answer.push_back(0); }), SIGIL_TK_CMP_MALFORMED);
}

TEST_P(HostileAuthority, AnAnswerOfBeforeIsNoAnswer)
{
    Bytes before;
    EXPECT_EQ(outcome([&](int number, Bytes& answer) {
        if (number == 0)
            before = answer;
    }),
        SIGIL_TK_OK);
    EXPECT_EQ(outcome([&](int, Bytes& answer) { answer = before; }), SIGIL_TK_CMP_PROTECTION);
}

TEST_P(HostileAuthority, WhoIssuedACertificateHasItsNameAndSignedIt)
{
    const std::string curve = "ec -pkeyopt ec_paramgen_curve:P-256";
    workshop.certificate("impostor", "/CN=CA", "basicConstraints=critical,CA:TRUE\nsubjectKeyIdentifier=none", "",
        "-days 365", curve);
    const auto issuerAmong = [&](const std::vector<std::string>& names) {
        authorities = names;
        const ServerHandle answering = server();
        const Authority asked([&](View request, auto) {
            const unsigned char* at = request.data();
            const MessageHandle message(d2i_OSSL_CMP_MSG(nullptr, &at, static_cast<long>(request.size())));
            const MessageHandle answer(OSSL_CMP_SRV_process_request(answering.get(), message.get()));
            return encode<Bytes>(answer.get(), i2d_OSSL_CMP_MSG);
        });
        const ErrorScope scope;
        return introduce(
            {library, asked, nullptr, SIGIL_TK_HASH_SHA256}, {"ref", "the secret"}, "cn=Kim", key("user").get())
            .issuer;
    };
    if (isSigned())
        return; // the secret vouches for what comes along
    EXPECT_EQ(issuerAmong({"other", "impostor"}), Bytes());
    EXPECT_EQ(issuerAmong({"other", "impostor", "ca"}), toBytes(view(workshop.read("ca.crt"))));
}
