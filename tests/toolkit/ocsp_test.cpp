// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// The state of a certificate from a real responder, and from one that tells lies.

#include "tests/support/tally.h"
#include "tests/toolkit/server.h"
#include "tests/toolkit/toolkit_library.h"
#include "tests/toolkit/workshop.h"
#include "toolkit/engine/x509/text.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <ctime>
#include <filesystem>
#include <map>
#include <memory>

using namespace toolkit_test;

namespace {

constexpr const char* delegate = "extendedKeyUsage=OCSPSigning";

/** An authority with a good, a revoked and an unknown user, and everybody who might sign an answer. */
class Authority {
public:
    Authority()
    {
        const std::string isAuthority = "basicConstraints=critical,CA:TRUE\nsubjectKeyIdentifier=hash";
        certificate("ca", "/C=KR/O=test/CN=CA", isAuthority);
        certificate("other", "/C=KR/O=test/CN=Other CA", isAuthority);
        workshop.certificate("responder", "/C=KR/O=test/CN=Responder", delegate, "ca"); // RSA, as most are
        certificate("plain", "/C=KR/O=test/CN=Without purpose", "keyUsage=digitalSignature", "ca");
        certificate("foreign", "/C=KR/O=test/CN=Of another", delegate, "other");
        certificate("expired", "/C=KR/O=test/CN=Expired", delegate, "ca", "-days -1");
        workshop.certificate("short", "/C=KR/O=test/CN=Short", delegate, "ca", "-days 365", "rsa:512");
        workshop.certificate("short_ca", "/C=KR/O=test/CN=Short CA", isAuthority, {}, "-days 365", "rsa:512");
        certificate("of_short_ca", "/C=KR/O=test/CN=good", "keyUsage=digitalSignature", "short_ca");
        const std::array users{"good", "revoked", "unknown"};
        for (std::size_t i = 0; i < users.size(); ++i)
            certificate(users[i], std::string("/C=KR/O=test/CN=") + users[i], "keyUsage=digitalSignature", "ca",
                "-days 365 -set_serial " + std::to_string(4096 + i));
        workshop.write("index",
            "V\t350101000000Z\t\t1000\tunknown\t/C=KR/O=test/CN=good\n"
            "R\t350101000000Z\t260102030405Z,keyCompromise\t1001\tunknown\t/C=KR/O=test/CN=revoked\n");
        signedByDelegate = respond("responder", "-nmin 10");
        liar = std::make_unique<Server>(Server::answering(workshop, ""));
    }

    /** Small keys, because there are many. */
    void certificate(const std::string& name, const std::string& subject, const std::string& extensions,
        const std::string& issuer = {}, const std::string& options = "-days 365") const
    {
        workshop.certificate(name, subject, extensions, issuer, options, "ec -pkeyopt ec_paramgen_curve:P-256");
    }

    std::unique_ptr<Server> respond(const std::string& signer, const std::string& options = {}) const
    {
        return std::make_unique<Server>(Server::responder(workshop, "ca", signer, options));
    }

    Workshop workshop;
    std::unique_ptr<Server> signedByDelegate;
    std::unique_ptr<Server> liar; ///< answers the content of the file "answer"
};

const Authority& authority()
{
    static const Authority made;
    return made;
}

struct Check {
    std::string certificate = "good";
    std::string responder = "responder";
    std::string signer{}; ///< empty: unsigned
    std::string key{};    ///< empty: the signer's own
};

class Ocsp : public testing::Test {
protected:
    Ocsp() { trust("ca"); }

    void trust(const std::string& name)
    {
        ByteString certificate(toolkit, file(name + ".crt"));
        ASSERT_EQ(toolkit("CERT_AddTrustedCert", certificate.get()), 0);
    }
    void verifyAt(std::time_t time)
    {
        ASSERT_EQ(toolkit("CERT_SetVerifyEnv", 0, 2, false, text(""), text(toolkit::timeText(time))), 0);
    }
    int ask(const std::string& url, const Check& check = {})
    {
        const bool isSigned = !check.signer.empty();
        ByteString certificate(toolkit, file(check.certificate + ".crt"));
        ByteString signer(toolkit, isSigned ? file(check.signer + ".crt") : "");
        ByteString key(toolkit, isSigned ? file((check.key.empty() ? check.signer : check.key) + ".key") : "");
        ByteString responder(toolkit, file(check.responder + ".crt"));
        date.fill('#');
        status = -1;
        const int code = toolkit("CERT_CheckStatByOCSP", certificate.get(), isSigned, signer.get(), key.get(),
            text(url), responder.get(), date.data(), &status);
        if (code != 0) {
            EXPECT_EQ(status, -1) << "written in spite of the failure";
            EXPECT_EQ(date[0], '#') << "written in spite of the failure";
        }
        EXPECT_EQ(date[25], '#') << "written beyond the room for a date";
        return code;
    }
    int ask(const Server& server, const Check& check = {}) { return ask(urlOf(server), check); }
    static std::string urlOf(const Server& server) { return "http://127.0.0.1:" + std::to_string(server.port()); }
    static std::string file(const std::string& name) { return authority().workshop.read(name); }
    static const Server& responder() { return *authority().signedByDelegate; }

    ToolkitLibrary toolkit{"GPKI_"};
    std::array<char, 32> date{};
    int status = -1;
};

/** A server that answers every request with the same bytes. */
class Lies : public Ocsp {
protected:
    int askAfter(const std::string& answer)
    {
        authority().workshop.write("answer", answer);
        return ask(*authority().liar);
    }
    /** What the real responder says to another request about the same certificate. */
    static std::string recorded()
    {
        authority().workshop.run("openssl ocsp -issuer ca.pem -cert good.pem -nonce -noverify -url " +
            urlOf(responder()) + " -respout recorded.der");
        return file("recorded.der");
    }
};

} // namespace

TEST_F(Ocsp, AGoodCertificateHasNoDate)
{
    ASSERT_EQ(ask(responder()), 0) << toolkit.errorText();
    EXPECT_EQ(status, SIGIL_TK_STATUS_GOOD);
    EXPECT_STREQ(date.data(), "");
}

TEST_F(Ocsp, ARevokedCertificateHasTheDateInLocalTime)
{
    ASSERT_EQ(ask(responder(), {"revoked"}), 0) << toolkit.errorText();
    EXPECT_EQ(status, SIGIL_TK_STATUS_REVOKED);
    constexpr std::time_t at = 1767323045; // 2026-01-02 03:04:05 UTC
    EXPECT_EQ(date.data(), toolkit::timeText(at));
}

TEST_F(Ocsp, AnUnknownCertificateIsAFailure) { EXPECT_EQ(ask(responder(), {"unknown"}), SIGIL_TK_OCSP_UNKNOWN); }

TEST_F(Ocsp, ARequestMayBeSigned)
{
    ASSERT_EQ(ask(responder(), {"good", "responder", "good"}), 0) << toolkit.errorText();
    EXPECT_EQ(status, SIGIL_TK_STATUS_GOOD);
    EXPECT_EQ(ask(responder(), {"good", "responder", "good", "revoked"}), SIGIL_TK_KEY_MISMATCH);
}

TEST_F(Ocsp, TheAuthorityMaySignItself)
{
    const auto server = authority().respond("ca", "-nmin 10");
    ASSERT_EQ(ask(*server, {"good", "ca"}), 0) << toolkit.errorText();
    EXPECT_EQ(ask(*server, {"good", "responder"}), SIGIL_TK_OCSP_SIGNER) << "another responder was named";
    const ToolkitLibrary trustsNothing("GPKI_");
    ByteString certificate(trustsNothing, file("revoked.crt"));
    ByteString ca(trustsNothing, file("ca.crt"));
    ASSERT_EQ(trustsNothing("CERT_CheckStatByOCSP", certificate.get(), false, nullptr, nullptr,
                  text(urlOf(*server)), ca.get(), date.data(), &status),
        0);
    EXPECT_EQ(status, SIGIL_TK_STATUS_REVOKED) << "the responder is the issuer, so nothing else is needed";
}

TEST_F(Ocsp, TheAuthoritysDelegateMayComeWithTheResponse)
{
    EXPECT_EQ(ask(responder(), {"good", "ca"}), 0) << toolkit.errorText();
    const auto silent = authority().respond("responder", "-nmin 10 -resp_no_certs");
    EXPECT_EQ(ask(*silent, {"good", "ca"}), SIGIL_TK_OCSP_SIGNER);
    EXPECT_EQ(ask(*silent), 0) << toolkit.errorText();
}

TEST_F(Ocsp, WhoMayNotSignIsRefused)
{
    for (const std::string signer : {"plain", "foreign", "expired"}) {
        const auto server = authority().respond(signer, "-nmin 10");
        EXPECT_EQ(ask(*server, {"good", signer}), SIGIL_TK_OCSP_SIGNER) << signer << " named by the caller";
        EXPECT_EQ(ask(*server, {"good", "ca"}), SIGIL_TK_OCSP_SIGNER) << signer << " in the response";
        EXPECT_EQ(ask(*server), SIGIL_TK_OCSP_SIGNER) << signer << " in place of the responder";
    }
}

TEST_F(Ocsp, ASignatureThatAnybodyCanMakeIsRefused)
{
    const auto broken = authority().respond("responder", "-nmin 10 -rmd md5");
    EXPECT_EQ(ask(*broken), SIGIL_TK_OCSP_SIGNER) << "MD5, named by the caller";
    EXPECT_EQ(ask(*broken, {"good", "ca"}), SIGIL_TK_OCSP_SIGNER) << "MD5, in the response";
    const auto shortKey = authority().respond("short", "-nmin 10");
    EXPECT_EQ(ask(*shortKey, {"good", "short"}), SIGIL_TK_OCSP_SIGNER) << "RSA of 512 bits, named by the caller";
    EXPECT_EQ(ask(*shortKey, {"good", "ca"}), SIGIL_TK_OCSP_SIGNER) << "RSA of 512 bits, in the response";
    trust("short_ca");
    EXPECT_EQ(ask(responder(), {"of_short_ca", "short_ca"}), SIGIL_TK_VERIFY_FAILED) << "the authority's own key";
}

TEST_F(Ocsp, TheIssuerMustBeKnown)
{
    const ToolkitLibrary trustsNothing("GPKI_");
    ByteString certificate(trustsNothing, file("good.crt"));
    ByteString responderCertificate(trustsNothing, file("responder.crt"));
    const auto check = [&] {
        return trustsNothing("CERT_CheckStatByOCSP", certificate.get(), false, nullptr, nullptr,
            text(urlOf(responder())), responderCertificate.get(), date.data(), &status);
    };
    EXPECT_EQ(check(), SIGIL_TK_VERIFY_NO_ISSUER);
    ByteString ca(trustsNothing, file("ca.crt"));
    ASSERT_EQ(trustsNothing("API_SetCaPubs", ca.get()), 0);
    EXPECT_EQ(check(), 0);
}

TEST_F(Ocsp, AnAnswerHoldsForItsTimeOnly)
{
    const std::time_t now = std::time(nullptr);
    verifyAt(now + 600 + 200);
    EXPECT_EQ(ask(responder()), 0) << "five minutes are allowed to the clocks";
    verifyAt(now + 600 + 400);
    EXPECT_EQ(ask(responder()), SIGIL_TK_OCSP_STALE);
    const auto withoutEnd = authority().respond("ca");
    verifyAt(now + 200);
    EXPECT_EQ(ask(*withoutEnd, {"good", "ca"}), 0) << toolkit.errorText();
    verifyAt(now + 400);
    EXPECT_EQ(ask(*withoutEnd, {"good", "ca"}), SIGIL_TK_OCSP_STALE);
    verifyAt(now - 400);
    EXPECT_EQ(ask(*withoutEnd, {"good", "ca"}), SIGIL_TK_OCSP_STALE);
}

TEST_F(Ocsp, AddressesAndServersThatDoNotAnswerHaveTheirCodes)
{
    EXPECT_EQ(ask("http://127.0.0.1:1/"), SIGIL_TK_FETCH);
    for (const std::string other : {"httpss://127.0.0.1/", "ldap://127.0.0.1/", "file:///etc/passwd", ""})
        EXPECT_EQ(ask(other), SIGIL_TK_URL) << other;
}

TEST_F(Ocsp, WhatIsMissingIsTold)
{
    ByteString certificate(toolkit, file("good.crt"));
    ByteString none(toolkit);
    const std::string url = urlOf(responder());
    const auto check = [&](BINSTR* subject, bool isSigned, BINSTR* signer, char* address, BINSTR* by, char* out,
                           int* value) {
        return toolkit("CERT_CheckStatByOCSP", subject, isSigned, signer, none.get(), address, by, out, value);
    };
    ByteString by(toolkit, file("responder.crt"));
    char* const out = date.data();
    EXPECT_EQ(check(none.get(), false, nullptr, text(url), by.get(), out, &status), SIGIL_TK_ARGUMENT);
    EXPECT_EQ(check(certificate.get(), true, nullptr, text(url), by.get(), out, &status), SIGIL_TK_ARGUMENT);
    EXPECT_EQ(
        check(certificate.get(), true, certificate.get(), text(url), by.get(), out, &status), SIGIL_TK_ARGUMENT);
    EXPECT_EQ(check(certificate.get(), false, nullptr, nullptr, by.get(), out, &status), SIGIL_TK_ARGUMENT);
    EXPECT_EQ(check(certificate.get(), false, nullptr, text(url), none.get(), out, &status), SIGIL_TK_ARGUMENT);
    EXPECT_EQ(check(certificate.get(), false, nullptr, text(url), by.get(), nullptr, &status), SIGIL_TK_ARGUMENT);
    EXPECT_EQ(check(certificate.get(), false, nullptr, text(url), by.get(), out, nullptr), SIGIL_TK_ARGUMENT);
    EXPECT_EQ(status, -1);
}

TEST_F(Lies, GarbageIsRefused)
{
    for (const std::string& answer : {std::string(), std::string("<html>garbage</html>"), std::string(3000, '\x30'),
             fromHex("30030a0100"), recorded() + "x"})
        EXPECT_EQ(askAfter(answer), SIGIL_TK_OCSP_MALFORMED) << answer.size();
    EXPECT_EQ(askAfter(std::string(300 * 1024, '\x30')), SIGIL_TK_FETCH) << "more than is read";
    EXPECT_EQ(askAfter(fromHex("30030a0103")), SIGIL_TK_OCSP_REFUSED);
    EXPECT_THAT(toolkit.errorText(), testing::HasSubstr("trylater"));
}

TEST_F(Lies, AnOldAnswerIsToldByItsNonce) { EXPECT_EQ(askAfter(recorded()), SIGIL_TK_OCSP_NONCE); }

TEST_F(Lies, AChangedAnswerIsToldByItsSignature)
{
    std::string answer = recorded();
    const std::string name = "Responder";
    const std::size_t at = answer.find(name);
    ASSERT_NE(at, answer.npos);
    answer[at] = 'X';
    EXPECT_EQ(askAfter(answer), SIGIL_TK_OCSP_SIGNER);
}

TEST_F(Lies, ARedirectionIsNotFollowed)
{
    const Server web = Server::web(authority().workshop); // answers 501 to what is posted
    EXPECT_EQ(ask(web), SIGIL_TK_FETCH);
    const Server server = Server::answering(authority().workshop, recorded(), 302);
    EXPECT_EQ(ask(server), SIGIL_TK_FETCH);
}

namespace {

/** The users of the authority and what verifying a response about each of them says. */
const std::map<std::string, int> states{
    {"good", SIGIL_TK_OK}, {"revoked", SIGIL_TK_VERIFY_REVOKED}, {"unknown", SIGIL_TK_OCSP_UNKNOWN}};

/** The same question in single steps, on both faces. */
class OcspSteps : public testing::TestWithParam<const char*> {
protected:
    OcspSteps()
    {
        ByteString ca(toolkit, file("ca.crt"));
        toolkit("CERT_AddTrustedCert", ca.get());
    }

    static std::string file(const std::string& name) { return authority().workshop.read(name); }
    bool hvtk() const { return GetParam() == std::string("HVTK_"); }
    int makeRequest(const std::string& name, ByteString& request, const std::string& signer = "")
    {
        ByteString certificate(toolkit, file(name + ".crt"));
        ByteString signerCertificate(toolkit, file((signer.empty() ? "ca" : signer) + ".crt"));
        ByteString key(toolkit, signer.empty() ? "x" : file(signer + ".key"));
        return toolkit("OCSP_MakeOCSPReq", certificate.get(), !signer.empty(), signerCertificate.get(), key.get(),
            request.get());
    }
    int send(const std::string& url, const std::string& name, ByteString& request, ByteString& response)
    {
        ByteString certificate(toolkit, file(name + ".crt"));
        return toolkit("OCSP_SendAndRecv", text(url), certificate.get(), request.get(), response.get());
    }
    /** As the type 0 toolkit says it: the state of the certificate is the result. */
    int verify(const std::string& name, const std::string& response, ByteString& responder)
    {
        ByteString certificate(toolkit, file(name + ".crt"));
        ByteString message(toolkit, response);
        if (hvtk())
            return toolkit("OCSP_VerifyResMsg", certificate.get(), message.get(), responder.get());
        int count = -1;
        const int code = toolkit("OCSP_VerifyResMsg", certificate.get(), message.get(), &count, responder.get());
        if (code != 0)
            return code;
        EXPECT_EQ(count, 1);
        EXPECT_EQ(toolkit("OCSP_GetCertStatus", 1, &status, date.data(), &reason), SIGIL_TK_INDEX);
        EXPECT_EQ(toolkit("OCSP_GetCertStatus", -1, &status, date.data(), &reason), SIGIL_TK_INDEX);
        EXPECT_EQ(toolkit("OCSP_GetCertStatus", 0, &status, date.data(), &reason), 0);
        const int codes[]{SIGIL_TK_OK, SIGIL_TK_VERIFY_REVOKED, SIGIL_TK_OCSP_UNKNOWN};
        return codes[status];
    }
    int verify(const std::string& name, const std::string& response)
    {
        ByteString responder(toolkit);
        return verify(name, response, responder);
    }
    /** All steps against a real responder. @return the response */
    std::string ask(const std::string& name, const Server& server = *authority().signedByDelegate)
    {
        ByteString request(toolkit);
        ByteString response(toolkit);
        EXPECT_EQ(makeRequest(name, request), 0) << toolkit.errorText();
        const std::string url = "http://127.0.0.1:" + std::to_string(server.port());
        EXPECT_EQ(send(url, name, request, response), 0) << toolkit.errorText();
        return response.bytes();
    }

    ToolkitLibrary toolkit{GetParam()};
    std::array<char, 32> date{};
    int status = -1;
    int reason = -2;
};

} // namespace

INSTANTIATE_TEST_SUITE_P(Faces, OcspSteps, testing::Values("HVTK_", "GPKI_"),
    [](const auto& face) { return std::string(face.param, 4); });

TEST_P(OcspSteps, TheStateComesOutAndTheResponderWithIt)
{
    ByteString responder(toolkit);
    EXPECT_EQ(verify("good", ask("good"), responder), 0) << toolkit.errorText();
    EXPECT_EQ(responder.bytes(), file("responder.crt"));
    EXPECT_EQ(verify("ca", ask("good")), 0) << "the authority stands for the certificate";
    EXPECT_EQ(verify("unknown", ask("unknown")), SIGIL_TK_OCSP_UNKNOWN);
    EXPECT_EQ(verify("revoked", ask("revoked")), SIGIL_TK_VERIFY_REVOKED);
    if (!hvtk()) {
        EXPECT_EQ(date.data(), toolkit::timeText(1767323045)); // 2026-01-02 03:04:05 UTC
        EXPECT_EQ(reason, 1) << "keyCompromise";
        EXPECT_EQ(verify("good", ask("good")), 0);
        EXPECT_STREQ(date.data(), "");
        EXPECT_EQ(reason, -1);
    }
}

TEST_P(OcspSteps, AResponseCountsForTheLastRequestAlone)
{
    const std::string first = ask("good");
    const std::string second = ask("good");
    EXPECT_EQ(verify("good", first), SIGIL_TK_OCSP_NONCE);
    EXPECT_EQ(verify("good", second), 0);
    EXPECT_EQ(verify("revoked", second), SIGIL_TK_OCSP_NO_ANSWER);
    const ToolkitLibrary fresh(GetParam());
    ByteString certificate(fresh, file("good.crt"));
    ByteString message(fresh, second);
    ByteString responder(fresh);
    int count = 0;
    EXPECT_EQ(hvtk() ? fresh("OCSP_VerifyResMsg", certificate.get(), message.get(), responder.get())
                     : fresh("OCSP_VerifyResMsg", certificate.get(), message.get(), &count, responder.get()),
        SIGIL_TK_OCSP_NONCE);
    EXPECT_TRUE(responder.empty());
}

TEST_P(OcspSteps, AResponderWithoutNoncesMustBeAllowed)
{
    const auto without = authority().respond("responder", "-nmin 10");
    ByteString request(toolkit);
    ASSERT_EQ(makeRequest("good", request), 0);
    authority().workshop.run(
        "openssl ocsp -issuer ca.pem -cert good.pem -no_nonce -noverify -url http://127.0.0.1:" +
        std::to_string(without->port()) + " -respout plain.der");
    EXPECT_EQ(verify("good", file("plain.der")), SIGIL_TK_OCSP_NONCE);
    authority().workshop.write("nonce.conf", "[OCSP]\nNonce = 0\n");
    ASSERT_EQ(hvtk() ? toolkit("API_SetConfFile", text(authority().workshop.path("nonce.conf")))
                     : toolkit("API_SetOption", int(SIGIL_TK_OPTION_OCSP_ANY_NONCE)),
        0);
    EXPECT_EQ(verify("good", file("plain.der")), 0) << toolkit.errorText();
    EXPECT_EQ(verify("good", ask("revoked")), SIGIL_TK_OCSP_NO_ANSWER);
}

TEST_P(OcspSteps, RequestsAreReadByOthers)
{
    for (const std::string signer : {"", "good"}) {
        ByteString request(toolkit);
        ASSERT_EQ(makeRequest("good", request, signer), 0) << toolkit.errorText();
        authority().workshop.write("request.der", request.bytes());
        const std::string known = authority().workshop.run("openssl ocsp -reqin request.der -req_text");
        EXPECT_THAT(known, testing::HasSubstr("Serial Number: 1000"));
        EXPECT_EQ(known.find("Signature Algorithm") != known.npos, !signer.empty());
        EXPECT_THAT(authority().workshop.run("ocsptool --request-info --infile=request.der --inder"),
            testing::HasSubstr("Serial Number: 1000"));
    }
    ByteString request(toolkit);
    EXPECT_EQ(makeRequest("foreign", request), SIGIL_TK_VERIFY_NO_ISSUER);
    EXPECT_TRUE(request.empty());
}

TEST_P(OcspSteps, OcsptoolSaysTheSameOfAResponse)
{
    const Workshop& workshop = authority().workshop;
    const auto accepted = [&](const std::string& response) {
        workshop.write("response.der", response);
        return workshop.tryRun("ocsptool --verify-response --load-response=response.der --load-trust=ca.pem") == 0;
    };
    for (const auto& [name, state] : states) {
        const std::string response = ask(name);
        EXPECT_TRUE(accepted(response)) << workshop.read("output.txt");
        EXPECT_THAT(workshop.run("ocsptool --response-info --load-response=response.der"),
            testing::HasSubstr("Certificate Status: " + name));
        EXPECT_EQ(verify(name, response), state) << toolkit.errorText();
    }
    const auto broken = authority().respond("foreign", "-nmin 10");
    const std::string foreign = ask("good", *broken);
    EXPECT_FALSE(accepted(foreign));
    EXPECT_EQ(verify("good", foreign), SIGIL_TK_OCSP_SIGNER);
}

TEST_P(OcspSteps, AResponseThatOcsptoolAskedForIsVerified)
{
    const Workshop& workshop = authority().workshop;
    workshop.write("nonce.conf", "[OCSP]\nNonce = 0\n");
    ASSERT_EQ(hvtk() ? toolkit("API_SetConfFile", text(workshop.path("nonce.conf")))
                     : toolkit("API_SetOption", int(SIGIL_TK_OPTION_OCSP_ANY_NONCE)),
        0);
    const std::string url = "http://127.0.0.1:" + std::to_string(authority().signedByDelegate->port());
    for (const auto& [name, state] : states) {
        ByteString request(toolkit);
        ASSERT_EQ(makeRequest(name, request), 0);
        std::filesystem::remove(workshop.path("asked.der"));
        workshop.tryRun("ocsptool --ask=" + url + " --no-nonce --load-cert=" + name +
            ".pem --load-issuer=ca.pem --outfile=asked.der");
        EXPECT_EQ(verify(name, workshop.read("asked.der")), state) << name << toolkit.errorText();
    }
}

TEST_P(OcspSteps, TheCertificateMayNameItsResponder)
{
    const auto server = authority().respond("responder", "-nmin 10");
    authority().certificate("naming", "/C=KR/O=test/CN=naming",
        "authorityInfoAccess=OCSP;URI:http://127.0.0.1:" + std::to_string(server->port()), "ca",
        "-days 365 -set_serial 4096");
    ByteString request(toolkit);
    ByteString response(toolkit);
    ASSERT_EQ(makeRequest("naming", request), 0);
    EXPECT_EQ(send("", "naming", request, response), 0) << toolkit.errorText();
    EXPECT_EQ(verify("naming", response.bytes()), 0) << toolkit.errorText();
    EXPECT_EQ(send("", "good", request, response), SIGIL_TK_URL);
}

TEST_P(OcspSteps, EveryChangedByteIsNoticed)
{
    const std::string response = ask("good");
    for (std::size_t i = 0; i < response.size(); ++i) {
        std::string changed = response;
        changed[i] = static_cast<char>(changed[i] ^ 0x55);
        ByteString responder(toolkit);
        const int code = verify("good", changed, responder);
        tally("changed OCSP responses");
        // Only the certificate that comes along is not signed with the rest, and it is compared with what it says.
        EXPECT_TRUE(code == 0 ? responder.bytes() == file("responder.crt")
                              : code >= SIGIL_TK_OCSP_MALFORMED && code <= SIGIL_TK_OCSP_UNKNOWN)
            << i << " " << code;
    }
    for (std::size_t length = 1; length < response.size(); ++length) {
        ByteString responder(toolkit);
        ASSERT_EQ(verify("good", response.substr(0, length), responder), SIGIL_TK_OCSP_MALFORMED) << length;
    }
    tally("truncated OCSP responses", response.size() - 1);
}

TEST(HvtkOcsp, AllStepsInOne)
{
    const ToolkitLibrary toolkit("HVTK_");
    ByteString ca(toolkit, authority().workshop.read("ca.crt"));
    ASSERT_EQ(toolkit("CERT_AddTrustedCert", ca.get()), 0);
    const std::string url = "http://127.0.0.1:" + std::to_string(authority().signedByDelegate->port());
    const auto check = [&](const std::string& name) {
        ByteString certificate(toolkit, authority().workshop.read(name + ".crt"));
        BINSTR* const none = nullptr;
        return toolkit("OCSP_CheckCertStatus", text(url), certificate.get(), false, none, none);
    };
    EXPECT_EQ(check("good"), 0) << toolkit.errorText();
    EXPECT_EQ(check("revoked"), SIGIL_TK_VERIFY_REVOKED);
    EXPECT_EQ(check("unknown"), SIGIL_TK_OCSP_UNKNOWN);
    ByteString certificate(toolkit, authority().workshop.read("good.crt"));
    ByteString key(toolkit, authority().workshop.read("good.key"));
    ByteString other(toolkit, authority().workshop.read("revoked.key"));
    EXPECT_EQ(toolkit("OCSP_CheckCertStatus", text(url), certificate.get(), true, certificate.get(), key.get()), 0)
        << toolkit.errorText();
    EXPECT_EQ(toolkit("OCSP_CheckCertStatus", text(url), certificate.get(), true, certificate.get(), other.get()),
        SIGIL_TK_KEY_MISMATCH);
}
