// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Messages of every shape between this toolkit and others: openssl cms, GnuTLS's certtool, NSS's cmsutil.

#include "tests/toolkit/messages.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace toolkit_test;

namespace {

class MessageExchange : public FaceMessages {
protected:
    MessageExchange()
    {
        makeNssDatabase();
        write("content", content);
        time.clear(); // NSS verifies certificates at the signing time
    }

    /** Every other program verifies a message. @param detached whether it needs the content */
    static void expectVerified(
        const std::string& message, bool detached, const std::string& which, bool nssKnowsIt = true)
    {
        SCOPED_TRACE(which);
        write("message", message);
        run("openssl cms -verify -inform DER -in message -CAfile root.pem -binary -out read" +
            std::string(detached ? " -content content" : ""));
        EXPECT_EQ(read("read"), content);
        run("certtool --p7-verify --inder --infile message --load-ca-certificate root.pem" +
            std::string(detached ? " --load-data content" : ""));
        if (!nssKnowsIt)
            return;
        run("cmsutil -D -d nss -i message -o read" + std::string(detached ? " -c content" : ""));
        EXPECT_EQ(read("read"), content);
    }
    /** The message of a signer that signs elsewhere. */
    std::string composed(const std::string& signer, int option)
    {
        ByteString certificate(toolkit, file(signer + ".crt"));
        ByteString data(toolkit, content);
        ByteString attributes(toolkit);
        EXPECT_EQ(
            toolkit("CMS_MakeTBSData", option, certificate.get(), data.get(), text(time), attributes.get()), 0)
            << toolkit.errorText();
        write("attributes", attributes.bytes());
        run("openssl dgst -sha256 -sign " + signer + ".key.pem -out signature attributes");
        return make([&](BINSTR* out) {
            ByteString signature(toolkit, read("signature"));
            return toolkit("CMS_ComposeSignedData", signature.get(), out);
        });
    }
};

std::string keyOf(const std::string& name) { return name + ".pem -inkey " + name + ".key.pem"; }

} // namespace

INSTANTIATE_TEST_SUITE_P(Faces, MessageExchange, testing::Values("HVTK_"), faceName);

// NSS refuses RSASSA-PSS without signed attributes, that of openssl too.
TEST_P(MessageExchange, SignedHereIsVerifiedElsewhere)
{
    for (const int version : {SIGIL_TK_RSA_V15, SIGIL_TK_RSA_PSS}) {
        ASSERT_EQ(toolkit("CRYPT_SetRSAVersion", version), 0);
        for (const std::string signer : {"rsa", "ec"})
            for (int option = 0; option <= (SIGIL_TK_MESSAGE_DETACHED | SIGIL_TK_MESSAGE_NO_ATTRIBUTES); ++option)
                expectVerified(sign(signer, option), (option & SIGIL_TK_MESSAGE_DETACHED) != 0,
                    signer + " option " + std::to_string(option) + " version " + std::to_string(version),
                    version == SIGIL_TK_RSA_V15 || (option & SIGIL_TK_MESSAGE_NO_ATTRIBUTES) == 0 ||
                        signer == "ec");
    }
}

TEST_P(MessageExchange, SeveralSignersAndSignersElsewhereToo)
{
    for (const int option : {SIGIL_TK_MESSAGE_PLAIN, SIGIL_TK_MESSAGE_DETACHED}) {
        const bool detached = option == SIGIL_TK_MESSAGE_DETACHED;
        expectVerified(addSigner("ec", sign("rsa", option)), detached, "two signers");
        for (const std::string signer : {"rsa", "ec"}) {
            const std::string alone = composed(signer, option);
            expectVerified(alone, detached, signer + " elsewhere");
            expectVerified(addSigner("other", alone), detached, signer + " elsewhere, and one here");
        }
    }
}

TEST_P(MessageExchange, SignedElsewhereIsVerifiedHere)
{
    const auto verified = [&](const std::string& command, bool detached) {
        run(command);
        EXPECT_EQ(processed(read("message"), detached ? content : ""), content) << command << toolkit.errorText();
        if (detached) {
            EXPECT_EQ(processed(read("message"), "other"), "code 3901") << command;
        }
    };
    for (const std::string signer : {"rsa", "ec"}) {
        const std::string own = " --load-certificate " + signer + ".pem --load-privkey " + signer +
            ".key.pem --infile content --outder --outfile message";
        for (const std::string times : {"", " --p7-time"}) {
            verified("certtool --p7-sign" + own + times, false);
            verified("certtool --p7-detached-sign" + own + times, true);
        }
        for (const std::string options : {"", " -G", " -P"})
            for (const bool detached : {false, true})
                verified(
                    "cmsutil -S -d nss -N " + signer + options + (detached ? " -T" : "") + " -i content -o message",
                    detached);
        for (const std::string options : {"", " -noattr", " -keyid", " -nosmimecap", " -cades"})
            for (const bool detached : {false, true})
                verified("openssl cms -sign -binary -outform DER -in content -out message -signer " +
                        keyOf(signer) + options + (detached ? "" : " -nodetach"),
                    detached);
    }
    verified("certtool --p7-sign --sign-params rsa-pss --hash sha256 --load-certificate rsa.pem --load-privkey "
             "rsa.key.pem --infile content --outder --outfile message",
        false);
    verified("openssl cms -sign -binary -nodetach -outform DER -in content -out message -signer " + keyOf("rsa") +
            " -keyopt rsa_padding_mode:pss -signer " + keyOf("ec"),
        false);
    verified("openssl cms -resign -inform DER -in message -binary -nodetach -outform DER -out more -signer " +
            keyOf("other") + " && mv more message",
        false);
}

TEST_P(MessageExchange, EnvelopesForMixedRecipientsGoBothWays)
{
    for (const std::string cipher :
        {"-aes128", "-aes192", "-aes256", "-des3", "-seed", "-aria-128-cbc", "-aria-256-cbc"}) {
        for (const std::string padding : {"pkcs1", "oaep"}) {
            run("openssl cms -encrypt -provider default -provider legacy -binary -outform DER " + cipher +
                " -in content -out message -recip rsa.pem -keyopt rsa_padding_mode:" + padding +
                " -recip ec.pem -recip other.pem");
            for (const std::string recipient : {"rsa", "ec", "other"})
                EXPECT_EQ(opened(recipient, read("message")), content)
                    << cipher << recipient << toolkit.errorText();
        }
    }
    for (const int padding : {SIGIL_TK_PADDING_V15, SIGIL_TK_PADDING_OAEP}) {
        ASSERT_EQ(toolkit("CRYPT_SetPaddingType", padding), 0);
        for (int cipher = 0; cipher <= SIGIL_TK_CIPHER_ARIA256; ++cipher) {
            write("message", envelope("rsa ec other", cipher));
            for (const std::string recipient : {"rsa", "ec"}) {
                run("openssl cms -decrypt -provider default -provider legacy -inform DER -in message -binary -out "
                    "read -recip " +
                    keyOf(recipient));
                EXPECT_EQ(read("read"), content) << recipient << " cipher " << cipher;
            }
        }
    }
}
