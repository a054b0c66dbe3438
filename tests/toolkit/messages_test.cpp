// Messages in memory against other programs: openssl cms, GnuTLS's certtool, NSS's cmsutil, Bouncy Castle.

#include "tests/toolkit/messages.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>

using namespace toolkit_test;

namespace {

const std::string content = "the content\r\nof a message\n";

class Messages : public MessageTest, public testing::WithParamInterface<const char*> {
protected:
    Messages()
        : MessageTest(GetParam())
    {
    }
    /** Signs; option 0 is all that the other face has. */
    std::string sign(const std::string& signer, int option = 0, const std::string& what = content)
    {
        return make([&](BINSTR* out) {
            ByteString certificate(toolkit, file(signer + ".crt"));
            ByteString key(toolkit, file(signer + ".key"));
            ByteString bytes(toolkit, what);
            return hvtk()
                ? toolkit("CMS_MakeSignedData", option, certificate.get(), key.get(), bytes.get(), text(time), out)
                : toolkit("CMS_MakeSignedData", certificate.get(), key.get(), bytes.get(), text(time), out);
        });
    }
    std::string addSigner(const std::string& signer, const std::string& message, int option = 0)
    {
        return make([&](BINSTR* out) {
            ByteString certificate(toolkit, file(signer + ".crt"));
            ByteString key(toolkit, file(signer + ".key"));
            ByteString bytes(toolkit, message);
            return hvtk() ? toolkit("CMS_MakeSignedDataWithAddSigner", option, certificate.get(), key.get(),
                                bytes.get(), text(time), out)
                          : toolkit("CMS_MakeSignedDataWithAddSigner", certificate.get(), key.get(), bytes.get(),
                                text(time), out);
        });
    }
    int process(const std::string& message, ByteString& data, int option = 0, int* count = nullptr)
    {
        int ignored = 0;
        ByteString bytes(toolkit, message);
        int* const out = count ? count : &ignored;
        return hvtk() ? toolkit("CMS_ProcessSignedData", option, bytes.get(), data.get(), out)
                      : toolkit("CMS_ProcessSignedData2", bytes.get(), data.get(), out);
    }
    /** The content, or "code N". */
    std::string processed(const std::string& message, const std::string& detached = {})
    {
        ByteString data(toolkit, detached);
        const int code = process(message, data);
        return code == 0 ? data.bytes() : "code " + std::to_string(code);
    }
    std::string getter() const { return hvtk() ? "CMS_GetSignerCert" : "CMS_GetSigner"; }
    std::string signerSubject(int index)
    {
        ByteString certificate(toolkit);
        std::array<char, 25> when{};
        if (const int code = toolkit(getter(), index, certificate.get(), when.data()))
            return "code " + std::to_string(code);
        write("got.crt", certificate.bytes());
        return nameOf("got.crt") + " " + when.data();
    }
    std::string envelope(
        const std::string& recipients, int cipher, int option = 0, const std::string& what = content)
    {
        return make([&](BINSTR* out) {
            ByteString bytes(toolkit, what);
            const bool several = recipients.find(' ') != std::string::npos;
            ByteString certificates(toolkit, several ? listOf(recipients) : file(recipients + ".crt"));
            const std::string name = several ? "CMS_MakeEnvelopedDataWithMultiRecipients" : "CMS_MakeEnvelopedData";
            return hvtk() ? toolkit(name, option, certificates.get(), bytes.get(), cipher, out)
                          : toolkit(name, certificates.get(), bytes.get(), cipher, out);
        });
    }
    std::string opened(const std::string& recipient, const std::string& message)
    {
        return make([&](BINSTR* out) {
            ByteString certificate(toolkit, file(recipient + ".crt"));
            ByteString key(toolkit, file(recipient + ".key"));
            ByteString bytes(toolkit, message);
            return toolkit("CMS_ProcessEnvelopedData", certificate.get(), key.get(), bytes.get(), out);
        });
    }
    void setSessionKey(int cipher)
    {
        ByteString key(toolkit, fromHex(sessionKeyHex));
        ByteString vector(toolkit, std::string(16, 'v'));
        ASSERT_EQ(toolkit("CRYPT_SetKeyAndIV", cipher, key.get(), vector.get()), 0) << toolkit.errorText();
    }
    /** Under the session key: all that the other face has. */
    std::string encrypted(const std::string& what)
    {
        return make([&](BINSTR* out) {
            ByteString bytes(toolkit, what);
            ByteString none(toolkit);
            return hvtk() ? toolkit("CMS_EncryptData", 0, none.get(), bytes.get(), 0, out)
                          : toolkit("CMS_MakeEncryptedData", bytes.get(), out);
        });
    }
    std::string decrypted(const std::string& message, const std::string& key)
    {
        return make([&](BINSTR* out) {
            ByteString bytes(toolkit, message);
            ByteString raw(toolkit, key);
            return toolkit("CMS_ProcessEncryptedData", raw.get(), bytes.get(), out);
        });
    }

    std::string time = "2026-01-02 03:04:05";
    const std::string sessionKeyHex = "000102030405060708090a0b0c0d0e0f";
};

std::string faceName(const testing::TestParamInfo<const char*>& face) { return std::string(face.param, 4); }

} // namespace

INSTANTIATE_TEST_SUITE_P(Faces, Messages, testing::Values("HVTK_", "GPKI_"), faceName);

TEST_P(Messages, AnAttachedMessageIsReadByOtherPrograms)
{
    for (const std::string signer : {"rsa", "ec"}) {
        write("message", sign(signer));
        run("openssl cms -verify -inform DER -in message -CAfile root.pem -binary -out read");
        EXPECT_EQ(read("read"), content) << signer;
        run("certtool --p7-verify --inder --infile message --load-ca-certificate root.pem");
        run("certtool --p7-info --p7-show-data --inder --infile message --outfile read");
        EXPECT_THAT(read("read"), testing::HasSubstr("the content")) << signer;
        run("openssl cms -cmsout -print -inform DER -in message");
        EXPECT_THAT(read("output.txt"),
            testing::AllOf(testing::HasSubstr("version: 1"), testing::HasSubstr("issuerAndSerialNumber"),
                testing::Not(testing::HasSubstr("S/MIME Capabilities"))));
    }
}

TEST_P(Messages, AnAttachedMessageIsReadByNss)
{
    makeNssDatabase();
    time.clear(); // it verifies the certificate at the signing time
    for (const std::string signer : {"rsa", "ec"}) {
        write("message", sign(signer));
        run("cmsutil -D -d nss -i message -o read");
        EXPECT_EQ(read("read"), content) << signer;
    }
}

TEST_P(Messages, MessagesOfOtherProgramsAreRead)
{
    for (const std::string signer : {"rsa", "ec"}) {
        const std::string by = " -signer " + signer + ".pem -inkey " + signer + ".key.pem ";
        write("content", content);
        for (const std::string options : {"", "-noattr", "-keyid", "-md sha512", "-stream -indef",
                 "-certfile root.pem", "-econtent_type 1.2.3.4", "-keyopt rsa_padding_mode:pss"}) {
            if (signer == "ec" && options.starts_with("-keyopt"))
                continue;
            run("openssl cms -sign -binary -nodetach -outform DER -in content -out message" + by + options);
            EXPECT_EQ(processed(read("message")), content) << signer << options << toolkit.errorText();
        }
        run("certtool --p7-sign --load-certificate " + signer + ".pem --load-privkey " + signer +
            ".key.pem --infile content --outder --outfile message --p7-time");
        EXPECT_EQ(processed(read("message")), content) << signer << toolkit.errorText();
    }
}

TEST_P(Messages, MessagesOfNssAreRead)
{
    makeNssDatabase();
    write("content", content);
    run("cmsutil -S -d nss -N rsa -G -i content -o message");
    EXPECT_EQ(processed(read("message")), content) << toolkit.errorText();
    run("cmsutil -S -d nss -N rsa -T -i content -o message");
    EXPECT_EQ(processed(read("message"), content), content) << toolkit.errorText();
}

TEST_P(Messages, HashAndSchemeOfTheContextAreUsed)
{
    ASSERT_EQ(toolkit("API_SetHashAlgo", static_cast<int>(SIGIL_TK_HASH_SHA512)), 0);
    if (hvtk()) {
        ASSERT_EQ(toolkit("CRYPT_SetRSAVersion", static_cast<int>(SIGIL_TK_RSA_PSS)), 0);
    }
    for (const std::string signer : {"rsa", "ec"}) {
        write("message", sign(signer));
        run("openssl cms -verify -inform DER -in message -CAfile root.pem -binary -out read");
        run("openssl cms -cmsout -print -inform DER -in message");
        EXPECT_THAT(read("output.txt"), testing::HasSubstr("sha512"));
        if (hvtk() && signer == "rsa") {
            EXPECT_THAT(read("output.txt"), testing::HasSubstr("rsassaPss"));
        }
        EXPECT_EQ(processed(read("message")), content);
    }
}

TEST_P(Messages, TheSigningTimeIsWritten)
{
    ASSERT_EQ(processed(sign("rsa")), content);
    EXPECT_EQ(signerSubject(0), "CN = rsa 2026-01-02 03:04:05");
    time.clear();
    ASSERT_EQ(processed(sign("rsa")), content);
    EXPECT_THAT(signerSubject(0), testing::StartsWith("CN = rsa 20"));
    time = "yesterday";
    EXPECT_EQ(sign("rsa"), "code 3007");
}

TEST_P(Messages, SignersAreAdded)
{
    const std::string one = sign("rsa");
    time = "2026-05-06 07:08:09";
    const std::string two = addSigner("ec", one);
    write("message", two);
    run("openssl cms -verify -inform DER -in message -CAfile root.pem -binary -out read");
    int count = 0;
    ByteString data(toolkit);
    ASSERT_EQ(process(two, data, 0, &count), 0) << toolkit.errorText();
    EXPECT_EQ(data.bytes(), content);
    EXPECT_EQ(count, 2);
    EXPECT_THAT((std::array{signerSubject(0), signerSubject(1)}),
        testing::UnorderedElementsAre("CN = rsa 2026-01-02 03:04:05", "CN = ec 2026-05-06 07:08:09"));
    EXPECT_EQ(signerSubject(2), "code 3902");
    EXPECT_EQ(signerSubject(-1), "code 3902");
    // What was there stays, byte for byte.
    for (const std::string& kept : {content, file("rsa.crt"), signatureIn(one)})
        EXPECT_THAT(two, testing::HasSubstr(kept));
    const std::string three = addSigner("other", two);
    EXPECT_EQ(processed(three), content);
    EXPECT_EQ(addSigner("rsa", "no message"), "code 3900");
}

TEST_P(Messages, ASignerIsAddedToADetachedMessageWithTheSameHash)
{
    write("content", content);
    run("openssl cms -sign -binary -outform DER -md sha256 -in content -out message -signer rsa.pem -inkey "
        "rsa.key.pem");
    const std::string two = addSigner("ec", read("message"));
    EXPECT_EQ(processed(two, content), content) << toolkit.errorText();
    run("openssl cms -sign -binary -outform DER -md sha512 -in content -out message -signer rsa.pem -inkey "
        "rsa.key.pem");
    EXPECT_EQ(addSigner("ec", read("message")), "code 3901");
}

TEST_P(Messages, BeforeAnyMessageThereIsNoSigner)
{
    EXPECT_EQ(signerSubject(0), "code 3902");
    ASSERT_EQ(processed(sign("rsa")), content);
    EXPECT_EQ(processed("no message"), "code 3900");
    EXPECT_EQ(signerSubject(0), "code 3902") << "of the message before";
}

TEST_P(Messages, ADetachedMessageNeedsItsContent)
{
    write("content", content);
    for (const std::string options : {"", "-noattr"}) {
        run("openssl cms -sign -binary -outform DER -in content -out message -signer rsa.pem -inkey rsa.key.pem " +
            options);
        EXPECT_EQ(processed(read("message"), content), content);
        EXPECT_EQ(processed(read("message"), content + "x"), "code 3901") << options;
        EXPECT_EQ(processed(read("message")), "code 3901") << options;
    }
}

TEST_P(Messages, AWrongSignatureOrAMissingCertificateIsTold)
{
    std::string message = sign("rsa");
    const std::string signature = signatureIn(message);
    std::string wrong = signature;
    wrong[5] = static_cast<char>(wrong[5] ^ 1);
    EXPECT_EQ(processed(message.replace(message.find(signature), signature.size(), wrong)), "code 3403");
    write("content", content);
    run("openssl cms -sign -binary -nodetach -nocerts -outform DER -in content -out message -signer rsa.pem -inkey "
        "rsa.key.pem");
    EXPECT_EQ(processed(read("message")), "code 3902");
    run("openssl crl2pkcs7 -nocrl -certfile rsa.pem -outform DER -out message");
    EXPECT_EQ(processed(read("message"), content), "code 3902") << "nobody signed it";
    EXPECT_EQ(processed(envelope("rsa", 0)), "code 3904");
}

TEST_P(Messages, AKeyOfAnotherCertificateDoesNotSign)
{
    ByteString certificate(toolkit, file("rsa.crt"));
    ByteString key(toolkit, file("ec.key"));
    ByteString data(toolkit, content);
    ByteString out(toolkit);
    const int code = hvtk()
        ? toolkit("CMS_MakeSignedData", 0, certificate.get(), key.get(), data.get(), text(time), out.get())
        : toolkit("CMS_MakeSignedData", certificate.get(), key.get(), data.get(), text(time), out.get());
    EXPECT_EQ(code, SIGIL_TK_KEY_MISMATCH);
    EXPECT_TRUE(out.empty());
}

TEST_P(Messages, EnvelopesAreOpenedByOtherPrograms)
{
    for (const std::string recipient : {"rsa", "ec"}) {
        for (int cipher = 0; cipher <= SIGIL_TK_CIPHER_ARIA256; ++cipher) {
            write("message", envelope(recipient, cipher));
            run("openssl cms -decrypt -provider default -provider legacy -inform DER -in message -recip " +
                recipient + ".pem -inkey " + recipient + ".key.pem -binary -out read");
            EXPECT_EQ(read("read"), content) << recipient << " cipher " << cipher;
            EXPECT_EQ(opened(recipient, read("message")), content) << recipient << " cipher " << cipher;
        }
    }
    EXPECT_EQ(envelope("rsa", 99), "code 3400");
    EXPECT_EQ(opened("other", envelope("rsa", 0)), "code 3902");
    EXPECT_EQ(opened("rsa", sign("rsa")), "code 3904");
}

TEST_P(Messages, EnvelopesAreOpenedByNss)
{
    makeNssDatabase();
    for (const int cipher : {SIGIL_TK_CIPHER_3DES, SIGIL_TK_CIPHER_AES128, SIGIL_TK_CIPHER_AES256}) {
        write("message", envelope("rsa", cipher));
        run("cmsutil -D -d nss -i message -o read");
        EXPECT_EQ(read("read"), content) << cipher;
    }
}

TEST_P(Messages, EnvelopesOfOtherProgramsAreOpened)
{
    write("content", content);
    for (const std::string recipient : {"rsa", "ec"}) {
        for (const std::string options : {"-aes256", "-des3", "-seed", "-aria-192-cbc", "-keyid -aes128",
                 "-stream -indef -aes256", "-recip rsa.pem -keyopt rsa_padding_mode:oaep -aes128",
                 "-recip rsa.pem -keyopt rsa_padding_mode:oaep -keyopt rsa_oaep_md:sha256 -aes128"}) {
            const bool key = options.find("-keyopt") != std::string::npos;
            if (key && recipient == "ec")
                continue;
            run("openssl cms -encrypt -provider default -provider legacy -binary -outform DER -in content -out "
                "message " +
                options + (key ? "" : " -recip " + recipient + ".pem"));
            EXPECT_EQ(opened(recipient, read("message")), content) << recipient << options << toolkit.errorText();
        }
    }
    makeNssDatabase();
    run("cmsutil -E -d nss -r rsa@example -i content -o message");
    EXPECT_EQ(opened("rsa", read("message")), content) << toolkit.errorText();
}

TEST_P(Messages, SeveralRecipientsOpenOneEnvelope)
{
    const std::string message = envelope("rsa ec other", SIGIL_TK_CIPHER_ARIA128);
    for (const std::string recipient : {"rsa", "ec", "other"})
        EXPECT_EQ(opened(recipient, message), content) << recipient << toolkit.errorText();
    EXPECT_EQ(opened("root", message), "code 3902");
    write("message", message);
    run("openssl cms -cmsout -print -inform DER -in message");
    EXPECT_THAT(read("output.txt"), testing::HasSubstr("dhSinglePass-stdDH-sha256kdf-scheme"));
}

TEST_P(Messages, AWrongKeyLooksLikeAWrongPadding)
{
    const std::string message = envelope("rsa", SIGIL_TK_CIPHER_AES128);
    const std::string encryptedKey = octetsIn(message, 256);
    ASSERT_EQ(encryptedKey.size(), 256U);
    std::string texts;
    for (const unsigned char flip : {1, 2, 4, 8, 16, 32}) {
        std::string changed = message;
        const std::size_t at = changed.find(encryptedKey) + 100 + flip;
        changed[at] = static_cast<char>(changed[at] ^ flip);
        const std::string result = opened("rsa", changed);
        // One padding in 256 is right by chance; then the content is other bytes.
        EXPECT_TRUE(result == "code 3402" || (!result.starts_with("code") && result != content)) << result;
        if (result == "code 3402")
            texts = toolkit.errorText();
    }
    std::string changed = message;
    changed.back() = static_cast<char>(changed.back() ^ 1);
    const std::string result = opened("rsa", changed);
    if (result == "code 3402") {
        EXPECT_EQ(toolkit.errorText(), texts) << "the text tells no more than the code";
    }
}

TEST_P(Messages, EncryptedDataIsSharedWithOpenssl)
{
    EXPECT_EQ(encrypted(content), "code 3401");
    for (const int cipher : {SIGIL_TK_CIPHER_SEED, SIGIL_TK_CIPHER_AES128, SIGIL_TK_CIPHER_ARIA128}) {
        setSessionKey(cipher);
        write("message", encrypted(content));
        run("openssl cms -EncryptedData_decrypt -provider default -provider legacy -inform DER -in message "
            "-secretkey " +
            sessionKeyHex + " -binary -out read");
        EXPECT_EQ(read("read"), content) << cipher;
        EXPECT_EQ(decrypted(read("message"), fromHex(sessionKeyHex)), content);
    }
    write("content", content);
    run("openssl cms -EncryptedData_encrypt -aes128 -outform DER -in content -secretkey " + sessionKeyHex +
        " -binary -out message");
    EXPECT_EQ(decrypted(read("message"), fromHex(sessionKeyHex)), content);
    EXPECT_EQ(decrypted(envelope("rsa", 0), fromHex(sessionKeyHex)), "code 3904");
}

TEST_P(Messages, WrongArgumentsAreRefused)
{
    ByteString none(toolkit);
    ByteString out(toolkit);
    if (hvtk()) {
        EXPECT_EQ(toolkit("CMS_ProcessSignedData", 0, none.get(), out.get(), nullptr), SIGIL_TK_ARGUMENT);
        EXPECT_EQ(toolkit("CMS_ProcessSignedData", 2, none.get(), out.get(), nullptr), SIGIL_TK_ARGUMENT);
        ByteString message(toolkit, sign("rsa"));
        EXPECT_EQ(toolkit("CMS_ProcessSignedData", 2, message.get(), out.get(), nullptr), SIGIL_TK_OPTION);
        EXPECT_EQ(sign("rsa", 16), "code 3006");
        EXPECT_EQ(envelope("rsa", 0, 2), "code 3006");
    } else {
        EXPECT_EQ(toolkit("CMS_ProcessSignedData2", none.get(), out.get(), nullptr), SIGIL_TK_ARGUMENT);
    }
    EXPECT_EQ(opened("rsa", ""), "code 3000");
    EXPECT_TRUE(out.empty());
}

namespace {

/** What only one face has. */
class MakerMessages : public Messages { };
class GpkiMessages : public Messages { };

} // namespace

INSTANTIATE_TEST_SUITE_P(Faces, MakerMessages, testing::Values("HVTK_"), faceName);
INSTANTIATE_TEST_SUITE_P(Faces, GpkiMessages, testing::Values("GPKI_"), faceName);

TEST_P(MakerMessages, OptionsShapeTheMessage)
{
    const auto printed = [&](int option) {
        write("message", sign("rsa", option));
        run("openssl cms -cmsout -print -inform DER -in message");
        return read("output.txt");
    };
    EXPECT_THAT(printed(SIGIL_TK_MESSAGE_DETACHED), testing::HasSubstr("eContent: <ABSENT>"));
    EXPECT_EQ(processed(read("message"), content), content);
    EXPECT_THAT(printed(SIGIL_TK_MESSAGE_NO_ATTRIBUTES), testing::Not(testing::HasSubstr("signingTime")));
    EXPECT_EQ(processed(read("message")), content);
    EXPECT_EQ(signerSubject(0), "CN = rsa ") << "no time is said";
    EXPECT_THAT(printed(SIGIL_TK_MESSAGE_NO_CERTIFICATE), testing::Not(testing::HasSubstr("subject:")));
    EXPECT_EQ(processed(read("message")), "code 3902");
    ByteString authorities(toolkit, file("root.crt"));
    ASSERT_EQ(toolkit("CERT_SetCaPubs", authorities.get()), 0);
    EXPECT_THAT(printed(SIGIL_TK_MESSAGE_CA_PUBS), testing::HasSubstr("subject: CN=root"));
    EXPECT_EQ(processed(read("message")), content);
}

TEST_P(MakerMessages, OptionsOfTheContextAreAdded)
{
    EXPECT_EQ(toolkit("CMS_SetOption", 32), SIGIL_TK_OPTION);
    ASSERT_EQ(toolkit("CMS_SetOption", static_cast<int>(SIGIL_TK_MESSAGE_DETACHED)), 0);
    const std::string message = sign("rsa", SIGIL_TK_MESSAGE_NO_ATTRIBUTES);
    EXPECT_EQ(processed(message), "code 3901");
    EXPECT_EQ(processed(message, content), content);
    EXPECT_EQ(addSigner("ec", message), "code 3901") << "no attributes say what was signed";
    ASSERT_EQ(toolkit("CMS_SetOption", 0), 0);
    const std::string attached = sign("rsa");
    EXPECT_EQ(processed(attached), content);
    EXPECT_EQ(addSigner("ec", attached, SIGIL_TK_MESSAGE_DETACHED), "code 3006") << "its content is in it";
    EXPECT_EQ(processed(addSigner("ec", attached, SIGIL_TK_MESSAGE_NO_ATTRIBUTES)), content);
}

TEST_P(MakerMessages, SignersAreVerifiedUnderTheEnvironment)
{
    const std::string message = sign("rsa");
    ByteString data(toolkit);
    EXPECT_EQ(process(message, data, SIGIL_TK_CHECK_PATHS), SIGIL_TK_VERIFY_NO_ISSUER);
    EXPECT_TRUE(data.empty());
    EXPECT_EQ(signerSubject(0), "code 3902");
    ByteString root(toolkit, file("root.crt"));
    ASSERT_EQ(toolkit("CERT_AddTrustedCert", root.get()), 0);
    EXPECT_EQ(process(message, data, SIGIL_TK_CHECK_PATHS), 0) << toolkit.errorText();
    EXPECT_EQ(data.bytes(), content);
    ByteString other(toolkit);
    EXPECT_EQ(process(sign("encipher"), other, SIGIL_TK_CHECK_PATHS), SIGIL_TK_VERIFY_USAGE);
}

TEST_P(MakerMessages, ASignerElsewhereSigns)
{
    for (const std::string signer : {"rsa", "ec"}) {
        for (const int option :
            {SIGIL_TK_MESSAGE_PLAIN, SIGIL_TK_MESSAGE_DETACHED, SIGIL_TK_MESSAGE_NO_CERTIFICATE}) {
            ByteString certificate(toolkit, file(signer + ".crt"));
            ByteString data(toolkit, content);
            ByteString attributes(toolkit);
            ASSERT_EQ(toolkit("CMS_MakeTBSData", static_cast<int>(option), certificate.get(), data.get(),
                          text(time), attributes.get()),
                0)
                << toolkit.errorText();
            EXPECT_EQ(attributes.bytes()[0], '\x31');
            write("attributes", attributes.bytes());
            run("openssl dgst -sha256 -sign " + signer + ".key.pem -out signature attributes");
            ByteString wrong(toolkit, std::string(256, 'x'));
            ByteString message(toolkit);
            EXPECT_EQ(toolkit("CMS_ComposeSignedData", wrong.get(), message.get()), SIGIL_TK_SIGNATURE);
            ByteString signature(toolkit, read("signature"));
            ASSERT_EQ(toolkit("CMS_ComposeSignedData", signature.get(), message.get()), 0) << toolkit.errorText();
            write("message", message.bytes());
            write("content", content);
            run("openssl cms -verify -inform DER -in message -CAfile root.pem -certfile " + signer +
                ".pem -binary -out read" + (option == SIGIL_TK_MESSAGE_DETACHED ? " -content content" : ""));
            EXPECT_EQ(toolkit("CMS_ComposeSignedData", signature.get(), message.get()), SIGIL_TK_CMS_CONTENT)
                << "it was taken";
        }
    }
    ByteString certificate(toolkit, file("rsa.crt"));
    ByteString data(toolkit, content);
    ByteString attributes(toolkit);
    EXPECT_EQ(toolkit("CMS_MakeTBSData", static_cast<int>(SIGIL_TK_MESSAGE_NO_ATTRIBUTES), certificate.get(),
                  data.get(), text(time), attributes.get()),
        SIGIL_TK_OPTION);
}

TEST_P(MakerMessages, RecipientsAreNamedByKeyIdentifier)
{
    for (const std::string recipient : {"rsa", "ec"}) {
        const std::string message = envelope(recipient, 0, SIGIL_TK_ENVELOPE_KEY_ID);
        EXPECT_EQ(opened(recipient, message), content);
        write("message", message);
        run("openssl cms -decrypt -provider default -provider legacy -inform DER -in message -recip " + recipient +
            ".pem -inkey " + recipient + ".key.pem -binary -out read");
        EXPECT_EQ(read("read"), content);
    }
    EXPECT_EQ(envelope("encipher", 0, SIGIL_TK_ENVELOPE_KEY_ID), "code 3006") << "it has no identifier";
}

TEST_P(MakerMessages, OaepIsUsedWhenItIsSet)
{
    ASSERT_EQ(toolkit("CRYPT_SetPaddingType", static_cast<int>(SIGIL_TK_PADDING_OAEP)), 0);
    const std::string message = envelope("rsa ec", SIGIL_TK_CIPHER_AES256);
    write("message", message);
    run("openssl cms -cmsout -print -inform DER -in message");
    EXPECT_THAT(read("output.txt"), testing::HasSubstr("rsaesOaep"));
    run("openssl cms -decrypt -inform DER -in message -recip rsa.pem -inkey rsa.key.pem -binary -out read");
    EXPECT_EQ(read("read"), content);
    EXPECT_EQ(opened("rsa", message), content);
    EXPECT_EQ(opened("ec", message), content);
}

TEST_P(MakerMessages, RecipientsAreListed)
{
    ByteString message(toolkit, envelope("rsa ec", 0));
    int count = 0;
    ASSERT_EQ(toolkit("CMS_GetEnvDataRecipCnt", message.get(), &count), 0);
    ASSERT_EQ(count, 2);
    std::array<char, 200> issuer{};
    std::array<char, 200> serial{};
    std::array<char, 200> algorithm{};
    std::string algorithms;
    for (int i = 0; i < 2; ++i) {
        ASSERT_EQ(toolkit("CMS_GetEnvDataRecipInfo", i, 200, issuer.data(), serial.data(), algorithm.data()), 0);
        EXPECT_STREQ(issuer.data(), "cn=root");
        algorithms += algorithm.data();
    }
    EXPECT_THAT(
        algorithms, testing::AllOf(testing::HasSubstr("rsaEncryption"), testing::HasSubstr("dhSinglePass")));
    EXPECT_EQ(toolkit("CMS_GetEnvDataRecipInfo", 2, 200, issuer.data(), serial.data(), algorithm.data()),
        SIGIL_TK_CMS_NOBODY);
    EXPECT_EQ(toolkit("CMS_GetEnvDataRecipInfo", 0, 5, issuer.data(), serial.data(), algorithm.data()),
        SIGIL_TK_BUFFER_TOO_SMALL);
}

TEST_P(MakerMessages, ARawKeyEncrypts)
{
    const std::string keyHex = sessionKeyHex + sessionKeyHex;
    ByteString key(toolkit, fromHex(keyHex));
    ByteString data(toolkit, content);
    ByteString message(toolkit);
    ASSERT_EQ(toolkit("CMS_EncryptData", 0, key.get(), data.get(), static_cast<int>(SIGIL_TK_CIPHER_ARIA256),
                  message.get()),
        0);
    EXPECT_EQ(decrypted(message.bytes(), fromHex(keyHex)), content);
    EXPECT_EQ(decrypted(message.bytes(), std::string(32, 'x')), "code 3402");
    EXPECT_EQ(
        toolkit("CMS_EncryptData", 0, key.get(), data.get(), static_cast<int>(SIGIL_TK_CIPHER_SEED), message.get()),
        SIGIL_TK_ALGORITHM);
    EXPECT_EQ(toolkit("CMS_EncryptData", 1, key.get(), data.get(), 0, message.get()), SIGIL_TK_OPTION);
}

TEST_P(GpkiMessages, TheSessionKeyDecryptsWhateverKeyIsGiven)
{
    setSessionKey(SIGIL_TK_CIPHER_SEED);
    const std::string message = encrypted(content);
    EXPECT_EQ(decrypted(message, "anything"), content);
    ASSERT_EQ(toolkit("CRYPT_ClearKeyAndIV"), 0);
    EXPECT_EQ(decrypted(message, fromHex(sessionKeyHex)), "code 3401");
}

TEST_P(GpkiMessages, OtherCertificatesAndSignatureAreHandedOut)
{
    ByteString list(toolkit);
    EXPECT_EQ(toolkit("CMS_GetSignerCaPubs", list.get()), SIGIL_TK_CMS_NOBODY);
    EXPECT_EQ(toolkit("CMS_GetTBTData", 0, list.get()), SIGIL_TK_CMS_NOBODY);
    write("content", content);
    run("openssl cms -sign -binary -nodetach -outform DER -in content -out message -signer rsa.pem -inkey "
        "rsa.key.pem "
        "-certfile root.pem");
    ByteString data(toolkit);
    ASSERT_EQ(process(read("message"), data), 0);
    ASSERT_EQ(toolkit("CMS_GetSignerCaPubs", list.get()), 0);
    EXPECT_THAT(list.bytes(),
        testing::AllOf(testing::HasSubstr(file("root.crt")), testing::Not(testing::HasSubstr(file("rsa.crt")))));
    ByteString signature(toolkit);
    ASSERT_EQ(toolkit("CMS_GetTBTData", 0, signature.get()), 0);
    EXPECT_EQ(signature.bytes(), signatureIn(read("message")));
    EXPECT_EQ(toolkit("CMS_GetTBTData", 1, signature.get()), SIGIL_TK_CMS_NOBODY);
}

TEST_P(GpkiMessages, TheOlderFormHandsOutTheFirstSigner)
{
    ByteString message(toolkit, sign("rsa"));
    ByteString data(toolkit);
    ByteString certificate(toolkit);
    std::array<char, 25> when{};
    ASSERT_EQ(toolkit("CMS_ProcessSignedData", message.get(), data.get(), certificate.get(), when.data()), 0);
    EXPECT_EQ(data.bytes(), content);
    EXPECT_EQ(certificate.bytes(), file("rsa.crt"));
    EXPECT_EQ(std::string(when.data()), time);
}
