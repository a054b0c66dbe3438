// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Enveloped and encrypted messages in memory, against other programs: openssl cms, NSS's cmsutil.

#include "tests/toolkit/messages.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>

using namespace toolkit_test;

namespace {

class EnvelopedMessages : public FaceMessages { };
/** What only one face has. */
class HvtkEnvelopedMessages : public FaceMessages { };
class GpkiEnvelopedMessages : public FaceMessages { };

} // namespace

INSTANTIATE_TEST_SUITE_P(Faces, EnvelopedMessages, testing::Values("HVTK_", "GPKI_"), faceName);
INSTANTIATE_TEST_SUITE_P(Faces, HvtkEnvelopedMessages, testing::Values("HVTK_"), faceName);
INSTANTIATE_TEST_SUITE_P(Faces, GpkiEnvelopedMessages, testing::Values("GPKI_"), faceName);

TEST_P(EnvelopedMessages, EnvelopesAreOpenedByOtherPrograms)
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

TEST_P(EnvelopedMessages, EnvelopesAreOpenedByNss)
{
    makeNssDatabase();
    for (const int cipher : {SIGIL_TK_CIPHER_3DES, SIGIL_TK_CIPHER_AES128, SIGIL_TK_CIPHER_AES256}) {
        write("message", envelope("rsa", cipher));
        run("cmsutil -D -d nss -i message -o read");
        EXPECT_EQ(read("read"), content) << cipher;
    }
}

TEST_P(EnvelopedMessages, EnvelopesOfOtherProgramsAreOpened)
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

TEST_P(EnvelopedMessages, SeveralRecipientsOpenOneEnvelope)
{
    const std::string message = envelope("rsa ec other", SIGIL_TK_CIPHER_ARIA128);
    for (const std::string recipient : {"rsa", "ec", "other"})
        EXPECT_EQ(opened(recipient, message), content) << recipient << toolkit.errorText();
    EXPECT_EQ(opened("root", message), "code 3902");
    write("message", message);
    run("openssl cms -cmsout -print -inform DER -in message");
    EXPECT_THAT(read("output.txt"), testing::HasSubstr("dhSinglePass-stdDH-sha256kdf-scheme"));
}

TEST_P(EnvelopedMessages, AWrongKeyLooksLikeAWrongPadding)
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

TEST_P(EnvelopedMessages, EncryptedDataIsSharedWithOpenssl)
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

TEST_P(EnvelopedMessages, WrongArgumentsAreRefused)
{
    if (hvtk()) {
        EXPECT_EQ(envelope("rsa", 0, 2), "code 3006");
    }
    EXPECT_EQ(opened("rsa", ""), "code 3000");
}

TEST_P(HvtkEnvelopedMessages, RecipientsAreNamedByKeyIdentifier)
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

TEST_P(HvtkEnvelopedMessages, OaepIsUsedWhenItIsSet)
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

TEST_P(HvtkEnvelopedMessages, RecipientsAreListed)
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

TEST_P(HvtkEnvelopedMessages, RecipientsWithoutAnIssuerAreToldByTheirKey)
{
    write("content", content);
    run("openssl cms -encrypt -binary -aes128 -outform DER -in content -out message -keyid -recip rsa.pem "
        "-pwri_password secret");
    ByteString message(toolkit, read("message"));
    int count = 0;
    ASSERT_EQ(toolkit("CMS_GetEnvDataRecipCnt", message.get(), &count), 0);
    std::array<char, 200> issuer{"x"};
    std::array<char, 200> serial{};
    std::array<char, 200> algorithm{};
    ASSERT_EQ(toolkit("CMS_GetEnvDataRecipInfo", 0, 200, issuer.data(), serial.data(), algorithm.data()), 0);
    EXPECT_STREQ(issuer.data(), "");
    EXPECT_EQ(std::string(serial.data()).size(), 40U);
    EXPECT_STREQ(algorithm.data(), "rsaEncryption");
    EXPECT_EQ(opened("rsa", read("message")), content);
    EXPECT_EQ(opened("other", read("message")), "code 3902");
    EXPECT_EQ(toolkit("CMS_GetEnvDataRecipInfo", -1, 200, issuer.data(), serial.data(), algorithm.data()),
        SIGIL_TK_CMS_NOBODY);
    for (const int missing : {0, 1, 2})
        EXPECT_EQ(toolkit("CMS_GetEnvDataRecipInfo", 0, 200, missing == 0 ? nullptr : issuer.data(),
                      missing == 1 ? nullptr : serial.data(), missing == 2 ? nullptr : algorithm.data()),
            SIGIL_TK_ARGUMENT)
            << missing;
}

TEST_P(HvtkEnvelopedMessages, ARawKeyEncrypts)
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
    setSessionKey(SIGIL_TK_CIPHER_SEED);
    ByteString none(toolkit);
    ByteString other(toolkit);
    ASSERT_EQ(toolkit("CMS_EncryptData", 0, none.get(), data.get(), static_cast<int>(SIGIL_TK_CIPHER_ARIA128),
                  other.get()),
        0)
        << "the session's key, with another cipher";
    EXPECT_EQ(decrypted(other.bytes(), fromHex(sessionKeyHex)), content);
}

TEST_P(GpkiEnvelopedMessages, TheSessionKeyDecryptsWhateverKeyIsGiven)
{
    setSessionKey(SIGIL_TK_CIPHER_SEED);
    const std::string message = encrypted(content);
    EXPECT_EQ(decrypted(message, "anything"), content);
    ASSERT_EQ(toolkit("CRYPT_ClearKeyAndIV"), 0);
    EXPECT_EQ(decrypted(message, fromHex(sessionKeyHex)), "code 3401");
}
