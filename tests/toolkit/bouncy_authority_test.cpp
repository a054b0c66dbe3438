// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Certificates from an authority by Bouncy Castle (CmpAuthority.java), honest and otherwise.

#include "tests/toolkit/enrolment.h"

#include <memory>

using namespace toolkit_test;
using testing::HasSubstr;

namespace {

/** One authority for all tests: it takes seconds to start. */
class BouncyAuthority : public Enrolment {
protected:
    static void SetUpTestSuite()
    {
        home = std::make_unique<Workshop>();
        home->certificate(
            "ca", "/C=KR/O=Test/CN=Bouncy CA", "basicConstraints=critical,CA:TRUE", "", "-days 365", ecKey);
        running = std::make_unique<Server>(Server::bouncyAuthority(*home, CMP_AUTHORITY, "ca", secret));
    }
    static void TearDownTestSuite()
    {
        running.reset();
        home.reset();
    }
    /** The authority's certificate and key in place of the fixture's. */
    BouncyAuthority()
    {
        for (const std::string file : {"ca.crt", "ca.key", "ca.pem", "ca.key.pem"})
            workshop.write(file, home->read(file));
    }
    static std::string ca() { return home->read("ca.crt"); }
    Result ask(const std::string& manner, const Application& application) const
    {
        return request(*running, application, "/" + manner);
    }
    Result ask(const std::string& manner) const { return ask(manner, {.ca = ca()}); }

    static inline std::unique_ptr<Workshop> home;
    static inline std::unique_ptr<Server> running;
};

} // namespace

TEST_F(BouncyAuthority, TwoPairsComeOfOneRequest)
{
    for (const std::string& known : {ca(), std::string()}) {
        const Result result = ask("", {.ca = known, .withKeyManagement = true});
        ASSERT_EQ(result.code, 0) << result.text;
        EXPECT_EQ(provenSubject(result.certificate, result.key), "subject=CN=Kim,OU=person,O=Test,C=KR\n");
        EXPECT_THAT(workshop.run("openssl x509 -in made.pem -noout -ext keyUsage"),
            HasSubstr("Digital Signature, Non Repudiation\n"));
        EXPECT_EQ(provenSubject(result.kmCertificate, result.kmKey), "subject=CN=Kim,OU=person,O=Test,C=KR\n");
        EXPECT_THAT(workshop.run("openssl x509 -in made.pem -noout -ext keyUsage"),
            HasSubstr("Key Encipherment, Data Encipherment\n"));
        EXPECT_EQ(result.ca, ca());
    }
}

TEST_F(BouncyAuthority, ACertificateIsRenewedAndRevoked)
{
    for (const std::string& kind : {std::string("rsa:2048"), ecKey}) {
        certificate("old", "Kim", "keyUsage=digitalSignature", "ca", kind);
        const std::string old = workshop.read("old.key");
        for (const bool newKey : {false, true}) {
            const Result result = update(*running, workshop.read("old.crt"), old, ca(), {.newKey = newKey});
            ASSERT_EQ(result.code, 0) << result.text;
            EXPECT_EQ(
                provenSubject(result.certificate, result.key, "new password"), "subject=CN=Kim,O=Test,C=KR\n");
            EXPECT_EQ(opened(result.key, "new password") == old, !newKey);
        }
        ByteString status(toolkit, "data of before");
        EXPECT_EQ(revoke(*running, "old", 4, status), 0) << toolkit.errorText();
        EXPECT_EQ(status.bytes(), "PKIStatus: accepted");
    }
}

TEST_F(BouncyAuthority, ItMayLetTheUserWaitAndSignWhatASecretAskedFor)
{
    for (const std::string manner : {"wait/1", "signed", "delegate"}) {
        const Result result = ask(manner);
        EXPECT_EQ(result.code, 0) << manner << ": " << result.text;
    }
}

TEST_F(BouncyAuthority, WhatIsWrongHasItsCode)
{
    struct Wrong {
        std::string manner;
        int code;
        std::string words{};
    };
    const std::vector<Wrong> all{
        {"wait/3600", SIGIL_TK_CMP_WAITING, "3600 s"},
        {"wait/99999999999", SIGIL_TK_CMP_MALFORMED},
        {"refuse", SIGIL_TK_CMP_REFUSED, "rejection; PKIFailureInfo: badTime; StatusString: \"not today\""},
        {"silent-refuse", SIGIL_TK_CMP_REFUSED, "who are you"},
        {"subject", SIGIL_TK_CMP_OTHER_CERT, "subject"},
        {"key", SIGIL_TK_CMP_OTHER_CERT, "key"},
        {"secret", SIGIL_TK_CMP_PROTECTION},
        {"transaction", SIGIL_TK_CMP_PROTECTION},
        {"nonce", SIGIL_TK_CMP_PROTECTION},
        {"bare", SIGIL_TK_CMP_PROTECTION},
        {"two", SIGIL_TK_CMP_MALFORMED},
        {"body", SIGIL_TK_CMP_MALFORMED},
    };
    for (const Wrong& wrong : all) {
        SCOPED_TRACE(wrong.manner);
        expectFailure(ask(wrong.manner), wrong.code, wrong.words);
    }
    expectFailure(ask("", {.secret = "another"}), SIGIL_TK_CMP_REFUSED, "badMessageCheck");
}

TEST_F(BouncyAuthority, ASignatureNeedsSomebodyWhoVouchesForIt)
{
    expectFailure(ask("signed", {}), SIGIL_TK_CMP_PROTECTION);
    certificate("stranger", "Stranger", "basicConstraints=critical,CA:TRUE");
    certificate("old", "Kim", "keyUsage=digitalSignature", "ca");
    expectFailure(update(*running, workshop.read("old.crt"), workshop.read("old.key"),
                      workshop.read("stranger.crt"), {}, "/delegate"),
        SIGIL_TK_VERIFY_NO_ISSUER);
}

TEST_F(BouncyAuthority, AKeyManagementPairThatIsRefusedLeavesTheSigningPair)
{
    const Result result = ask("signing-only", {.ca = ca(), .withKeyManagement = true});
    ASSERT_EQ(result.code, 0) << result.text;
    EXPECT_EQ(provenSubject(result.certificate, result.key), "subject=CN=Kim,OU=person,O=Test,C=KR\n");
    EXPECT_EQ(result.kmCertificate + result.kmKey, "");
}
