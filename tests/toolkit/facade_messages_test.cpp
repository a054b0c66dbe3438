// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Messages through the library's exported functions, on both toolkit types.

#include "tests/toolkit/facade.h"
#include "tests/toolkit/workshop.h"

#include <sigildesk/open_toolkit.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <filesystem>

using namespace toolkit_test;

namespace {

const std::string content = "content through the facade";

const Workshop& workshop()
{
    static const Workshop made;
    static const bool ready = [] {
        made.certificate("root", "/CN=root", "basicConstraints=critical,CA:TRUE\nsubjectKeyIdentifier=hash");
        for (const std::string name : {"signer", "recipient"})
            made.certificate(name, "/CN=" + name,
                "keyUsage=digitalSignature,keyEncipherment\nsubjectKeyIdentifier=hash\nauthorityKeyIdentifier="
                "keyid",
                "root");
        return true;
    }();
    EXPECT_TRUE(ready);
    return made;
}

class FacadeMessages : public testing::TestWithParam<int> {
protected:
    /** A function that the type lacks answers 1003, and no other does. */
    void onlyOn(int type, int code, int expected = 0) const
    {
        EXPECT_EQ(code, type == GetParam() ? expected : 1003) << error();
    }
    std::string error() const
    {
        std::array<char, 2048> buffer{};
        HV_GetErrInfo2(handle, 2048, buffer.data());
        return buffer.data();
    }
    static std::string path(const std::string& name) { return workshop().path(name); }

    Facade facade{GetParam()};
    void* handle = facade.get();
    Bytes signerBytes{facade, workshop().read("signer.crt")};
    Bytes signerKeyBytes{facade, workshop().read("signer.key")};
    Bytes recipientBytes{facade, workshop().read("recipient.crt")};
    Bytes recipientKeyBytes{facade, workshop().read("recipient.key")};
    Bytes dataBytes{facade, content};
    BINSTR* signer = signerBytes.get();
    BINSTR* signerKey = signerKeyBytes.get();
    BINSTR* recipient = recipientBytes.get();
    BINSTR* recipientKey = recipientKeyBytes.get();
    BINSTR* data = dataBytes.get();
    std::string time = "2026-01-02 03:04:05";
};

} // namespace

INSTANTIATE_TEST_SUITE_P(Types, FacadeMessages, testing::Values(0, 1));

TEST_P(FacadeMessages, SignedInMemory)
{
    Bytes first(facade);
    ASSERT_EQ(CMSMakeSignedData(handle, 0, signer, signerKey, data, text(time), first.get()), 0) << error();
    Bytes message(facade);
    ASSERT_EQ(
        CMSMakeSignedDataWithAddSigner(handle, 0, recipient, recipientKey, first.get(), text(time), message.get()),
        0)
        << error();
    workshop().write("message", message.content());
    workshop().run("openssl cms -verify -purpose any -inform DER -in message -CAfile root.pem -binary -out read");
    EXPECT_EQ(workshop().read("read"), content);
    Bytes out(facade, "what the record held");
    int count = 0;
    ASSERT_EQ(CMSProcessSignedData(handle, 0, message.get(), out.get(), &count), 0) << error();
    EXPECT_EQ(out.content(), content);
    EXPECT_EQ(count, 2);
    Bytes certificate(facade);
    std::array<char, 25> when{};
    ASSERT_EQ(CMSGetSignerCert(handle, 1, certificate.get(), when.data()), 0);
    EXPECT_EQ(std::string(when.data()), time);
    EXPECT_EQ(CMSGetSignerCert(handle, 2, certificate.get(), when.data()), SIGIL_TK_CMS_NOBODY);
    Bytes list(facade);
    onlyOn(1, CMSGetSignerCaPubs(handle, list.get()));
    Bytes signature(facade);
    onlyOn(1, CMSGetTBTData(handle, 0, signature.get()));
    Bytes token(facade);
    onlyOn(1, CMSGetTimeStampToken1(handle, 0, token.get()), SIGIL_TK_CMS_ATTRIBUTE);
    onlyOn(1, CMSGetTimeStampToken2(handle, message.get(), 0, data, token.get()), SIGIL_TK_TSP_MALFORMED);
    onlyOn(0, CMSSetOption(handle, 0));
    Bytes attributes(facade);
    onlyOn(0, CMSMakekTBSData(handle, 0, signer, data, text(time), attributes.get()));
    onlyOn(0, CMSComposeSignedData(handle, data, attributes.get()), SIGIL_TK_SIGNATURE);
    Bytes by(facade);
    Bytes shown(facade);
    onlyOn(0, UNIVerifySignData(handle, message.get(), shown.get(), by.get()));
    onlyOn(0, UNIViewCert(handle, signer, when.data()), SIGIL_TK_NOT_OFFERED);
    onlyOn(0, WPKIVerifyCert(handle, signer), SIGIL_TK_NOT_OFFERED);
}

TEST_P(FacadeMessages, EnvelopedInMemory)
{
    Bytes message(facade);
    ASSERT_EQ(CMSMakeEnvelopedData(handle, 0, recipient, data, 0, message.get()), 0) << error();
    Bytes out(facade);
    ASSERT_EQ(CMSProcessEnvelopedData(handle, recipient, recipientKey, message.get(), out.get()), 0) << error();
    EXPECT_EQ(out.content(), content);
    Bytes many(facade);
    ASSERT_EQ(CMSMakeEnvDataWithMultiRec(handle, 0, recipient, data, SIGIL_TK_CIPHER_ARIA256, many.get()), 0);
    Bytes opened(facade);
    EXPECT_EQ(CMSProcessEnvelopedData(handle, recipient, recipientKey, many.get(), opened.get()), 0);
    EXPECT_EQ(CMSProcessEnvelopedData(handle, signer, signerKey, many.get(), opened.get()), SIGIL_TK_CMS_NOBODY);
    Bytes sealed(facade);
    ASSERT_EQ(CMSMakeSignedAndEnvData(handle, 0, signer, signerKey, recipient, data, 0, sealed.get()), 0)
        << error();
    Bytes unsealed(facade);
    Bytes by(facade);
    ASSERT_EQ(
        CMSProcessSignedAndEnvData(handle, 0, recipient, recipientKey, sealed.get(), unsealed.get(), by.get()), 0)
        << error();
    EXPECT_EQ(unsealed.content(), content);
    EXPECT_EQ(by.content(), workshop().read("signer.crt"));
    Bytes inner(facade);
    onlyOn(0, UNIDecryptEnvData(handle, recipient, recipientKey, sealed.get(), inner.get()));
}

TEST_P(FacadeMessages, EncryptedUnderAKey)
{
    Bytes key(facade, std::string(16, 'k'));
    ASSERT_EQ(CRYPTSetKeyAndIV(handle, SIGIL_TK_CIPHER_SEED, key.get(), key.get()), 0);
    Bytes message(facade);
    ASSERT_EQ(CMSMakeEncryptedData(handle, 0, key.get(), data, SIGIL_TK_CIPHER_SEED, message.get()), 0) << error();
    Bytes out(facade);
    ASSERT_EQ(CMSProcessEncryptedData(handle, key.get(), message.get(), out.get()), 0) << error();
    EXPECT_EQ(out.content(), content);
}

TEST_P(FacadeMessages, InFiles)
{
    workshop().write("content", content);
    for (const std::string name : {"out", "message", "cipher"})
        std::filesystem::remove(path(name));
    const std::string source = path("content");
    const std::string target = path("message");
    const std::string out = path("out");
    const std::string cipher = path("cipher");
    Bytes certificate(facade);
    std::array<char, 25> when{};
    ASSERT_EQ(CMSMakeSignedDataFile(handle, signer, signerKey, text(source), text(time), text(target)), 0)
        << error();
    EXPECT_EQ(CMSProcessSignedDataFile(handle, text(source), text(target), certificate.get(), when.data()), 0);
    EXPECT_EQ(std::string(when.data()), time);
    ASSERT_EQ(
        CMSMakeSignedDataFileWithContent(handle, signer, signerKey, text(source), text(time), text(target)), 0);
    Bytes again(facade);
    EXPECT_EQ(CMSProcessSignedDataFileWithContent(handle, text(out), text(target), again.get(), when.data()), 0)
        << error();
    EXPECT_EQ(workshop().read("out"), content);

    ASSERT_EQ(CMSMakeEnvelopedDataFile(handle, recipient, text(source), 0, text(target), text(cipher)), 0)
        << error();
    std::filesystem::remove(out);
    if (GetParam() == 0) { // the other library gets no cipher file: it writes the ordinary message
        EXPECT_EQ(
            CMSProcessEnvelopedDataFile(handle, recipient, recipientKey, text(target), text(cipher), text(out)), 0)
            << error();
    } else {
        EXPECT_FALSE(std::filesystem::exists(cipher));
        EXPECT_EQ(
            CMSProcessEnvDataFileWithContent(handle, recipient, recipientKey, text(target), nullptr, text(out)), 0)
            << error();
    }
    EXPECT_EQ(workshop().read("out"), content);
}

TEST_P(FacadeMessages, ChallengeAndResponse)
{
    Bytes challenge(facade, "any");
    Bytes response(facade);
    Bytes certificate(facade, "any");
    onlyOn(1, SIGEAMakeChallenge(handle, challenge.get()));
    onlyOn(1, SIGEAMakeResponse(handle, challenge.get(), signer, signerKey, response.get()));
    Bytes reply(facade, response.content().empty() ? "any" : response.content());
    onlyOn(1, SIGEAVerifyResponse(handle, challenge.get(), reply.get(), certificate.get()));
}
