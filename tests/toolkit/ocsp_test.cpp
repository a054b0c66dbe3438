// The state of a certificate from a real responder, and from one that tells lies.

#include "tests/toolkit/server.h"
#include "tests/toolkit/toolkit_library.h"
#include "tests/toolkit/workshop.h"
#include "toolkit/engine/x509/text.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <ctime>
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
    for (const std::string other : {"https://127.0.0.1/", "ldap://127.0.0.1/", "file:///etc/passwd", ""})
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
