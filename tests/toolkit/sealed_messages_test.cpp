// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Messages that are signed and enveloped, messages of any kind, time stamps inside messages.

#include "tests/support/tally.h"
#include "tests/toolkit/messages.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>

using namespace toolkit_test;

namespace {

const std::string sealedContent = "what is signed and enveloped";

class SealedMessages : public MessageTest, public testing::WithParamInterface<const char*> {
protected:
    SealedMessages()
        : MessageTest(GetParam())
    {
    }
    std::string seal(const std::string& signer, const std::string& recipient, int option = 0)
    {
        return make([&](BINSTR* out) {
            ByteString certificate(toolkit, file(signer + ".crt"));
            ByteString key(toolkit, file(signer + ".key"));
            ByteString to(toolkit, file(recipient + ".crt"));
            ByteString data(toolkit, sealedContent);
            return hvtk()
                ? toolkit("CMS_MakeSignedAndEnvData", option, certificate.get(), key.get(), to.get(), data.get(), 0,
                      out)
                : toolkit("CMS_MakeSignedAndEnvData", certificate.get(), key.get(), to.get(), data.get(), 0, out);
        });
    }
    int unseal(
        const std::string& recipient, const std::string& message, int option, ByteString& data, ByteString& signer)
    {
        ByteString certificate(toolkit, file(recipient + ".crt"));
        ByteString key(toolkit, file(recipient + ".key"));
        ByteString bytes(toolkit, message);
        const int code = hvtk() ? toolkit("CMS_ProcessSignedAndEnvData", option, certificate.get(), key.get(),
                                      bytes.get(), data.get(), signer.get())
                                : toolkit("CMS_ProcessSignedAndEnvData", certificate.get(), key.get(), bytes.get(),
                                      data.get(), signer.get());
        EXPECT_TRUE(code == 0 || (data.empty() && signer.empty()));
        return code;
    }
    /** Changes every @p stride th byte in turn: that is refused, or says the same. */
    void flipBytes(const std::string& recipient, const std::string& message, std::size_t stride)
    {
        for (std::size_t i = 0; i < message.size(); i += stride) {
            std::string changed = message;
            changed[i] = static_cast<char>(changed[i] ^ (1 << i % 8));
            ByteString data(toolkit);
            ByteString signer(toolkit); // its certificate is not verified, so that one may have changed
            const int code = unseal(recipient, changed, 0, data, signer);
            EXPECT_TRUE(code == 0 ? data.bytes() == sealedContent : isMessageCode(code)) << i << ": " << code;
            tally("changed messages");
        }
    }
    /** "SIGNER: CONTENT", or "code N". */
    std::string unseal(const std::string& recipient, const std::string& message, int option = 0)
    {
        ByteString data(toolkit);
        ByteString signer(toolkit);
        if (const int code = unseal(recipient, message, option, data, signer))
            return "code " + std::to_string(code);
        write("got.crt", signer.bytes());
        return nameOf("got.crt") + ": " + data.bytes();
    }
};

std::string fieldsOf(const std::string& message) { return children(children(message)[1])[0]; }

} // namespace

INSTANTIATE_TEST_SUITE_P(Faces, SealedMessages, testing::Values("HVTK_", "GPKI_"),
    [](const auto& face) { return std::string(face.param, 4); });

TEST_P(SealedMessages, TwoOrdinaryToolsInARowReadThem)
{
    for (const std::string signer : {"rsa", "ec"}) {
        write("message", seal(signer, "other"));
        run("openssl cms -decrypt -provider default -provider legacy -inform DER -in message -recip other.pem "
            "-inkey "
            "other.key.pem -binary -out inner");
        run("openssl cms -verify -inform DER -in inner -CAfile root.pem -binary -out read");
        EXPECT_EQ(read("read"), sealedContent);
        EXPECT_EQ(unseal("other", read("message")), "CN = " + signer + ": " + sealedContent) << toolkit.errorText();
    }
    EXPECT_EQ(unseal("ec", read("message")), "code 3902");
}

TEST_P(SealedMessages, NoChangedByteIsAcceptedWithOtherContent) { flipBytes("ec", seal("ec", "ec"), 3); }

TEST_P(SealedMessages, OfTwoOrdinaryToolsInARowAreRead)
{
    write("content", sealedContent);
    run("openssl cms -sign -binary -nodetach -outform DER -in content -out inner -signer rsa.pem -inkey "
        "rsa.key.pem && "
        "openssl cms -encrypt -binary -aes128 -outform DER -in inner -out message -recip ec.pem");
    EXPECT_EQ(unseal("ec", read("message")), "CN = rsa: " + sealedContent) << toolkit.errorText();
    run("openssl cms -encrypt -binary -aes128 -outform DER -in content -out message -recip ec.pem");
    EXPECT_EQ(unseal("ec", read("message")), "code 3904") << "nothing in it is signed";
}

TEST_P(SealedMessages, ASignedDataUnderItsOwnTypeIsRead)
{
    write("content", sealedContent);
    run("openssl cms -sign -binary -nodetach -outform DER -in content -out inner -signer rsa.pem -inkey "
        "rsa.key.pem");
    write("bare", fieldsOf(read("inner")));
    write("nothing", fromHex("3000"));
    for (const std::string inner : {"inner", "bare", "content", "nothing"}) {
        run("openssl cms -encrypt -binary -aes128 -outform DER -econtent_type 1.2.840.113549.1.7.2 -in " + inner +
            " -out message -recip ec.pem");
        std::string message = read("message");
        const std::string data = fromHex("06092a864886f70d010701");
        const std::size_t at = message.find(data);
        if (at != std::string::npos) // the program does not write the type that it was told
            message[at + data.size() - 1] = '\x02';
        const bool isText = inner == "content" || inner == "nothing";
        EXPECT_EQ(unseal("ec", message), isText ? "code 3904" : "CN = rsa: " + sealedContent)
            << inner << toolkit.errorText();
    }
}

TEST_P(SealedMessages, ThePkcs7TypeIsReadWithTheSignatureEncryptedOrBare)
{
    const std::string keyHex = "000102030405060708090a0b0c0d0e0f";
    const std::string encrypt = "openssl enc -aes-128-cbc -K " + keyHex + " -iv " + keyHex;
    write("content", sealedContent);
    run("openssl cms -sign -binary -nodetach -noattr -outform DER -in content -out inner -signer rsa.pem "
        "-inkey "
        "rsa.key.pem");
    const std::string inner = read("inner");
    write("signature", signatureIn(inner));
    run("openssl x509 -in ec.pem -noout; " + encrypt + " -in content -out content.enc; " + encrypt +
        " -in signature -out signature.enc; printf '"
        "\\000\\001\\002\\003\\004\\005\\006\\007\\010\\011\\012\\013\\014\\015\\016\\017"
        "' | openssl pkeyutl -encrypt -certin -inkey other.pem -out wrapped");
    // The recipient's record of an ordinary message, with this key.
    run("openssl cms -encrypt -binary -aes128 -outform DER -in content -out enveloped -recip other.pem");
    std::string recipients = children(fieldsOf(read("enveloped")))[1];
    const std::string wrapped = octetsIn(recipients, 256);
    recipients.replace(recipients.find(wrapped), wrapped.size(), read("wrapped"));

    const auto fields = children(fieldsOf(inner)); // version, hashes, content, certificates, signers
    const std::string algorithm = element('\x30',
        fromHex("0609608648016503040102"
                "0410" +
            keyHex));
    for (const bool bare : {false, true}) {
        std::string signers = fields[4];
        if (!bare) { // the signature is the last field of its record
            const auto record = children(children(signers)[0]);
            std::string body;
            for (std::size_t i = 0; i + 1 < record.size(); ++i)
                body += record[i];
            signers = element('\x31', element('\x30', body + element('\x04', read("signature.enc"))));
        }
        const std::string encrypted =
            element('\x30', fromHex("06092a864886f70d010701") + algorithm + element('\x80', read("content.enc")));
        const std::string message = element('\x30',
            fromHex("06092a864886f70d010704") +
                element('\xA0',
                    element('\x30', fromHex("020101") + recipients + fields[1] + encrypted + fields[3] + signers)));
        EXPECT_EQ(unseal("other", message), "CN = rsa: " + sealedContent) << bare << toolkit.errorText();
        EXPECT_EQ(unseal("ec", message), "code 3902");
        flipBytes("other", message, 11);
        if (!hvtk())
            continue;
        ByteString certificate(toolkit, file("other.crt"));
        ByteString key(toolkit, file("other.key"));
        ByteString bytes(toolkit, message);
        ByteString opened(toolkit);
        ASSERT_EQ(toolkit("UNI_DecryptEnvData", certificate.get(), key.get(), bytes.get(), opened.get()), 0);
        write("opened", opened.bytes());
        run("openssl cms -verify -inform DER -in opened -CAfile root.pem -binary -out read");
        EXPECT_EQ(read("read"), sealedContent);
    }
}

TEST_P(SealedMessages, ThePkcs7TypeWithOtherFieldsIsDamaged)
{
    write("content", sealedContent);
    run("openssl cms -sign -binary -nodetach -outform DER -in content -out inner -signer rsa.pem -inkey "
        "rsa.key.pem");
    run("openssl cms -encrypt -binary -aes128 -outform DER -in content -out enveloped -recip other.pem");
    const auto signedFields = children(fieldsOf(read("inner")));
    const auto envelopedFields = children(fieldsOf(read("enveloped")));
    const std::string version = fromHex("020101");
    const std::string recipients = envelopedFields[1];
    const std::string hashes = signedFields[1];
    const std::string octets = element('\x04', "octets");
    const std::pair<const char*, std::string> damaged[] = {
        {"no version", recipients + hashes},
        {"no hashes", version + recipients},
        {"recipients of another kind", version + octets + hashes},
        {"hashes of another kind", version + recipients + octets},
        {"a field too many", version + recipients + hashes + hashes},
        {"nothing at all", ""},
    };
    for (const auto& [what, before] : damaged) {
        const std::string fields = element('\x30', before + envelopedFields[2] + signedFields.back());
        const std::string message = element('\x30', fromHex("06092a864886f70d010704") + element('\xA0', fields));
        EXPECT_EQ(unseal("other", message), "code 3900") << what;
    }
}

TEST_P(SealedMessages, TimeStampTokensAreTakenOutAndPutIn)
{
    if (hvtk()) {
        EXPECT_FALSE(toolkit.has("CMS_GetTimeStampToken") || toolkit.has("CMS_SetTimeStampToken"));
        return;
    }
    messageWorkshop().certificate("tsa", "/CN=tsa",
        "keyUsage=critical,digitalSignature\nextendedKeyUsage=critical,timeStamping\nsubjectKeyIdentifier=hash",
        "root");
    write("tsa.conf",
        "[tsa]\ndefault_tsa=t\n[t]\nserial=tsa.serial\ncrypto_device=builtin\nsigner_cert=tsa.pem\ncerts=root.pem\n"
        "signer_key=tsa.key.pem\nsigner_digest=sha256\ndefault_policy=1.2.3.4\ndigests=sha256\nordering=yes\n"
        "tsa_name=yes\ness_cert_id_chain=no\n");
    write("tsa.serial", "01\n");
    const auto tokenFor = [&](const std::string& bytes) {
        write("stamped", bytes);
        run("openssl ts -query -data stamped -sha256 -cert -out query && openssl ts -reply -config tsa.conf "
            "-queryfile "
            "query -token_out -out token");
        return read("token");
    };
    for (const bool detached : {false, true}) {
        write("content", sealedContent);
        run("openssl cms -sign -binary -outform DER -in content -out message -signer rsa.pem -inkey "
            "rsa.key.pem" +
            std::string(detached ? "" : " -nodetach"));
        ByteString message(toolkit, read("message"));
        ByteString data(toolkit, detached ? sealedContent : "");
        ByteString token(toolkit);
        ASSERT_EQ(toolkit("CMS_ProcessSignedData2", message.get(), data.get(), nullptr), 0);
        EXPECT_EQ(toolkit("CMS_GetTimeStampToken", 0, token.get()), SIGIL_TK_CMS_ATTRIBUTE);
        EXPECT_EQ(toolkit("CMS_GetTimeStampToken", 1, token.get()), SIGIL_TK_CMS_NOBODY);
        ByteString signature(toolkit);
        ASSERT_EQ(toolkit("CMS_GetTBTData", 0, signature.get()), 0);

        ByteString stamp(toolkit, tokenFor(signature.bytes()));
        ByteString stamped(toolkit);
        for (const int nobody : {-1, 1})
            EXPECT_EQ(toolkit("CMS_SetTimeStampToken", message.get(), nobody, stamp.get(), stamped.get()),
                SIGIL_TK_CMS_NOBODY);
        ASSERT_EQ(toolkit("CMS_SetTimeStampToken", message.get(), 0, stamp.get(), stamped.get()), 0)
            << toolkit.errorText();
        ByteString again(toolkit, detached ? sealedContent : "");
        ASSERT_EQ(toolkit("CMS_ProcessSignedData2", stamped.get(), again.get(), nullptr), 0) << toolkit.errorText();
        ASSERT_EQ(toolkit("CMS_GetTimeStampToken", 0, token.get()), 0);
        EXPECT_EQ(token.bytes(), stamp.bytes());
        write("message", stamped.bytes());
        run("openssl cms -verify -inform DER -in message -CAfile root.pem -binary -out read -content content");

        ByteString later(toolkit, tokenFor(signature.bytes()));
        ByteString restamped(toolkit);
        ASSERT_EQ(toolkit("CMS_SetTimeStampToken", stamped.get(), 0, later.get(), restamped.get()), 0);
        ByteString last(toolkit, detached ? sealedContent : "");
        ASSERT_EQ(toolkit("CMS_ProcessSignedData2", restamped.get(), last.get(), nullptr), 0);
        ByteString second(toolkit);
        ASSERT_EQ(toolkit("CMS_GetTimeStampToken", 0, second.get()), 0) << "in place of the first";
        EXPECT_EQ(second.bytes(), later.bytes());

        ByteString other(toolkit, tokenFor("something else"));
        ByteString out(toolkit);
        EXPECT_EQ(toolkit("CMS_SetTimeStampToken", message.get(), 0, other.get(), out.get()), SIGIL_TK_TSP_IMPRINT);
        EXPECT_EQ(
            toolkit("CMS_SetTimeStampToken", message.get(), 0, message.get(), out.get()), SIGIL_TK_TSP_MALFORMED);
        EXPECT_TRUE(out.empty());
    }
}

TEST_P(SealedMessages, MessagesOfAnyKind)
{
    if (!hvtk()) {
        EXPECT_FALSE(toolkit.has("UNI_VerifySignData"));
        return;
    }
    write("content", sealedContent);
    run("openssl cms -sign -binary -nodetach -outform DER -in content -out message -signer rsa.pem -inkey "
        "rsa.key.pem");
    ByteString message(toolkit, read("message"));
    ByteString data(toolkit);
    ByteString signer(toolkit);
    ASSERT_EQ(toolkit("UNI_VerifySignData", message.get(), data.get(), signer.get()), 0) << toolkit.errorText();
    EXPECT_EQ(data.bytes(), sealedContent);
    EXPECT_EQ(signer.bytes(), file("rsa.crt"));

    ByteString certificate(toolkit, file("other.crt"));
    ByteString key(toolkit, file("other.key"));
    ByteString sealed(toolkit, seal("rsa", "other"));
    ByteString opened(toolkit);
    ASSERT_EQ(toolkit("UNI_DecryptEnvData", certificate.get(), key.get(), sealed.get(), opened.get()), 0);
    ByteString again(toolkit);
    ByteString by(toolkit);
    EXPECT_EQ(toolkit("UNI_VerifySignData", opened.get(), again.get(), by.get()), 0) << "it is the signed message";
    EXPECT_EQ(again.bytes(), sealedContent);
    EXPECT_EQ(toolkit("UNI_DecryptEnvData", certificate.get(), key.get(), message.get(), opened.get()),
        SIGIL_TK_CMS_TYPE);
}

TEST_P(SealedMessages, OptionsAreFollowedOrRefused)
{
    if (!hvtk()) {
        EXPECT_FALSE(toolkit.has("CMS_SetOption"));
        return;
    }
    EXPECT_EQ(unseal("other", seal("rsa", "other", SIGIL_TK_ENVELOPE_KEY_ID)), "CN = rsa: " + sealedContent);
    EXPECT_EQ(seal("rsa", "other", 4), "code 3006");
    EXPECT_EQ(unseal("other", seal("rsa", "other"), 2), "code 3006");
    EXPECT_EQ(unseal("other", seal("rsa", "other"), SIGIL_TK_CHECK_PATHS), "code 3201");
    ASSERT_EQ(toolkit("CMS_SetOption", static_cast<int>(SIGIL_TK_MESSAGE_DETACHED)), 0);
    EXPECT_EQ(seal("rsa", "other"), "code 3006") << "the content would be nowhere";
}
