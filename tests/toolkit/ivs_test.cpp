// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Certificates validated by a server, and by one that tells lies.

#include "tests/toolkit/server.h"
#include "tests/toolkit/toolkit_library.h"
#include "tests/toolkit/workshop.h"
#include "toolkit/engine/base/settings.h"
#include "toolkit/engine/status/ivs.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <memory>

using namespace toolkit_test;

namespace {

// What the identity data in the certificates were made of.
constexpr const char* number = "0000001111111";
const std::string randomValue = fromHex("a0a1a2a3a4a5a6a7a8a9aaabacadaeafb0b1b2b3");

const std::string userExtensions = "keyUsage=digitalSignature" + identityExtension();

/** A server, those who might sign in its place, and users of the authority that it trusts and of another. */
class Validation {
public:
    Validation()
    {
        const std::string isAuthority = "basicConstraints=critical,CA:TRUE\nsubjectKeyIdentifier=hash";
        const std::string signs =
            "keyUsage=digitalSignature\nextendedKeyUsage=1.3.6.1.5.5.7.3.15\nsubjectKeyIdentifier=hash";
        const std::string sameNumber = "-days 365 -set_serial 77";
        certificate("ca", "CA", isAuthority);
        certificate("other", "Other CA", isAuthority);
        workshop.certificate("server", "/C=KR/O=test/CN=Server", signs, "ca", sameNumber); // RSA, as most are
        certificate("impostor", "Server", signs, "ca", sameNumber);
        certificate("second", "Second server", signs, "ca");
        certificate("expired", "Expired", signs, "ca", "-days -1");
        certificate("encrypts", "Encrypts", "keyUsage=keyEncipherment", "ca");
        certificate("user", "User", userExtensions, "ca");
        certificate("foreign", "Foreign", userExtensions, "other");
        validator = std::make_unique<Server>(Server::validator(workshop, "ca", "server"));
        liar = std::make_unique<Server>(Server::answering(workshop, ""));
    }

    /** Small keys, because there are many. */
    void certificate(const std::string& name, const std::string& commonName, const std::string& extensions,
        const std::string& issuer = {}, const std::string& options = "-days 365") const
    {
        workshop.certificate(name, "/C=KR/O=test/CN=" + commonName, extensions, issuer, options,
            "ec -pkeyopt ec_paramgen_curve:P-256");
    }

    Workshop workshop;
    std::unique_ptr<Server> validator;
    std::unique_ptr<Server> liar; ///< answers the content of the file "answer"
};

const Validation& validation()
{
    static const Validation made;
    return made;
}

std::string file(const std::string& name) { return validation().workshop.read(name); }

std::string urlOf(const Server& server) { return "http://127.0.0.1:" + std::to_string(server.port()) + "/scvp"; }

class Ivs : public testing::TestWithParam<const char*> {
protected:
    Ivs()
    {
        lie("{}");
        settings("[IVS]\nURL = " + urlOf(*validation().validator) + "\n");
    }

    /** What the server says otherwise than it should, as validator.py takes it. */
    static void lie(const std::string& lies) { validation().workshop.write("lies", lies); }
    static void settings(const std::string& content) { validation().workshop.write("ivs.conf", content); }

    int verify(const std::string& certificate = "user", const std::string& server = "server")
    {
        ByteString subject(toolkit, file(certificate + ".crt"));
        ByteString trusted(toolkit, file(server + ".crt"));
        return toolkit("CERT_VerifyByIVS", text(conf), subject.get(), trusted.get());
    }
    int verifyAfter(const std::string& lies, const std::string& server = "server")
    {
        lie(lies);
        return verify("user", server);
    }
    int verifyIdentity(const std::string& certificate, const std::string& secret, const std::string& idn)
    {
        ByteString subject(toolkit, file(certificate + ".crt"));
        ByteString value(toolkit, secret);
        ByteString trusted(toolkit, file("server.crt"));
        return toolkit("VID_VerifyByIVS", text(conf), subject.get(), value.get(), text(idn), trusted.get());
    }

    const std::string conf = validation().workshop.path("ivs.conf");
    ToolkitLibrary toolkit{GetParam()};
};

/** A server that answers every request with the same bytes. */
class IvsLies : public Ivs {
protected:
    IvsLies() { settings("[IVS]\nURL=" + urlOf(*validation().liar)); }
    int verifyAfter(const std::string& answer)
    {
        validation().workshop.write("answer", answer);
        return verify();
    }
    /** What the server says about the same certificate in another request. */
    std::string recorded()
    {
        settings("[IVS]\nURL=" + urlOf(*validation().validator));
        EXPECT_EQ(verify(), 0) << toolkit.errorText();
        settings("[IVS]\nURL=" + urlOf(*validation().liar));
        validation().workshop.run("python3 -c \"import urllib.request as u; open('recorded', 'wb').write(u.urlopen("
                                  "u.Request('" +
            urlOf(*validation().validator) +
            "', open('request', 'rb').read(), {'Content-Type': 'application/scvp-cv-request'})).read())\"");
        return file("recorded");
    }
};

std::string faceName(const testing::TestParamInfo<const char*>& info) { return std::string(info.param, 4); }

} // namespace

INSTANTIATE_TEST_SUITE_P(Faces, Ivs, testing::Values("HVTK_", "GPKI_"), faceName);
INSTANTIATE_TEST_SUITE_P(Faces, IvsLies, testing::Values("HVTK_", "GPKI_"), faceName);

TEST(IvsRequest, HasTheBytesOfTheStandard)
{
    constexpr std::string_view pem = R"(-----BEGIN CERTIFICATE-----
MIIBLjCB4aADAgECAhR3TYxuZU4Fz65j++dsnTAPzI+vJTAFBgMrZXAwDDEKMAgG
A1UEAwwBYTAgFw0yNjExMjEyMDM2NDBaGA8yMTI2MTAyODIwMzY0MFowDDEKMAgG
A1UEAwwBYTAqMAUGAytlcAMhAJR0psEm62jX94b/1PFQdkjWUNodJ+llNE2FHMHc
/6gSo1MwUTAdBgNVHQ4EFgQUSVF6lxg2CHO2dbN/B4i3yW49vykwHwYDVR0jBBgw
FoAUSVF6lxg2CHO2dbN/B4i3yW49vykwDwYDVR0TAQH/BAUwAwEB/zAFBgMrZXAD
QQBdilvB6zDl6sLo/wPcifHWqhnlWvbGxCZvS0tLRUifVMPmpZWThJlGpbVRPJem
FTtr7sV2OdS/2w4laQslLZgN
-----END CERTIFICATE-----
)";
    const toolkit::Library library;
    const toolkit::Certificate certificate(library, toolkit::view(pem));
    const auto hex = [](toolkit::View bytes) { return toHex({toolkit::chars(bytes), bytes.size()}); };
    const toolkit::IvsRequest request = makeIvsRequest(library, certificate);
    ASSERT_EQ(request.nonce.size(), 16U);
    const std::string inCertificate = hex(certificate.der()).substr(2 * 4); // without 3082012e
    EXPECT_EQ(hex(request.message),
        "30820180"                   // ContentInfo
        "060b2a864886f70d010910010a" //   id-ct-scvp-certValRequest
        "a082016f"                   //   [0] EXPLICIT
        "3082016b"                   //     CVRequest
        "30820155"                   //       Query
        "a0820132"                   //         queriedCerts: pkcRefs [0]
        "a082012e"                   //           cert [0]
            + inCertificate +        //
            "300a"
            "06082b06010505071103" //         checks: id-stc-build-status-checked-pkc-path
            "300c"
            "300a"
            "06082b06010505071301" //         validationPolicy: id-svp-defaultValPolicy
            "3003"
            "830100" //         responseFlags: cachedResponse [3] FALSE
            "8110" +
            hex(request.nonce)); //       requestNonce [1]
    EXPECT_THAT(hex(request.message), testing::EndsWith(hex(request.content)));
    EXPECT_NE(makeIvsRequest(library, certificate).nonce, request.nonce);
}

TEST(Settings, AreFoundInTheirSection)
{
    constexpr std::string_view content = "URL=before\n[other]\nURL=other\n[IVS]\r\n#URL=comment\nURLS=no\n"
                                         "  URL \t= http://a/?b=c \r\nURL=second\n[late]\nURL=late\nempty=\nkey";
    EXPECT_EQ(toolkit::settingOf(content, "IVS", "URL"), "http://a/?b=c");
    EXPECT_EQ(toolkit::settingOf(content, "late", "URL"), "late");
    EXPECT_EQ(toolkit::settingOf("[IVS]\nURL=last", "IVS", "URL"), "last");
    for (const std::string key : {"empty", "key", "none"})
        EXPECT_EQ(toolkit::settingOf(content, "late", key), "") << key;
    EXPECT_EQ(toolkit::settingOf(content, "none", "URL"), "");
    EXPECT_EQ(toolkit::settingOf("", "IVS", "URL"), "");
}

TEST_P(Ivs, AValidCertificateIsAccepted) { EXPECT_EQ(verify(), 0) << toolkit.errorText(); }

TEST_P(Ivs, ACertificateThatTheServerDoesNotTrustIsRefused)
{
    EXPECT_EQ(verify("foreign"), SIGIL_TK_IVS_INVALID);
    EXPECT_STREQ(toolkit.errorText().c_str(),
        "The validation server does not accept the certificate: reply status 6, 1.3.6.1.5.5.7.19.3.4");
}

TEST_P(Ivs, WhatTheServerObjectsToIsTold)
{
    for (const int status : {1, 2, 3, 127, 128})
        EXPECT_EQ(verifyAfter("{\"check\": " + std::to_string(status) + "}"), SIGIL_TK_IVS_INVALID) << status;
    EXPECT_THAT(toolkit.errorText(), testing::HasSubstr("check status 128"));
    for (const int status : {1, 6, 8})
        EXPECT_EQ(verifyAfter("{\"reply\": " + std::to_string(status) + "}"), SIGIL_TK_IVS_INVALID) << status;
    EXPECT_EQ(verifyAfter(R"({"reply": 5, "check": 0, "checks": 0})"), SIGIL_TK_IVS_INVALID);
    EXPECT_THAT(toolkit.errorText(), testing::HasSubstr("reply status 5"));
}

TEST_P(Ivs, EverythingThatAResponseMayHoldIsRead)
{
    EXPECT_EQ(verifyAfter(R"({"all": true, "extension": "harmless", "reply extension": "harmless"})"), 0)
        << toolkit.errorText();
    EXPECT_EQ(verifyAfter(R"({"hash": "2.16.840.1.101.3.4.2.1"})"), 0) << toolkit.errorText();
    EXPECT_EQ(verifyAfter(R"({"options": ["-nocerts"]})"), 0) << toolkit.errorText();
    EXPECT_EQ(verifyAfter(R"({"options": ["-keyid"]})"), 0) << toolkit.errorText();
}

TEST_P(Ivs, AnExtensionThatMustNotBeIgnoredIsRefused)
{
    EXPECT_EQ(verifyAfter(R"({"extension": "critical"})"), SIGIL_TK_IVS_MALFORMED);
    EXPECT_EQ(verifyAfter(R"({"reply extension": "critical"})"), SIGIL_TK_IVS_MALFORMED);
}

TEST_P(Ivs, AnErrorOfTheServerIsTold)
{
    for (const std::string form : {"signed", "plain"}) {
        EXPECT_EQ(verifyAfter(R"({"status": 10, "text": "later", "form": ")" + form + "\"}"), SIGIL_TK_IVS_REFUSED);
        EXPECT_STREQ(toolkit.errorText().c_str(), "The validation server refuses to answer: status 10, later");
    }
    for (const int status : {1, 26, 50})
        EXPECT_EQ(verifyAfter("{\"status\": " + std::to_string(status) + "}"), SIGIL_TK_IVS_REFUSED) << status;
    EXPECT_THAT(toolkit.errorText(), testing::EndsWith("status 50"));
}

TEST_P(Ivs, OnlyTheGivenCertificateMaySign)
{
    EXPECT_EQ(verify("user", "impostor"), SIGIL_TK_IVS_SIGNER);
    EXPECT_EQ(verify("user", "ca"), SIGIL_TK_IVS_SIGNER) << "its issuer is not meant";
    EXPECT_EQ(verifyAfter(R"({"signer": "impostor"})"), SIGIL_TK_IVS_SIGNER);
    EXPECT_EQ(verifyAfter(R"({"signer": "impostor"})", "impostor"), 0) << toolkit.errorText();
    EXPECT_EQ(verifyAfter(R"({"signer": "second"})"), SIGIL_TK_IVS_SIGNER);
    EXPECT_EQ(verifyAfter(R"({"signer": "second"})", "second"), 0) << toolkit.errorText();
    EXPECT_EQ(verifyAfter(R"({"signer": "server second"})"), SIGIL_TK_IVS_SIGNER) << "one signer too many";
}

TEST_P(Ivs, TheGivenCertificateMustBeValidAndMeantForSignatures)
{
    EXPECT_EQ(verifyAfter(R"({"signer": "expired"})", "expired"), SIGIL_TK_IVS_SIGNER);
    EXPECT_EQ(verifyAfter(R"({"signer": "encrypts"})", "encrypts"), SIGIL_TK_IVS_SIGNER);
    EXPECT_EQ(verifyAfter(R"({"signer": "ca"})", "ca"), 0) << "one that limits nothing: " << toolkit.errorText();
}

TEST_P(Ivs, AResponseWithoutASignatureIsRefused)
{
    EXPECT_EQ(verifyAfter(R"({"form": "plain"})"), SIGIL_TK_IVS_SIGNER);
    EXPECT_EQ(verifyAfter(R"({"form": "no signer"})"), SIGIL_TK_IVS_SIGNER);
}

TEST_P(Ivs, TheSignatureCoversTheTypeOfTheContent)
{
    const std::string policyResponse = "1.2.840.113549.1.9.16.1.13";
    const std::string response = "1.2.840.113549.1.9.16.1.11";
    EXPECT_EQ(verifyAfter(R"({"type": ")" + policyResponse + "\"}"), SIGIL_TK_IVS_MALFORMED);
    EXPECT_EQ(verifyAfter(R"({"form": "plain", "type": ")" + policyResponse + "\"}"), SIGIL_TK_IVS_MALFORMED);
    EXPECT_EQ(verifyAfter(R"({"type": ")" + policyResponse + R"(", "called": ")" + response + "\"}"),
        SIGIL_TK_IVS_SIGNER);
    EXPECT_EQ(verifyAfter(R"({"options": ["-noattr"]})"), SIGIL_TK_IVS_SIGNER);
}

TEST_P(Ivs, AnAnswerToAnotherRequestIsRefused)
{
    for (const std::string lie : {"other nonce", "no nonce", "other request", "no reference", "full request"})
        EXPECT_EQ(verifyAfter("{\"" + lie + "\": true}"), SIGIL_TK_IVS_OTHER_REQUEST) << lie;
    EXPECT_EQ(verifyAfter(R"({"hash": "1.2.3"})"), SIGIL_TK_ALGORITHM);
}

TEST_P(Ivs, AnAnswerHoldsForFiveMinutes)
{
    EXPECT_EQ(verifyAfter(R"({"age": 200})"), 0) << toolkit.errorText();
    EXPECT_EQ(verifyAfter(R"({"age": -200})"), 0) << toolkit.errorText();
    EXPECT_EQ(verifyAfter(R"({"age": 400})"), SIGIL_TK_IVS_STALE);
    EXPECT_EQ(verifyAfter(R"({"age": -400})"), SIGIL_TK_IVS_STALE);
}

TEST_P(Ivs, AnAnswerAboutSomethingElseIsRefused)
{
    EXPECT_EQ(verifyAfter(R"({"certificate": "foreign.crt"})"), SIGIL_TK_IVS_NO_ANSWER);
    EXPECT_EQ(verifyAfter(R"({"reference": 161})"), SIGIL_TK_IVS_NO_ANSWER);
    EXPECT_EQ(verifyAfter(R"({"checked": "1.3.6.1.5.5.7.17.1"})"), SIGIL_TK_IVS_NO_ANSWER) << "merely built";
    for (const int count : {0, 2}) {
        EXPECT_EQ(verifyAfter("{\"checks\": " + std::to_string(count) + "}"), SIGIL_TK_IVS_NO_ANSWER);
        EXPECT_EQ(verifyAfter("{\"replies\": " + std::to_string(count) + "}"), SIGIL_TK_IVS_NO_ANSWER);
    }
}

TEST_P(Ivs, WhatIsNotAResponseIsRefused)
{
    EXPECT_EQ(verifyAfter(R"({"version": 2})"), SIGIL_TK_IVS_MALFORMED);
    EXPECT_EQ(verifyAfter(R"({"version": 1180591620717411303424})"), SIGIL_TK_IVS_MALFORMED) << "too large";
    EXPECT_EQ(verifyAfter(R"({"trailer": "00"})"), SIGIL_TK_IVS_MALFORMED);
    EXPECT_EQ(verifyAfter(R"({"content": "0500"})"), SIGIL_TK_IVS_MALFORMED);
    EXPECT_EQ(verifyAfter(R"({"form": "plain", "behind": "00"})"), SIGIL_TK_IVS_MALFORMED);
    EXPECT_EQ(verifyAfter(R"({"form": "no content"})"), SIGIL_TK_IVS_MALFORMED);
}

TEST_P(Ivs, SettingsAndServersThatAreNotThereHaveTheirCodes)
{
    for (const std::string content : {"", "[IVS]\n", "[IVS]\nURL=\n", "URL=http://127.0.0.1:1/\n"}) {
        settings(content);
        EXPECT_EQ(verify(), SIGIL_TK_URL) << content;
        EXPECT_THAT(toolkit.errorText(), testing::EndsWith(": no URL in section [IVS]"));
    }
    for (const std::string url : {"httpss://127.0.0.1/", "ldap://127.0.0.1/", "file:///etc/passwd", "127.0.0.1"}) {
        settings("[IVS]\nURL=" + url);
        EXPECT_EQ(verify(), SIGIL_TK_URL) << url;
    }
    settings("[IVS]\nURL=http://127.0.0.1:1/");
    EXPECT_EQ(verify(), SIGIL_TK_FETCH);
    std::filesystem::remove(conf);
    EXPECT_EQ(verify(), SIGIL_TK_FILE_NOT_FOUND);
}

TEST_P(Ivs, WhatIsMissingIsTold)
{
    ByteString subject(toolkit, file("user.crt"));
    ByteString value(toolkit, randomValue);
    ByteString server(toolkit, file("server.crt"));
    ByteString none(toolkit);
    ByteString garbage(toolkit, "garbage");
    char* const path = text(conf);
    char* const noText = nullptr;
    BINSTR* const noRecord = nullptr;
    const auto check = [&](char* settingsPath, BINSTR* certificate, BINSTR* by) {
        return toolkit("CERT_VerifyByIVS", settingsPath, certificate, by);
    };
    const auto checkIdentity = [&](char* settingsPath, BINSTR* certificate, BINSTR* secret, char* idn, BINSTR* by) {
        return toolkit("VID_VerifyByIVS", settingsPath, certificate, secret, idn, by);
    };
    validation().workshop.write("request", "none");
    EXPECT_EQ(check(noText, subject.get(), server.get()), SIGIL_TK_ARGUMENT);
    EXPECT_EQ(check(text(""), subject.get(), server.get()), SIGIL_TK_ARGUMENT);
    EXPECT_EQ(checkIdentity(noText, subject.get(), value.get(), text(number), server.get()), SIGIL_TK_ARGUMENT);
    EXPECT_EQ(checkIdentity(path, subject.get(), value.get(), noText, server.get()), SIGIL_TK_ARGUMENT);
    for (BINSTR* const empty : {none.get(), noRecord}) {
        EXPECT_EQ(check(path, empty, server.get()), SIGIL_TK_ARGUMENT);
        EXPECT_EQ(check(path, subject.get(), empty), SIGIL_TK_ARGUMENT);
        EXPECT_EQ(checkIdentity(path, empty, value.get(), text(number), server.get()), SIGIL_TK_ARGUMENT);
        EXPECT_EQ(checkIdentity(path, subject.get(), empty, text(number), server.get()), SIGIL_TK_ARGUMENT);
        EXPECT_EQ(checkIdentity(path, subject.get(), value.get(), text(number), empty), SIGIL_TK_ARGUMENT);
    }
    EXPECT_EQ(check(path, garbage.get(), server.get()), SIGIL_TK_CERT_MALFORMED);
    EXPECT_EQ(check(path, subject.get(), garbage.get()), SIGIL_TK_CERT_MALFORMED);
    EXPECT_EQ(file("request"), "none") << "asked in spite of that";
}

TEST_P(Ivs, TheSettingsStandInTheFolderOfTheMedia)
{
    const bool isHvtk = GetParam() == std::string("HVTK_");
    ByteString subject(toolkit, file("user.crt"));
    ByteString server(toolkit, file("server.crt"));
    const std::string relative = "ivs.conf";
    const auto check = [&] { return toolkit("CERT_VerifyByIVS", text(relative), subject.get(), server.get()); };
    EXPECT_EQ(check(), SIGIL_TK_FILE_NOT_FOUND);
    const std::string folder = validation().workshop.path("");
    ASSERT_EQ(isHvtk ? toolkit("MEDIA_Load", text(folder)) : toolkit("STORAGE_Load", text(folder)), 0);
    EXPECT_EQ(check(), 0) << toolkit.errorText();
}

TEST_P(Ivs, TheIdentityIsCheckedToo)
{
    std::string otherRandom = randomValue;
    otherRandom.back() ^= 1;
    EXPECT_EQ(verifyIdentity("user", randomValue, number), 0) << toolkit.errorText();
    EXPECT_EQ(verifyIdentity("user", randomValue, "000000-1111111"), 0) << toolkit.errorText();
    EXPECT_EQ(verifyIdentity("user", randomValue, "0000001111112"), SIGIL_TK_VID_MISMATCH);
    EXPECT_EQ(verifyIdentity("user", otherRandom, number), SIGIL_TK_VID_MISMATCH);
    EXPECT_EQ(verifyIdentity("server", randomValue, number), SIGIL_TK_VID_NO_DATA);
    EXPECT_EQ(verifyIdentity("foreign", randomValue, number), SIGIL_TK_IVS_INVALID) << "its identity is right";
}

TEST_P(Ivs, IdentityAndRandomValueDoNotLeaveTheMachine)
{
    ASSERT_EQ(verifyIdentity("user", randomValue, number), 0) << toolkit.errorText();
    const std::string request = file("request");
    EXPECT_THAT(request, testing::HasSubstr(file("user.crt").substr(4))) << "the certificate is asked about";
    EXPECT_THAT(request, testing::Not(testing::HasSubstr(randomValue)));
    EXPECT_THAT(request, testing::Not(testing::HasSubstr(number)));
    EXPECT_THAT(toHex(request), testing::Not(testing::HasSubstr(toHex(randomValue))));
}

TEST_P(IvsLies, GarbageIsRefused)
{
    const std::string genuine = recorded();
    for (const std::string& answer : {std::string(), std::string("<html>garbage</html>"), std::string(3000, '\x30'),
             genuine + "x", genuine.substr(0, genuine.size() - 1), file("user.crt"), file("request")})
        EXPECT_EQ(verifyAfter(answer), SIGIL_TK_IVS_MALFORMED) << answer.size();
    EXPECT_EQ(verifyAfter(std::string(300 * 1024, '\x30')), SIGIL_TK_FETCH) << "more than is read";
}

TEST_P(IvsLies, AnOldAnswerIsToldByItsNonce) { EXPECT_EQ(verifyAfter(recorded()), SIGIL_TK_IVS_OTHER_REQUEST); }

TEST_P(IvsLies, AChangedAnswerIsToldByItsSignature)
{
    std::string answer = recorded();
    const std::string context = fromHex("020201"
                                        "2c"); // the server's configuration, 300
    const std::size_t at = answer.find(context);
    ASSERT_NE(at, answer.npos);
    answer[at + 3] = '\x2d';
    EXPECT_EQ(verifyAfter(answer), SIGIL_TK_IVS_SIGNER);
}

TEST_P(IvsLies, OnlyAnAnswerWithStatus200Counts)
{
    const std::string answer = recorded();
    for (const int status : {302, 500}) {
        const Server server = Server::answering(validation().workshop, answer, status);
        settings("[IVS]\nURL=" + urlOf(server));
        EXPECT_EQ(verify(), SIGIL_TK_FETCH) << status;
    }
    const Server absent = Server::answering(validation().workshop, answer, 404);
    settings("[IVS]\nURL=" + urlOf(absent));
    EXPECT_EQ(verify(), SIGIL_TK_NOT_FOUND);
}
