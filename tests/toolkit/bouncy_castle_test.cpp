// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Messages and time stamps against Bouncy Castle, both ways: a whole batch goes to one run of it.

#include "tests/support/tally.h"
#include "tests/toolkit/messages.h"
#include "tests/toolkit/server.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <map>
#include <vector>

using namespace toolkit_test;

namespace {

const std::string content = "what both of them know\r\n";

struct CipherName {
    int cipher;
    const char* identifier;
    std::size_t keySize;
};
constexpr std::array ciphers{CipherName{SIGIL_TK_CIPHER_SEED, "1.2.410.200004.1.4", 16},
    CipherName{SIGIL_TK_CIPHER_3DES, "1.2.840.113549.3.7", 24},
    CipherName{SIGIL_TK_CIPHER_AES128, "2.16.840.1.101.3.4.1.2", 16},
    CipherName{SIGIL_TK_CIPHER_AES256, "2.16.840.1.101.3.4.1.42", 32},
    CipherName{SIGIL_TK_CIPHER_ARIA128, "1.2.410.200046.1.1.2", 16},
    CipherName{SIGIL_TK_CIPHER_ARIA192, "1.2.410.200046.1.1.7", 24},
    CipherName{SIGIL_TK_CIPHER_ARIA256, "1.2.410.200046.1.1.12", 32}};

class BouncyCastle : public MessageTest {
protected:
    BouncyCastle()
        : MessageTest("HVTK_")
    {
        write("content", content);
    }

    /** Adds a command to the batch. */
    void order(const std::string& command)
    {
        m_orders += command + "\n";
        tally("orders to Bouncy Castle");
    }
    void runOrders()
    {
        write("orders", m_orders);
        run(BOUNCY_CASTLE " <orders");
        m_orders.clear();
    }
    /** The name of a new file. */
    std::string next(const std::string& kind) { return kind + std::to_string(++m_count); }
    void keep(const std::string& name, const std::string& message)
    {
        EXPECT_THAT(message, testing::Not(testing::StartsWith("code "))) << toolkit.errorText();
        write(name, message);
    }

    std::string sign(const std::string& signer, int option)
    {
        return make([&](BINSTR* out) {
            ByteString certificate(toolkit, file(signer + ".crt"));
            ByteString key(toolkit, file(signer + ".key"));
            ByteString data(toolkit, content);
            return toolkit("CMS_MakeSignedData", option, certificate.get(), key.get(), data.get(), text(""), out);
        });
    }
    std::string processed(const std::string& message, const std::string& detached)
    {
        ByteString bytes(toolkit, message);
        ByteString data(toolkit, detached);
        const int code = toolkit("CMS_ProcessSignedData", 0, bytes.get(), data.get(), nullptr);
        return code == 0 ? data.bytes() : "code " + std::to_string(code);
    }
    std::string envelope(const std::string& recipients, int cipher)
    {
        return make([&](BINSTR* out) {
            ByteString certificates(toolkit, listOf(recipients));
            ByteString data(toolkit, content);
            return toolkit(
                "CMS_MakeEnvelopedDataWithMultiRecipients", 0, certificates.get(), data.get(), cipher, out);
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

private:
    std::string m_orders;
    int m_count = 0;
};

} // namespace

TEST_F(BouncyCastle, VerifiesWhatIsSignedHere)
{
    std::vector<std::string> results;
    const auto check = [&](const std::string& message, bool detached) {
        const std::string name = next("signed");
        keep(name, message);
        order("verify " + name + " " + name + ".out" + (detached ? " content" : ""));
        results.push_back(name + ".out");
    };
    for (const int version : {SIGIL_TK_RSA_V15, SIGIL_TK_RSA_PSS}) {
        ASSERT_EQ(toolkit("CRYPT_SetRSAVersion", version), 0);
        for (const std::string signer : {"rsa", "ec"})
            for (const int option :
                {SIGIL_TK_MESSAGE_PLAIN, SIGIL_TK_MESSAGE_DETACHED, SIGIL_TK_MESSAGE_NO_ATTRIBUTES})
                check(sign(signer, option), option == SIGIL_TK_MESSAGE_DETACHED);
    }
    check(make([&](BINSTR* out) {
        ByteString certificate(toolkit, file("ec.crt"));
        ByteString key(toolkit, file("ec.key"));
        ByteString message(toolkit, sign("rsa", 0));
        return toolkit(
            "CMS_MakeSignedDataWithAddSigner", 0, certificate.get(), key.get(), message.get(), text(""), out);
    }),
        false);
    runOrders();
    for (const std::string& result : results)
        EXPECT_EQ(read(result), content) << result;
}

TEST_F(BouncyCastle, SignsWhatIsVerifiedHere)
{
    std::map<std::string, bool> detached;
    for (const std::string scheme : {"SHA256withRSA", "SHA512withRSAandMGF1", "SHA256withECDSA"}) {
        const std::string signer = scheme.ends_with("ECDSA") ? "ec" : "rsa";
        for (const std::string form : {"attached", "detached", "bare"}) {
            const std::string name = next("foreign");
            order("sign " + signer + ".crt " + signer + ".key " + scheme + " " + form + " content " + name);
            detached[name] = form == "detached";
        }
    }
    runOrders();
    for (const auto& [name, isDetached] : detached) {
        EXPECT_EQ(processed(read(name), isDetached ? content : ""), content) << name << toolkit.errorText();
        if (isDetached) {
            EXPECT_EQ(processed(read(name), "other"), "code 3901");
        }
    }
}

TEST_F(BouncyCastle, OpensWhatIsEnvelopedHere)
{
    std::vector<std::string> results;
    for (const int padding : {SIGIL_TK_PADDING_V15, SIGIL_TK_PADDING_OAEP}) {
        ASSERT_EQ(toolkit("CRYPT_SetPaddingType", padding), 0);
        for (const CipherName& cipher : ciphers) {
            const std::string name = next("sealed");
            keep(name, envelope("rsa ec", cipher.cipher));
            for (const std::string recipient : {"rsa", "ec"}) {
                order("open " + recipient + ".crt " + recipient + ".key " + name + " " + name + recipient);
                results.push_back(name + recipient);
            }
        }
    }
    runOrders();
    for (const std::string& result : results)
        EXPECT_EQ(read(result), content) << result;
}

TEST_F(BouncyCastle, EnvelopesWhatIsOpenedHere)
{
    std::vector<std::string> names;
    for (const std::string padding : {"v15", "oaep"})
        for (const CipherName& cipher : ciphers) {
            names.push_back(next("foreign_sealed"));
            order(std::string("envelope ") + cipher.identifier + " " + padding + " content " + names.back() +
                " rsa.crt ec.crt");
        }
    runOrders();
    for (const std::string& name : names)
        for (const std::string recipient : {"rsa", "ec"})
            EXPECT_EQ(opened(recipient, read(name)), content) << name << recipient << toolkit.errorText();
}

TEST_F(BouncyCastle, SharesEncryptedData)
{
    std::vector<std::string> names;
    for (const CipherName& cipher : ciphers) {
        names.push_back(next("locked"));
        write("key" + names.back(), std::string(cipher.keySize, 'k') + "");
        keep(names.back(), make([&](BINSTR* out) {
            ByteString key(toolkit, std::string(cipher.keySize, 'k'));
            ByteString data(toolkit, content);
            return toolkit("CMS_EncryptData", 0, key.get(), data.get(), cipher.cipher, out);
        }));
        order("unlock key" + names.back() + " " + names.back() + " " + names.back() + ".out");
        order(std::string("lock ") + cipher.identifier + " content key_foreign" + names.back() + " foreign" +
            names.back());
    }
    runOrders();
    for (const std::string& name : names) {
        EXPECT_EQ(read(name + ".out"), content) << name;
        ByteString key(toolkit, read("key_foreign" + name));
        ByteString message(toolkit, read("foreign" + name));
        ByteString data(toolkit);
        EXPECT_EQ(toolkit("CMS_ProcessEncryptedData", key.get(), message.get(), data.get()), 0)
            << name << toolkit.errorText();
        EXPECT_EQ(data.bytes(), content);
    }
}

namespace {

/** Two time-stamping authorities of the test's root. */
class BouncyStamps : public BouncyCastle {
protected:
    BouncyStamps()
    {
        for (const std::string kind : {"rsa", "ec"})
            messageWorkshop().certificate(kind + "_stamper", "/CN=" + kind + " stamper",
                "extendedKeyUsage=critical,timeStamping\nkeyUsage=digitalSignature", "root", "-days 365",
                kind == "rsa" ? "rsa:2048" : "ec -pkeyopt ec_paramgen_curve:P-256");
        ByteString root(stamps, file("root.crt"));
        EXPECT_EQ(stamps("CERT_AddTrustedCert", root.get()), 0);
    }

    /** A verified stamp of some data; keeps request and response as files. */
    std::string stampOf(const std::string& bytes, const Server& server, const std::string& stamper)
    {
        ByteString data(stamps, bytes);
        ByteString request(stamps);
        ByteString response(stamps);
        ByteString token(stamps);
        ByteString authority(stamps);
        BINSTR* const none = nullptr;
        EXPECT_EQ(stamps("TSP_MakeReqMsg", data.get(), int(SIGIL_TK_HASH_SHA256), text(""), true, none, none,
                      request.get()),
            0);
        EXPECT_EQ(stamps("TSP_SendAndRecv", text("127.0.0.1"), server.port(), request.get(), response.get()), 0)
            << stamps.errorText();
        EXPECT_EQ(stamps("TSP_VerifyResMsg", response.get(), token.get(), authority.get()), 0)
            << stamps.errorText();
        EXPECT_EQ(authority.bytes(), file(stamper + ".crt"));
        write("request", request.bytes());
        write("response", response.bytes());
        return token.bytes();
    }
    /** A signed message with a stamp of its signature in it. */
    std::string stampedMessage(const std::string& message, const Server& server, const std::string& stamper)
    {
        ByteString bytes(stamps, message);
        ByteString data(stamps);
        ByteString signature(stamps);
        EXPECT_EQ(stamps("CMS_ProcessSignedData2", bytes.get(), data.get(), nullptr), 0);
        EXPECT_EQ(stamps("CMS_GetTBTData", 0, signature.get()), 0);
        ByteString token(stamps, stampOf(signature.bytes(), server, stamper));
        ByteString out(stamps);
        EXPECT_EQ(stamps("CMS_SetTimeStampToken", bytes.get(), 0, token.get(), out.get()), 0) << stamps.errorText();
        return out.bytes();
    }

    ToolkitLibrary stamps{"GPKI_"};
};

} // namespace

TEST_F(BouncyStamps, ItsAuthorityIsBelievedHere)
{
    for (const std::string scheme : {"SHA256withRSA", "SHA256withECDSA"}) {
        const std::string stamper = scheme.ends_with("RSA") ? "rsa_stamper" : "ec_stamper";
        const Server server = Server::bouncyStamper(messageWorkshop(), BOUNCY_CASTLE, stamper, scheme);
        ByteString token(stamps, stampOf(content, server, stamper));
        ByteString data(stamps, content);
        ByteString other(stamps, "other");
        ByteString authority(stamps);
        EXPECT_EQ(stamps("TSP_VerifyToken2", data.get(), token.get(), authority.get()), 0) << stamps.errorText();
        EXPECT_EQ(stamps("TSP_VerifyToken2", other.get(), token.get(), authority.get()), SIGIL_TK_TSP_IMPRINT);
        write("stamped", stampedMessage(sign("rsa", 0), server, stamper));
        order("stamped request response " + stamper + ".crt");
        order("stamp-inside stamped " + stamper + ".crt");
        order("verify stamped stamped.out");
        runOrders();
        EXPECT_EQ(read("stamped.out"), content);
    }
}

TEST_F(BouncyStamps, ItBelievesTheStampsThatAreTakenHere)
{
    write("serial", "0A\n");
    write("tsa.conf",
        "[tsa]\ndefault_tsa=own\n[own]\nserial=serial\nsigner_digest=sha256\ndefault_policy=1.2.3.1\n"
        "digests=sha256\n");
    const Server server = Server::timeStamper(messageWorkshop(), "ec_stamper");
    write("stamped", stampedMessage(sign("ec", 0), server, "ec_stamper"));
    order("stamped request response ec_stamper.crt");
    order("stamp-inside stamped ec_stamper.crt");
    runOrders();
}
