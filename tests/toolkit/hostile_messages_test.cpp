// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Messages that were changed on their way: never accepted with other content, always a stated code.

#include "tests/support/tally.h"
#include "tests/toolkit/messages.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <ctime>
#include <limits>

using namespace toolkit_test;

namespace {

const std::string content = "the content of a message";
const std::string keyHex = "000102030405060708090a0b0c0d0e0f";

class HostileMessages : public MessageTest {
protected:
    HostileMessages()
        : MessageTest("HVTK_")
    {
        write("content", content);
    }
    int verify(const std::string& message, std::string* out = nullptr, const std::string& detached = {})
    {
        ByteString bytes(toolkit, message);
        ByteString data(toolkit, detached);
        const int code = toolkit("CMS_ProcessSignedData", 0, bytes.get(), data.get(), nullptr);
        if (out)
            *out = data.bytes();
        return code;
    }
    int open(const std::string& recipient, const std::string& message)
    {
        ByteString certificate(toolkit, file(recipient + ".crt"));
        ByteString key(toolkit, file(recipient + ".key"));
        ByteString bytes(toolkit, message);
        ByteString data(toolkit);
        return toolkit("UNI_DecryptEnvData", certificate.get(), key.get(), bytes.get(), data.get());
    }
    int decrypt(const std::string& message)
    {
        ByteString key(toolkit, fromHex(keyHex));
        ByteString bytes(toolkit, message);
        ByteString data(toolkit);
        return toolkit("CMS_ProcessEncryptedData", key.get(), bytes.get(), data.get());
    }
    /** Messages of the openssl command. */
    std::string signedBy(const std::string& signer, const std::string& options)
    {
        run("openssl cms -sign -binary -outform DER -in content -out message -signer " + signer + ".pem -inkey " +
            signer + ".key.pem " + options);
        return read("message");
    }
    std::string envelopedFor(const std::string& recipient, const std::string& options = "")
    {
        run("openssl cms -encrypt -binary -aes128 -outform DER -in content -out message -recip " + recipient +
            ".pem " + options);
        return read("message");
    }
    /** Calls @p read with @p message changed in one bit of every @p stride th byte in turn. */
    template <class Read>
    void flipBytes(const std::string& message, std::size_t stride, Read read)
    {
        for (std::size_t i = 0; i < message.size(); i += stride) {
            std::string changed = message;
            changed[i] = static_cast<char>(changed[i] ^ (1 << (i % 8)));
            const int code = read(changed);
            EXPECT_TRUE(isMessageCode(code)) << i << ": " << code;
            tally("changed messages");
        }
    }
    /** A changed message is refused, or says the same. */
    void flipSigned(const std::string& options, std::size_t stride)
    {
        flipBytes(signedBy("ec", options), stride, [&](const std::string& changed) {
            std::string out;
            const int code = verify(changed, &out);
            EXPECT_EQ(out, code == 0 ? content : "");
            return code;
        });
    }
};

/** A SignedData around an encoded content. */
std::string aroundContent(const std::string& encoded)
{
    const std::string holder = element('\x30', fromHex("06092a864886f70d010701") + element('\xA0', encoded));
    return element('\x30',
        fromHex("06092a864886f70d010702") +
            element('\xA0', element('\x30', fromHex("0201013100") + holder + fromHex("3100"))));
}

} // namespace

TEST_F(HostileMessages, NoChangedByteOfASignedMessageIsAcceptedWithOtherContent) { flipSigned("-nodetach", 1); }

TEST_F(HostileMessages, NorOneWithoutAttributesOrOfIndefiniteLength)
{
    flipSigned("-nodetach -noattr", 3);
    flipSigned("-nodetach -stream -indef", 3);
}

TEST_F(HostileMessages, NoChangedByteOfADetachedMessageMakesItFitOtherContent)
{
    flipBytes(signedBy("ec", ""), 1, [&](const std::string& changed) {
        const int code = verify(changed, nullptr, "other content");
        EXPECT_NE(code, 0);
        return code;
    });
}

TEST_F(HostileMessages, ChangedBytesOfEnvelopesHaveTheirCodes)
{
    for (const std::string recipient : {"ec", "rsa"})
        flipBytes(envelopedFor(recipient), 1, [&](const std::string& changed) { return open(recipient, changed); });
    run("openssl cms -EncryptedData_encrypt -aes128 -outform DER -in content -secretkey " + keyHex +
        " -binary -out message");
    flipBytes(read("message"), 1, [&](const std::string& changed) { return decrypt(changed); });
}

TEST_F(HostileMessages, WrongPaddingTakesTheTimeOfAWrongKey)
{
    write("large", std::string(1024UL * 1024, 'x')); // takes far longer than the key that opens it
    run("openssl cms -encrypt -provider default -provider legacy -seed -binary -outform DER -in large -out message "
        "-recip rsa.pem");
    const std::string message = read("message");
    const std::size_t place = message.find(octetsIn(message.substr(0, 1000), 256));
    ASSERT_LT(place, 1000U);
    const auto with = [&](const std::string& block, const std::string& padding) {
        write("block", block);
        run("openssl pkeyutl -encrypt -certin -inkey rsa.pem -in block -out wrapped -pkeyopt rsa_padding_mode:" +
            padding);
        return std::string(message).replace(place, 256, read("wrapped"));
    };
    struct Wrong {
        std::string message;
        std::clock_t time;
    };
    constexpr std::clock_t never = std::numeric_limits<std::clock_t>::max();
    std::array<Wrong, 3> all{Wrong{with(std::string(16, 'k'), "pkcs1"), never}, // another key
        Wrong{with(std::string(5, 'k'), "pkcs1"), never},                       // none for this cipher
        Wrong{with('\0' + std::string(255, '\3'), "none"), never}};             // no padding
    for (int round = 0; round < 3; ++round)
        for (Wrong& wrong : all) {
            const std::clock_t begin = std::clock();
            const int code = open("rsa", wrong.message);
            wrong.time = std::min(wrong.time, std::clock() - begin);
            EXPECT_TRUE(code == SIGIL_TK_DECRYPT || code == 0) << code; // one padding in 256 is right by chance
        }
    const auto [least, most] = std::minmax({all[0].time, all[1].time, all[2].time});
    EXPECT_LT(most, 2 * least) << "an answer that comes before the content was decrypted tells which it is";
}

TEST_F(HostileMessages, TruncatedAndTrailingBytesAreRefused)
{
    for (const std::string options : {"-nodetach", "-nodetach -stream -indef"}) {
        const std::string message = signedBy("ec", options);
        for (std::size_t length = 1; length < message.size(); ++length)
            ASSERT_EQ(verify(message.substr(0, length)), SIGIL_TK_CMS_MALFORMED) << length;
        tally("truncated messages", message.size() - 1);
        EXPECT_EQ(verify(message + '\0'), SIGIL_TK_CMS_MALFORMED);
        EXPECT_EQ(verify(message + message), SIGIL_TK_CMS_MALFORMED);
        EXPECT_EQ(verify(message), 0) << toolkit.errorText();
    }
    const std::string enveloped = envelopedFor("ec");
    for (std::size_t length = 1; length < enveloped.size(); ++length)
        ASSERT_EQ(open("ec", enveloped.substr(0, length)), SIGIL_TK_CMS_MALFORMED) << length;
    tally("truncated messages", enveloped.size() - 1);
}

TEST_F(HostileMessages, NestingAndLengthsAreBounded)
{
    std::string nested = element('\x04', "x");
    for (int i = 0; i < 40; ++i)
        nested = element('\x24', nested);
    EXPECT_EQ(verify(aroundContent(nested)), SIGIL_TK_CMS_MALFORMED);
    EXPECT_EQ(verify(aroundContent(element('\x24', element('\x04', "x")))), SIGIL_TK_CMS_NOBODY)
        << "two pieces are well";

    std::string indefinite;
    for (int i = 0; i < 100'000; ++i)
        indefinite += fromHex("3080");
    EXPECT_EQ(verify(indefinite), SIGIL_TK_CMS_MALFORMED);
    EXPECT_EQ(verify(fromHex("3080"
                             "06092a864886f70d010702"
                             "a080"
                             "3080"
                             "020101") +
                  indefinite),
        SIGIL_TK_CMS_MALFORMED);
    for (const char* head :
        {"3084ffffffff", "3088ffffffffffffffff", "30887fffffffffffffff", "3089010000000000000000", "30ff", "3080",
            "30", "1f8101", "0000", "308006092a864886f70d010702a080", "30800480", "0480"})
        EXPECT_EQ(verify(fromHex(head)), SIGIL_TK_CMS_MALFORMED) << head;
}

TEST_F(HostileMessages, ATypeThatTheSignatureDoesNotCoverIsRefused)
{
    std::string message = signedBy("rsa", "-nodetach -noattr");
    EXPECT_EQ(verify(message), 0);
    const std::string type = fromHex("06092a864886f70d010701");
    message[message.find(type) + type.size() - 1] = '\x05';
    EXPECT_EQ(verify(message), SIGIL_TK_CMS_MALFORMED);
    message = signedBy("rsa", "-nodetach");
    message[message.find(type) + type.size() - 1] = '\x05';
    EXPECT_EQ(verify(message), SIGIL_TK_CMS_CONTENT);
}

TEST_F(HostileMessages, RecipientsByTheThousandAreRead)
{
    std::string list;
    for (int i = 0; i < 2000; ++i)
        list += file("other.crt");
    list += file("ec.crt");
    ByteString recipients(toolkit, element('\x30', list));
    ByteString data(toolkit, content);
    ByteString message(toolkit);
    ASSERT_EQ(
        toolkit("CMS_MakeEnvelopedDataWithMultiRecipients", 0, recipients.get(), data.get(), 0, message.get()), 0)
        << toolkit.errorText();
    const std::clock_t begin = std::clock();
    EXPECT_EQ(open("ec", message.bytes()), 0) << toolkit.errorText();
    EXPECT_EQ(open("rsa", message.bytes()), SIGIL_TK_CMS_NOBODY);
    int count = 0;
    EXPECT_EQ(toolkit("CMS_GetEnvDataRecipCnt", message.get(), &count), 0);
    EXPECT_EQ(count, 2001);
    EXPECT_LT(std::clock() - begin, 20 * CLOCKS_PER_SEC);
}

TEST_F(HostileMessages, AHashThatIsNamedThousandsOfTimesIsTakenOnce)
{
    const std::clock_t begin = std::clock();
    std::string out;
    EXPECT_EQ(verify(namingItsHashOften(signedBy("ec", "-nodetach")), &out), 0) << toolkit.errorText();
    EXPECT_EQ(out, content);
    EXPECT_EQ(verify(namingItsHashOften(signedBy("ec", "-nodetach -noattr"))), 0) << toolkit.errorText();
    EXPECT_LT(std::clock() - begin, 20 * CLOCKS_PER_SEC);
}

TEST_F(HostileMessages, FieldsLargerThanTheirBoundAreRefused)
{
    const auto refused = [&](const std::string& hashes, const std::string& certificates) {
        const std::string message = signedBy("ec", "-nodetach");
        const std::vector<std::string> fields = children(children(children(message)[1])[0]);
        const std::string others = element('\x30', fields[0] + hashes + fields[2] + certificates + fields[4]);
        EXPECT_EQ(verify(element('\x30', children(message)[0] + element('\xA0', others))), SIGIL_TK_CMS_MALFORMED);
        return toolkit.errorText();
    };
    const std::string hash = element('\x30', fromHex("0609608648016503040201"));
    const std::string large = std::string(5 * 1024 * 1024, 'x');
    const std::string withLarge = element('\x30', fromHex("0609608648016503040201") + element('\4', large));
    EXPECT_THAT(
        refused(element('\x31', withLarge + withLarge), element('\xA0', "")), testing::HasSubstr("too large"));
    EXPECT_THAT(refused(element('\x31', hash), element('\xA0', large + large)), testing::HasSubstr("too large"));
    const std::string fields = fromHex("020101") + element('\x31', std::string(9 * 1024 * 1024, 'x'));
    EXPECT_EQ(verify(element('\x30', fromHex("06092a864886f70d010702") + element('\xA0', element('\x30', fields)))),
        SIGIL_TK_CMS_MALFORMED);
}
