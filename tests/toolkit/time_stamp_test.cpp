// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Time stamps of a real authority, read by us and by others, and of one that should not be believed.

#include "tests/support/tally.h"
#include "tests/toolkit/messages.h"
#include "tests/toolkit/server.h"
#include "tests/toolkit/toolkit_library.h"
#include "tests/toolkit/workshop.h"
#include "toolkit/engine/x509/text.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <ctime>
#include <memory>
#include <tuple>
#include <utility>
#include <vector>

using namespace toolkit_test;

namespace {

const std::string document = "what is stamped";

/** A time-stamping authority, and one whose certificate has expired. */
class Authority {
public:
    Authority()
    {
        const std::string stamps = "extendedKeyUsage=critical,timeStamping\nkeyUsage=digitalSignature";
        certificate("ca", "CA", "basicConstraints=critical,CA:TRUE");
        certificate("other", "Other", "basicConstraints=critical,CA:TRUE");
        certificate("tsa", "Stamper", stamps, "ca");
        certificate("late", "Late", stamps, "ca", "-days -1");
        workshop.certificate("rsa", "/C=KR/O=test/CN=RSA", stamps, "ca");
        workshop.certificate("short", "/C=KR/O=test/CN=Short", stamps, "ca", "-days 365", "rsa:512");
        workshop.write("data", document);
        workshop.write("serial", "0A\n");
        workshop.write("tsa.conf",
            "[tsa]\ndefault_tsa=own\n[own]\nserial=serial\nsigner_digest=sha256\ndefault_policy=1.2.3.1\n"
            "other_policies=1.2.3.2\ndigests=sha1,sha256,sha512\naccuracy=secs:1,millisecs:500\n");
        server = std::make_unique<Server>(Server::timeStamper(workshop, "tsa"));
        expired = std::make_unique<Server>(Server::timeStamper(workshop, "late"));
    }

    Workshop workshop;
    std::unique_ptr<Server> server;
    std::unique_ptr<Server> expired;

private:
    void certificate(const std::string& name, const std::string& commonName, const std::string& extensions,
        const std::string& issuer = {}, const std::string& options = "-days 365") const
    {
        workshop.certificate(name, "/C=KR/O=test/CN=" + commonName, extensions, issuer, options,
            "ec -pkeyopt ec_paramgen_curve:P-256");
    }
};

const Authority& authority()
{
    static const Authority made;
    return made;
}

struct Wish {
    std::string data = document;
    int hash = SIGIL_TK_HASH_SHA256;
    std::string policy{};
    bool withNonce = true;
};

class TimeStamp : public testing::TestWithParam<const char*> {
protected:
    static std::string file(const std::string& name) { return authority().workshop.read(name); }
    bool hvtk() const { return GetParam() == std::string("HVTK_"); }
    void trust(const std::string& name)
    {
        ByteString certificate(toolkit, file(name + ".crt"));
        ASSERT_EQ(toolkit("CERT_AddTrustedCert", certificate.get()), 0);
    }
    int makeRequest(ByteString& request, const Wish& wish = {})
    {
        ByteString data(toolkit, wish.data);
        BINSTR* const none = nullptr;
        return toolkit(
            "TSP_MakeReqMsg", data.get(), wish.hash, text(wish.policy), wish.withNonce, none, none, request.get());
    }
    std::string send(ByteString& request, const Server& server = *authority().server)
    {
        ByteString response(toolkit);
        EXPECT_EQ(toolkit("TSP_SendAndRecv", text("127.0.0.1"), server.port(), request.get(), response.get()), 0)
            << toolkit.errorText();
        return response.bytes();
    }
    std::string ask(const Wish& wish = {}, const Server& server = *authority().server)
    {
        ByteString request(toolkit);
        EXPECT_EQ(makeRequest(request, wish), 0) << toolkit.errorText();
        return send(request, server);
    }
    int verifyResponse(const std::string& response, ByteString& token, ByteString& certificate)
    {
        ByteString message(toolkit, response);
        return toolkit("TSP_VerifyResMsg", message.get(), token.get(), certificate.get());
    }
    int verifyResponse(const std::string& response)
    {
        ByteString token(toolkit);
        ByteString certificate(toolkit);
        const int result = verifyResponse(response, token, certificate);
        EXPECT_EQ(token.empty(), result != 0);
        return result;
    }
    std::string stamped(const Wish& wish = {})
    {
        ByteString token(toolkit);
        ByteString certificate(toolkit);
        EXPECT_EQ(verifyResponse(ask(wish), token, certificate), 0) << toolkit.errorText();
        return token.bytes();
    }
    int verifyToken(const std::string& token, ByteString& certificate)
    {
        ByteString message(toolkit, token);
        return toolkit("TSP_VerifyToken", message.get(), certificate.get());
    }
    int verifyToken(const std::string& token)
    {
        ByteString certificate(toolkit);
        return verifyToken(token, certificate);
    }
    /** With what was stamped: a file on type 0, bytes on type 1. */
    int verifyTokenOf(const std::string& data, const std::string& token)
    {
        ByteString message(toolkit, token);
        authority().workshop.write("stamped", data);
        if (hvtk())
            return toolkit("TSP_VerifyToken2", text(authority().workshop.path("stamped")), message.get());
        ByteString bytes(toolkit, data);
        ByteString certificate(toolkit);
        return toolkit("TSP_VerifyToken2", bytes.get(), message.get(), certificate.get());
    }
    /** The texts of a token; those that the face does not hand out stay empty. */
    std::array<std::string, 8> infoOf(const std::string& token, int capacity = 128)
    {
        std::array<std::array<char, 128>, 8> out{};
        ByteString message(toolkit, token);
        ByteString certificate(toolkit);
        code = hvtk()
            ? toolkit("TSP_GetTokenInfo", message.get(), capacity, out[2].data(), out[3].data(), out[4].data(),
                  out[5].data(), out[6].data(), out[7].data(), certificate.get())
            : toolkit("TSP_GetTokenInfo", message.get(), capacity, out[0].data(), out[1].data(), out[2].data(),
                  out[3].data(), out[4].data(), out[5].data(), out[6].data(), out[7].data());
        EXPECT_EQ(certificate.bytes(), hvtk() && code == 0 ? file("tsa.crt") : "");
        std::array<std::string, 8> texts;
        for (std::size_t i = 0; i < texts.size(); ++i)
            texts[i] = out[i].data();
        return texts;
    }

    /** What a reader of time stamps may answer to a changed one. */
    static bool isStampCode(int code)
    {
        return (code >= SIGIL_TK_TSP_MALFORMED && code <= SIGIL_TK_TSP_TIME) || code == SIGIL_TK_SIGNATURE ||
            code == SIGIL_TK_CERT_MALFORMED || code == SIGIL_TK_ALGORITHM;
    }

    ToolkitLibrary toolkit{GetParam()};
    int code = -1;
};

} // namespace

INSTANTIATE_TEST_SUITE_P(Faces, TimeStamp, testing::Values("HVTK_", "GPKI_"),
    [](const auto& face) { return std::string(face.param, 4); });

TEST_P(TimeStamp, AnAuthoritysAnswerIsVerifiedByUsAndByOthers)
{
    trust("ca");
    ByteString token(toolkit);
    ByteString certificate(toolkit);
    ASSERT_EQ(verifyResponse(ask(), token, certificate), 0) << toolkit.errorText();
    EXPECT_EQ(certificate.bytes(), file("tsa.crt"));
    authority().workshop.write("token.der", token.bytes());
    EXPECT_THAT(authority().workshop.run("openssl ts -verify -data data -in token.der -token_in -CAfile ca.pem"),
        testing::HasSubstr("OK"));
    ByteString again(toolkit);
    EXPECT_EQ(verifyToken(token.bytes(), again), 0);
    EXPECT_EQ(again.bytes(), file("tsa.crt"));
    EXPECT_EQ(verifyTokenOf(document, token.bytes()), 0) << toolkit.errorText();
    EXPECT_EQ(verifyTokenOf("other", token.bytes()), SIGIL_TK_TSP_IMPRINT);
}

TEST_P(TimeStamp, RequestsAreReadByOthers)
{
    ByteString request(toolkit);
    ASSERT_EQ(makeRequest(request, {document, SIGIL_TK_HASH_SHA512, "1 2 3 2"}), 0);
    authority().workshop.write("query.der", request.bytes());
    const std::string known = authority().workshop.run("openssl ts -query -in query.der -text");
    EXPECT_THAT(known, testing::HasSubstr("Hash Algorithm: sha512"));
    EXPECT_THAT(known, testing::HasSubstr("1.2.3.2"));
    EXPECT_THAT(known, testing::HasSubstr("Certificate required: yes"));
    EXPECT_THAT(known, testing::Not(testing::HasSubstr("Nonce: unspecified")));
    ByteString none(toolkit);
    EXPECT_EQ(makeRequest(none, {document, 99}), SIGIL_TK_ALGORITHM);
    EXPECT_EQ(makeRequest(none, {document, SIGIL_TK_HASH_SHA256, "no policy"}), SIGIL_TK_ARGUMENT);
    EXPECT_TRUE(none.empty());
}

TEST_P(TimeStamp, TheFieldsOfATokenAreTexts)
{
    authority().workshop.write("serial", "0A\n");
    const auto texts = infoOf(stamped());
    ASSERT_EQ(code, 0) << toolkit.errorText();
    EXPECT_EQ(texts[0], hvtk() ? "" : "1");
    EXPECT_EQ(texts[1], hvtk() ? "" : "1.5");
    EXPECT_EQ(texts[2], "1 2 3 1");
    EXPECT_EQ(texts[3], "SHA256");
    EXPECT_EQ(texts[4], sha256Hex(document));
    EXPECT_EQ(texts[5], "0b");
    const auto time = toolkit::timeFromText(texts[6]);
    ASSERT_TRUE(time.has_value());
    EXPECT_NEAR(double(*time), double(std::time(nullptr)), 60);
    EXPECT_EQ(texts[7].size(), 32U);
    EXPECT_EQ(infoOf(stamped({document, SIGIL_TK_HASH_SHA1, "", false}))[7], "");
    for (const int capacity : {64, 0, -1}) {
        EXPECT_EQ(infoOf(stamped(), capacity)[4], "") << "64 digits and their end need more";
        EXPECT_EQ(code, SIGIL_TK_BUFFER_TOO_SMALL);
    }
    ByteString token(toolkit, stamped());
    char* const none = nullptr;
    BINSTR* const nowhere = nullptr;
    EXPECT_EQ(hvtk() ? toolkit("TSP_GetTokenInfo", token.get(), 0, none, none, none, none, none, none, nowhere)
                     : toolkit("TSP_GetTokenInfo", token.get(), 0, none, none, none, none, none, none, none, none),
        0)
        << "nothing is wanted";
}

TEST_P(TimeStamp, OddFieldsAreToldOrRefused)
{
    const Workshop& workshop = authority().workshop;
    workshop.write("token.der", stamped());
    workshop.run("openssl cms -verify -noverify -binary -inform DER -in token.der -out info");
    const std::vector<std::string> fields =
        children(file("info")); // version, policy, imprint, serial, time, accuracy
    const auto with = [&](std::size_t at, const std::string& other) {
        std::string body;
        for (std::size_t i = 0; i < fields.size(); ++i)
            body += i == at ? other : fields[i];
        return element('\x30', body);
    };
    const auto signedInfo = [&](const std::string& info, const std::string& options = "-nodetach") {
        workshop.write("changed", info);
        workshop.run("openssl cms -sign -cades -binary -econtent_type id-smime-ct-TSTInfo -in changed -signer "
                     "tsa.pem -inkey tsa.key.pem -outform DER -out made.der " +
            options);
        return file("made.der");
    };
    const auto manySeconds = infoOf(signedInfo(with(5, element('\x30', element('\2', std::string(9, '\1'))))));
    ASSERT_EQ(code, 0) << toolkit.errorText();
    EXPECT_EQ(manySeconds[1], hvtk() ? "" : "0") << "more than a number holds";
    const std::string hash = children(children(fields[2])[0])[0];
    const auto unknown = infoOf(signedInfo(with(2, replaced(fields[2], hash, fromHex("06032a0304")))));
    ASSERT_EQ(code, 0) << toolkit.errorText();
    EXPECT_EQ(unknown[3], "1.2.3.4");
    EXPECT_EQ(verifyToken(signedInfo(file("info"))), 0) << toolkit.errorText();
    EXPECT_EQ(verifyToken(signedInfo(with(0, fromHex("020102")))), SIGIL_TK_TSP_MALFORMED) << "a later version";
    EXPECT_EQ(verifyToken(signedInfo(file("info") + '\0')), SIGIL_TK_TSP_MALFORMED) << "something behind it";
    EXPECT_EQ(verifyToken(signedInfo("no fields")), SIGIL_TK_TSP_MALFORMED);
    EXPECT_EQ(verifyToken(signedInfo(file("info"), "")), SIGIL_TK_TSP_MALFORMED) << "it is not in there";
}

TEST_P(TimeStamp, AResponseCountsForTheLastRequestAlone)
{
    const std::string first = ask();
    EXPECT_EQ(verifyResponse(ask()), 0) << toolkit.errorText();
    EXPECT_EQ(verifyResponse(first), SIGIL_TK_TSP_NONCE);
    const std::string plain = ask({document, SIGIL_TK_HASH_SHA256, "", false});
    ask({"other", SIGIL_TK_HASH_SHA256, "", false});
    EXPECT_EQ(verifyResponse(plain), SIGIL_TK_TSP_IMPRINT);
    ask({document, SIGIL_TK_HASH_SHA512, "", false});
    EXPECT_EQ(verifyResponse(plain), SIGIL_TK_TSP_IMPRINT) << "of another hash";
    EXPECT_EQ(verifyResponse(ask({document, SIGIL_TK_HASH_SHA256, "1.2.3.2", false})), 0) << toolkit.errorText();
    EXPECT_EQ(verifyResponse(plain), SIGIL_TK_TSP_POLICY);
    ask({document, SIGIL_TK_HASH_SHA256, "", true});
    EXPECT_EQ(verifyResponse(plain), SIGIL_TK_TSP_NONCE) << "it repeats none";
    const ToolkitLibrary fresh(GetParam());
    ByteString message(fresh, plain);
    BINSTR* const none = nullptr;
    EXPECT_EQ(fresh("TSP_VerifyResMsg", message.get(), none, none), SIGIL_TK_TSP_NONCE);
}

TEST_P(TimeStamp, RefusalsHaveTheAuthoritysWords)
{
    EXPECT_EQ(verifyResponse(ask({document, SIGIL_TK_HASH_SHA256, "1.2.3.9"})), SIGIL_TK_TSP_REFUSED);
    EXPECT_THAT(toolkit.errorText(), testing::HasSubstr("status 2"));
    std::string changes = ask();
    const std::size_t granted = changes.find(fromHex("3003020100"));
    ASSERT_NE(granted, changes.npos);
    changes[granted + 4] = '\1';
    EXPECT_EQ(verifyResponse(changes), 0) << "granted with changes: " << toolkit.errorText();
    EXPECT_EQ(verifyResponse("garbage"), SIGIL_TK_TSP_MALFORMED);
    EXPECT_EQ(verifyResponse(fromHex("30053003020100")), SIGIL_TK_TSP_MALFORMED) << "granted, but nothing is there";
}

TEST_P(TimeStamp, AnAddressIsOneOfTheWebOrAHostAlone)
{
    ByteString request(toolkit);
    ASSERT_EQ(makeRequest(request), 0);
    const int port = authority().server->port();
    const std::string host = "127.0.0.1:" + std::to_string(port);
    const Server elsewhere = Server::answering(authority().workshop, "", 302);
    const std::vector<std::tuple<std::string, int, int>> addresses{{"http://" + host + "/stamp", 1, 0},
        {"HTTP://user:word@" + host, 0, 0}, {"127.0.0.1", port, 0}, {host, 0, SIGIL_TK_URL},
        {"127.0.0.1/stamp", port, SIGIL_TK_URL}, {"user@127.0.0.1", port, SIGIL_TK_URL},
        {"127.0.0.1 ", port, SIGIL_TK_URL}, {"ldap://" + host, 0, SIGIL_TK_URL},
        {"file:///etc/hostname", 0, SIGIL_TK_URL}, {"", port, SIGIL_TK_ARGUMENT},
        {"127.0.0.1", -1, SIGIL_TK_ARGUMENT}, {"127.0.0.1", 65536, SIGIL_TK_ARGUMENT},
        {"127.0.0.1", elsewhere.port(), SIGIL_TK_FETCH}};
    for (const auto& [address, beside, expected] : addresses) {
        ByteString response(toolkit);
        EXPECT_EQ(toolkit("TSP_SendAndRecv", text(address), beside, request.get(), response.get()), expected)
            << address << toolkit.errorText();
        EXPECT_EQ(response.empty(), expected != 0);
    }
}

TEST_P(TimeStamp, WhoMayNotStampIsRefused)
{
    const std::string token = stamped();
    EXPECT_EQ(verifyToken(token), 0) << "nothing is trusted, so no path is wanted";
    trust("other");
    EXPECT_EQ(verifyToken(token), SIGIL_TK_VERIFY_NO_ISSUER);
    trust("ca");
    EXPECT_EQ(verifyToken(token), 0) << toolkit.errorText();
    EXPECT_EQ(verifyResponse(ask({}, *authority().expired)), SIGIL_TK_TSP_TIME);
    const Workshop& workshop = authority().workshop;
    workshop.run("openssl ts -query -data data -sha256 -out bare.tsq && openssl ts -reply -config tsa.conf -signer "
                 "tsa.pem -inkey tsa.key.pem -queryfile bare.tsq -token_out -out bare.tok");
    EXPECT_EQ(verifyToken(file("bare.tok")), SIGIL_TK_TSP_SIGNER) << "it does not hold the certificate";
    if (hvtk()) {
        ByteString bare(toolkit, file("bare.tok"));
        ByteString nobody(toolkit);
        std::array<char, 128> out{};
        EXPECT_EQ(toolkit("TSP_GetTokenInfo", bare.get(), 128, out.data(), out.data(), out.data(), out.data(),
                      out.data(), out.data(), nobody.get()),
            0);
        EXPECT_TRUE(nobody.empty());
    }
    workshop.run(
        "openssl cms -sign -in data -signer tsa.pem -inkey tsa.key.pem -nodetach -binary -outform DER -out "
        "message.der");
    EXPECT_EQ(verifyToken(file("message.der")), SIGIL_TK_TSP_MALFORMED) << "a message is no time stamp";
}

TEST_P(TimeStamp, OnlyCertificatesForTimeStampsAloneStamp)
{
    const Workshop& workshop = authority().workshop;
    const std::string alone = "extendedKeyUsage=critical,timeStamping";
    const std::vector<std::pair<std::string, int>> certificates{{alone, 0},
        {alone + "\nkeyUsage=nonRepudiation", 0}, {"keyUsage=digitalSignature", SIGIL_TK_TSP_SIGNER},
        {"extendedKeyUsage=timeStamping", SIGIL_TK_TSP_SIGNER}, // not critical
        {"extendedKeyUsage=critical,codeSigning", SIGIL_TK_TSP_SIGNER},
        {alone + ",emailProtection", SIGIL_TK_TSP_SIGNER}, {alone + ",1.2.3.4", SIGIL_TK_TSP_SIGNER},
        {alone + "\nkeyUsage=keyAgreement", SIGIL_TK_TSP_SIGNER}};
    const auto nameOf = [](std::size_t i) { return "signer" + std::to_string(i); };
    for (std::size_t i = 0; i < certificates.size(); ++i)
        workshop.certificate(nameOf(i), "/CN=signer", certificates[i].first, "ca", "-days 365",
            "ec -pkeyopt ec_paramgen_curve:P-256");
    workshop.write("token.der", stamped()); // at a time when all of them are valid
    workshop.run("openssl cms -verify -noverify -binary -inform DER -in token.der -out info");
    for (std::size_t i = 0; i < certificates.size(); ++i) {
        workshop.run(
            "openssl cms -sign -cades -binary -nodetach -econtent_type id-smime-ct-TSTInfo -in info -signer " +
            nameOf(i) + ".pem -inkey " + nameOf(i) + ".key.pem -outform DER -out made.der");
        EXPECT_EQ(verifyToken(file("made.der")), certificates[i].second)
            << certificates[i].first << toolkit.errorText();
    }
}

TEST_P(TimeStamp, ASignatureThatAnybodyCanMakeIsRefused)
{
    const Workshop& workshop = authority().workshop;
    workshop.run("openssl ts -query -data data -sha256 -cert -out weak.tsq");
    const auto reply = [&](const std::string& signer, const std::string& hash) {
        workshop.run("openssl ts -reply -config tsa.conf -signer " + signer + ".pem -inkey " + signer +
            ".key.pem " + hash + " -queryfile weak.tsq -token_out -out weak.tok");
        return file("weak.tok");
    };
    EXPECT_EQ(verifyToken(reply("rsa", "-sha256")), 0) << toolkit.errorText();
    EXPECT_EQ(verifyToken(reply("rsa", "-md5")), SIGIL_TK_SIGNATURE);
    EXPECT_EQ(verifyToken(reply("short", "-sha256")), SIGIL_TK_SIGNATURE) << "RSA of 512 bits";
}

TEST_P(TimeStamp, AHashThatIsNamedThousandsOfTimesIsTakenOnce)
{
    const std::clock_t begin = std::clock();
    EXPECT_EQ(verifyToken(namingItsHashOften(stamped())), 0) << toolkit.errorText();
    EXPECT_LT(std::clock() - begin, 20 * CLOCKS_PER_SEC);
}

TEST_P(TimeStamp, EveryCutResponseIsNoticed)
{
    const std::string response = ask();
    const std::string token = stamped();
    ask(); // so that no answer here fits
    for (std::size_t length = 1; length < response.size(); ++length)
        ASSERT_EQ(verifyResponse(response.substr(0, length)), SIGIL_TK_TSP_MALFORMED) << length;
    for (std::size_t length = 1; length < token.size(); ++length)
        ASSERT_EQ(verifyToken(token.substr(0, length)), SIGIL_TK_TSP_MALFORMED) << length;
    tally("truncated time stamps", response.size() + token.size() - 2);
    EXPECT_EQ(verifyToken(token + '\0'), SIGIL_TK_TSP_MALFORMED);
    EXPECT_EQ(verifyResponse(response + '\0'), SIGIL_TK_TSP_MALFORMED);
    EXPECT_EQ(verifyResponse(token), SIGIL_TK_TSP_MALFORMED);
}

TEST_P(TimeStamp, EveryChangedByteOfAResponseIsNoticed)
{
    const std::string response = ask();
    for (std::size_t i = 0; i < response.size(); i += 3) {
        std::string changed = response;
        changed[i] = static_cast<char>(changed[i] ^ (1 << i % 8));
        ByteString token(toolkit);
        ByteString certificate(toolkit);
        const int result = verifyResponse(changed, token, certificate);
        tally("changed time stamps");
        EXPECT_TRUE(result == 0
                ? infoOf(token.bytes())[4] == sha256Hex(document) && certificate.bytes() == file("tsa.crt")
                : isStampCode(result))
            << i << " " << result;
    }
}

TEST_P(TimeStamp, EveryChangedByteIsNoticed)
{
    const std::string token = stamped();
    const auto texts = infoOf(token);
    for (std::size_t i = 0; i < token.size(); ++i) {
        std::string changed = token;
        changed[i] = static_cast<char>(changed[i] ^ 0x55);
        ByteString certificate(toolkit);
        const int result = verifyToken(changed, certificate);
        tally("changed time stamps");
        if (result != 0) {
            EXPECT_TRUE(isStampCode(result)) << i << " " << result;
            continue;
        }
        EXPECT_EQ(certificate.bytes(), file("tsa.crt")) << i; // some bytes say nothing, such as the list of hashes
        EXPECT_EQ(infoOf(changed), texts) << i;
    }
}

TEST(HvtkTimeStamp, AllStepsInOne)
{
    const ToolkitLibrary toolkit("HVTK_");
    const std::string url = "http://127.0.0.1:" + std::to_string(authority().server->port()) + "/stamp";
    ByteString data(toolkit, document);
    ByteString ofData(toolkit);
    ByteString ofFile(toolkit);
    BINSTR* const none = nullptr;
    ASSERT_EQ(
        toolkit("TSP_TimeStampData", text(url), 0, 0, text(""), data.get(), true, none, none, ofData.get()), 0)
        << toolkit.errorText();
    const std::string path = authority().workshop.path("data");
    ASSERT_EQ(
        toolkit("TSP_TimeStampFile", text(url), 0, 0, text(""), text(path), true, none, none, ofFile.get()), 0)
        << toolkit.errorText();
    EXPECT_EQ(toolkit("TSP_VerifyToken2", text(path), ofData.get()), 0);
    EXPECT_EQ(toolkit("TSP_VerifyToken2", text(path), ofFile.get()), 0);
    const std::string none2 = path + ".none";
    EXPECT_EQ(toolkit("TSP_TimeStampFile", text(url), 0, 0, text(""), text(none2), true, none, none, ofFile.get()),
        SIGIL_TK_FILE_NOT_FOUND);
}
