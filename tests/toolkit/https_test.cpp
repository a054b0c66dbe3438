// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Web addresses over TLS: who may answer, and what the host notices of it.

#include "tests/toolkit/server.h"
#include "tests/toolkit/toolkit_library.h"
#include "tests/toolkit/workshop.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <openssl/err.h>

#include <cstdlib>
#include <memory>
#include <signal.h>

using namespace toolkit_test;

namespace {

/** A web server, and others that pass on what it answers: one with a good certificate, and some without. */
class Servers {
public:
    Servers()
    {
        workshop.certificate("ca", "/CN=CA", "basicConstraints=critical,CA:TRUE");
        const std::string own = "subjectAltName=IP:127.0.0.1";
        certificate("good", own);
        certificate("expired", own, "-days -1");
        certificate("elsewhere", "subjectAltName=DNS:elsewhere.example");
        plain = std::make_unique<Server>(Server::answering(workshop, "the answer", 302));
        good = std::make_unique<Server>(Server::secure(workshop, "good", *plain));
    }

    Workshop workshop;
    std::unique_ptr<Server> plain;
    std::unique_ptr<Server> good;

private:
    void certificate(
        const std::string& name, const std::string& extensions, const std::string& options = "-days 365") const
    {
        workshop.certificate(name, "/CN=" + name, extensions, "ca", options, "ec -pkeyopt ec_paramgen_curve:P-256");
    }
};

const Servers& servers()
{
    static const Servers running;
    return running;
}

class Https : public testing::TestWithParam<const char*> {
protected:
    Https()
    {
        setenv("SSL_CERT_FILE", servers().workshop.path("ca.pem").c_str(), 1);
        redirectTo("");
    }
    ~Https() override { unsetenv("SSL_CERT_FILE"); }

    bool hvtk() const { return GetParam() == std::string("HVTK_"); }
    static std::string urlOf(const Server& server, const std::string& scheme = "https")
    {
        return scheme + "://127.0.0.1:" + std::to_string(server.port()) + "/";
    }
    static void redirectTo(const std::string& url) { servers().workshop.write("location", url); }
    /** The body, or "code N". */
    std::string fetched(const std::string& url)
    {
        ByteString out(toolkit);
        const int code = toolkit(
            hvtk() ? "HVAP_GetDataByURL" : "LDAP_GetDataByURL", int(SIGIL_TK_FETCH_ANY), text(url), out.get());
        return code == 0 ? out.bytes() : "code " + std::to_string(code);
    }
    std::string fetched(const Server& server) { return fetched(urlOf(server)); }
    static std::string failed(int code = SIGIL_TK_FETCH) { return "code " + std::to_string(code); }
    static std::size_t timesAsked() { return servers().workshop.read("asked").size(); }

    ToolkitLibrary toolkit{GetParam()};
};

} // namespace

INSTANTIATE_TEST_SUITE_P(
    Faces, Https, testing::Values("HVTK_", "GPKI_"), [](const auto& face) { return std::string(face.param, 4); });

TEST_P(Https, AServerWithATrustedCertificateIsAsked)
{
    EXPECT_EQ(fetched(*servers().good), "the answer") << toolkit.errorText();
    EXPECT_EQ(fetched(urlOf(*servers().good, "HTTPS")), "the answer");
}

TEST_P(Https, NobodyElseIsToldAnything)
{
    const Server expired = Server::secure(servers().workshop, "expired", *servers().plain);
    const Server elsewhere = Server::secure(servers().workshop, "elsewhere", *servers().plain);
    const std::size_t before = timesAsked();
    EXPECT_EQ(fetched(expired), failed());
    EXPECT_EQ(fetched(elsewhere), failed()) << "another name";
    unsetenv("SSL_CERT_FILE");
    EXPECT_EQ(fetched(*servers().good), failed()) << "the system does not know the authority";
    setenv("SSL_CERT_FILE", servers().workshop.path("none.pem").c_str(), 1);
    EXPECT_EQ(fetched(*servers().good), failed()) << "the file is not there";
    EXPECT_EQ(timesAsked(), before);
    EXPECT_EQ(fetched(urlOf(*servers().plain)), failed()) << "no TLS";
}

TEST_P(Https, ARedirectionKeepsTheScheme)
{
    redirectTo(urlOf(*servers().good) + "there");
    EXPECT_EQ(fetched(*servers().good), "the answer");
    EXPECT_EQ(fetched(urlOf(*servers().plain, "http")), failed());
    redirectTo(urlOf(*servers().plain, "http") + "there");
    EXPECT_EQ(fetched(urlOf(*servers().plain, "http")), "the answer");
    EXPECT_EQ(fetched(*servers().good), failed()) << "no way back to plain text";
}

TEST_P(Https, RespondersAndStampersAreAskedToo)
{
    const Server plain = Server::answering(servers().workshop, "a response");
    const Server server = Server::secure(servers().workshop, "good", plain);
    ByteString certificate(toolkit, servers().workshop.read("good.crt"));
    ByteString request(toolkit, "a request");
    ByteString state(toolkit);
    EXPECT_EQ(toolkit("OCSP_SendAndRecv", text(urlOf(server)), certificate.get(), request.get(), state.get()), 0)
        << toolkit.errorText();
    EXPECT_EQ(state.bytes(), "a response");
    ByteString stamp(toolkit);
    EXPECT_EQ(toolkit("TSP_SendAndRecv", text(urlOf(server)), 0, request.get(), stamp.get()), 0);
    EXPECT_EQ(stamp.bytes(), "a response");
    servers().workshop.write("answer", "the answer");
}

TEST_P(Https, TheHostKeepsItsErrorsAndItsSignals)
{
    ERR_clear_error();
    ERR_raise(ERR_LIB_USER, 77);
    const unsigned long own = ERR_peek_last_error();
    EXPECT_EQ(fetched(*servers().good), "the answer");
    unsetenv("SSL_CERT_FILE");
    EXPECT_EQ(fetched(*servers().good), failed());
    EXPECT_EQ(ERR_peek_last_error(), own);
    EXPECT_EQ(ERR_get_error(), own);
    EXPECT_EQ(ERR_get_error(), 0UL);
    sigset_t blocked;
    pthread_sigmask(SIG_BLOCK, nullptr, &blocked);
    EXPECT_EQ(sigismember(&blocked, SIGPIPE), 0);
    EXPECT_EQ(sigismember(&blocked, SIGTERM), 0);
}
