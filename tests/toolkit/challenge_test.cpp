// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Challenge and response, and what is not offered.

#include "tests/toolkit/messages.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace toolkit_test;

namespace {

class Challenges : public MessageTest {
protected:
    Challenges()
        : MessageTest("GPKI_")
    {
    }
    std::string challenge()
    {
        ByteString record(toolkit, "what the record held");
        EXPECT_EQ(toolkit("SIGEA_MakeChallenge", record.get()), 0) << toolkit.errorText();
        return record.bytes();
    }
    std::string answer(const std::string& challenge, const std::string& signer = "rsa")
    {
        return make([&](BINSTR* out) {
            ByteString question(toolkit, challenge);
            ByteString certificate(toolkit, file(signer + ".crt"));
            ByteString key(toolkit, file(signer + ".key"));
            return toolkit("SIGEA_MakeResponse", question.get(), certificate.get(), key.get(), out);
        });
    }
    /** The record with the certificate afterwards, or "code N". */
    std::string verify(
        const std::string& challenge, const std::string& response, const std::string& certificate = "any")
    {
        ByteString question(toolkit, challenge);
        ByteString reply(toolkit, response);
        ByteString record(toolkit, certificate);
        const int code = toolkit("SIGEA_VerifyResponse", question.get(), reply.get(), record.get());
        return code == 0 ? record.bytes() : "code " + std::to_string(code);
    }
};

} // namespace

TEST_F(Challenges, AreAnswered)
{
    const std::string asked = challenge();
    EXPECT_EQ(asked.size(), 39U);
    EXPECT_EQ(asked.substr(0, 7), fromHex("30250201010420"));
    EXPECT_NE(asked, challenge()) << "it is random";
    for (const std::string signer : {"rsa", "ec"}) {
        const std::string response = answer(asked, signer);
        EXPECT_EQ(verify(asked, response), file(signer + ".crt")) << toolkit.errorText();
        EXPECT_EQ(verify(asked, response, file(signer + ".crt")), file(signer + ".crt"));
        EXPECT_EQ(verify(asked, response, file("other.crt")), "code 3902") << "another certificate is expected";
        write("response", response);
        run("openssl cms -verify -inform DER -in response -CAfile root.pem -binary -out read");
        EXPECT_THAT(read("read"), testing::HasSubstr(asked));
    }
}

TEST_F(Challenges, AnAnswerToAnotherOneIsRefused)
{
    const std::string asked = challenge();
    std::string response = answer(asked);
    EXPECT_EQ(verify(challenge(), response), "code 3403");
    response[response.find(asked) + 20] ^= 1;
    EXPECT_EQ(verify(asked, response), "code 3901");
    EXPECT_EQ(answer("no challenge"), "code 3007");
    EXPECT_EQ(answer(asked + "x"), "code 3007");
    EXPECT_EQ(verify(asked, "no response"), "code 3900");
    EXPECT_EQ(verify("no challenge", answer(asked)), "code 3007");
}

TEST_F(Challenges, OfAnotherFormAreNone)
{
    const std::string version("\x02\x01\x01", 3);
    const std::string random = element(4, std::string(32, 'r'));
    ASSERT_NE(answer(element(0x30, version + random)), "code 3007");
    const std::pair<const char*, std::string> damaged[] = {
        {"another version", element(0x30, std::string("\x02\x01\x02", 3) + random)},
        {"no version", element(0x30, random)},
        {"no random value", element(0x30, version)},
        {"a short random value", element(0x30, version + element(4, std::string(31, 'r')))},
        {"something behind the random value", element(0x30, version + random + version)},
    };
    for (const auto& [what, challenge] : damaged) {
        EXPECT_EQ(answer(challenge), "code 3007") << what;
        EXPECT_EQ(verify(challenge, "any"), "code 3007") << what;
    }
}

TEST_F(Challenges, AnAnswerOfAnotherFormIsDamaged)
{
    const std::string asked = challenge();
    const std::string random = element(4, std::string(32, 'r'));
    const auto verified = [&](const std::string& content) {
        write("content", content);
        run("openssl cms -sign -binary -nodetach -signer rsa.pem -inkey rsa.key.pem -in content -outform DER "
            "-out response");
        return verify(asked, read("response"));
    };
    EXPECT_EQ(verified(element(0x30, asked + random)), file("rsa.crt"));
    const std::pair<const char*, std::string> damaged[] = {
        {"no answer", "text"},
        {"an empty answer", element(0x30, "")},
        {"something behind it", element(0x30, asked + random) + "x"},
        {"another challenge's form", element(0x30, random + random)},
        {"no random value", element(0x30, asked)},
        {"a short random value", element(0x30, asked + element(4, "short"))},
    };
    for (const auto& [what, content] : damaged)
        EXPECT_EQ(verified(content), "code 3900") << what;
}

TEST_F(Challenges, ThePathIsVerifiedWhenCertificatesAreTrusted)
{
    const std::string asked = challenge();
    const std::string response = answer(asked);
    ByteString other(toolkit, file("other.crt"));
    ASSERT_EQ(toolkit("CERT_AddTrustedCert", other.get()), 0);
    EXPECT_EQ(verify(asked, response), "code 3201");
    ByteString root(toolkit, file("root.crt"));
    ASSERT_EQ(toolkit("CERT_AddTrustedCert", root.get()), 0);
    EXPECT_EQ(verify(asked, response), file("rsa.crt")) << toolkit.errorText();
}

TEST(NotOffered, SaysSo)
{
    const ToolkitLibrary maker("HVTK_");
    const auto refused = [](const ToolkitLibrary& toolkit, int code) {
        EXPECT_EQ(code, SIGIL_TK_NOT_OFFERED);
        EXPECT_THAT(toolkit.errorText(),
            testing::AnyOf(testing::HasSubstr("public definition"), testing::HasSubstr("size")));
    };
    BINSTR* const none = nullptr;
    char* const noText = nullptr;
    refused(maker, maker("UNI_ViewCert", none, noText));
    refused(maker, maker("WPKI_SignData", none, none, none, none));
    refused(maker, maker("WPKI_VerifyData", none, none, none));
    refused(maker, maker("WPKI_EncryptData", none, none, 0, none, none, none));
    refused(maker, maker("WPKI_DecryptData", none, none, none, none));
    refused(maker, maker("WPKI_VerifyCert", none));
    const ToolkitLibrary gpki("GPKI_");
    refused(gpki, gpki("WCMS_MakeSignedContent", none, none, none, none));
    refused(gpki, gpki("WCMS_ProcessSignedContent", none, none, none));
    refused(gpki, gpki("WCMS_MakeWapEnvelopedData", none, none, 0, none));
    refused(gpki, gpki("WCMS_ProcessWapEnvelopedData", none, none, none, none));
}
