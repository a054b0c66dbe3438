// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Fetches from a real directory server and a real web server.

#include "tests/toolkit/server.h"
#include "tests/toolkit/toolkit_library.h"
#include "tests/toolkit/workshop.h"
#include "toolkit/engine/base/pem.h"
#include "toolkit/engine/x509/text.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>

using namespace toolkit_test;

namespace {

std::string base64(const std::string& bytes) { return toolkit::base64(toolkit::view(bytes)); }

/** root and ca in a directory that also holds a user, lists, and a Korean name. */
class Servers {
public:
    Servers()
    {
        workshop.certificate("root", "/C=KR/O=test/CN=Root CA", "basicConstraints=critical,CA:TRUE");
        workshop.certificate("ca", "/C=KR/O=test/CN=ca (1)", "basicConstraints=critical,CA:TRUE", "root");
        workshop.certificate("user", "/C=KR/O=test/CN=홍길동", "", "ca");
        workshop.write("a b", "with a blank");
        const auto attribute = [&](const std::string& name, const std::string& bytes) {
            return name + ";binary:: " + base64(bytes) + "\n";
        };
        const auto entry = [&](const std::string& name, const std::string& kind) {
            return "\ndn:: " + base64("cn=" + name + ",o=test,c=KR") +
                "\nobjectClass: organizationalRole\nobjectClass: " + kind + "\ncn:: " + base64(name) + "\n";
        };
        const std::string emptyList = makeList();
        const std::string ldif = "dn: c=KR\nobjectClass: country\nc: KR\n\n"
                                 "dn: o=test,c=KR\nobjectClass: organization\no: test\n" +
            entry("Root CA", "pkiCA") + attribute("cACertificate", workshop.read("root.crt")) +
            attribute("authorityRevocationList", emptyList) + entry("ca (1)", "pkiCA") +
            attribute("cACertificate", workshop.read("ca.crt")) +
            attribute("certificateRevocationList", emptyList) + entry("홍길동", "strongAuthenticationUser") +
            attribute("userCertificate", workshop.read("user.crt")) + entry("100%", "pkiCA") +
            "description: one\ndescription: two\n" + attribute("cACertificate", workshop.read("root.crt"));
        ldap = std::make_unique<Server>(Server::directory(workshop, ldif));
        web = std::make_unique<Server>(Server::web(workshop));
    }

    std::string makeList() const
    {
        workshop.write(
            "ca.conf", "[ca]\ndefault_ca=own\n[own]\ndatabase=index\ndefault_md=sha256\ndefault_crl_days=9\n");
        workshop.write("index", "");
        workshop.run("openssl ca -config ca.conf -cert ca.pem -keyfile ca.key.pem -gencrl -out list.pem && "
                     "openssl crl -in list.pem -outform DER -out list.crl");
        return workshop.read("list.crl");
    }

    Workshop workshop;
    std::unique_ptr<Server> ldap;
    std::unique_ptr<Server> web;
};

const Servers& servers()
{
    static const Servers running;
    return running;
}

class Fetch : public testing::TestWithParam<const char*> {
protected:
    std::string ldapServer() const { return "127.0.0.1:" + std::to_string(servers().ldap->port()); }
    std::string webServer() const { return "http://127.0.0.1:" + std::to_string(servers().web->port()); }
    std::string file(const std::string& name) const { return servers().workshop.read(name); }
    int fetch(const std::string& url, int mode, std::string& bytes)
    {
        ByteString out(toolkit);
        const int code = toolkit(GetParam() == std::string("HVTK_") ? "HVAP_GetDataByURL" : "LDAP_GetDataByURL",
            mode, text(url), out.get());
        bytes = out.bytes();
        return code;
    }

    ToolkitLibrary toolkit{GetParam()};
};

} // namespace

INSTANTIATE_TEST_SUITE_P(
    Faces, Fetch, testing::Values("HVTK_", "GPKI_"), [](const auto& face) { return std::string(face.param, 4); });

TEST_P(Fetch, ADirectoryAnswersWhatTheModeAsksFor)
{
    std::string bytes;
    const std::string root = "ldap://" + ldapServer() + "/cn=Root CA,o=test,c=KR";
    EXPECT_EQ(fetch(root, SIGIL_TK_FETCH_CA_CERT, bytes), 0) << toolkit.errorText();
    EXPECT_EQ(bytes, file("root.crt"));
    EXPECT_EQ(fetch(root, SIGIL_TK_FETCH_ANY, bytes), 0);
    EXPECT_EQ(bytes, file("root.crt"));
    EXPECT_EQ(fetch(root, SIGIL_TK_FETCH_ARL, bytes), 0);
    EXPECT_EQ(bytes, file("list.crl"));
    EXPECT_EQ(fetch(root, SIGIL_TK_FETCH_CRL, bytes), SIGIL_TK_NOT_FOUND);
    EXPECT_EQ(fetch(root, 5, bytes), SIGIL_TK_OPTION);
    const std::string ca = "ldap://" + ldapServer() + "/cn=ca (1),o=test,c=KR";
    EXPECT_EQ(fetch(ca, SIGIL_TK_FETCH_CRL, bytes), 0);
    EXPECT_EQ(bytes, file("list.crl"));
}

TEST_P(Fetch, AddressesMayNameTheAttributeInAnyForm)
{
    std::string bytes;
    const std::string server = "LDAP://" + ldapServer();
    EXPECT_EQ(fetch(server + "/cn=Root%20CA,o=test,c=KR?cACertificate;binary", 0, bytes), 0) << toolkit.errorText();
    EXPECT_EQ(bytes, file("root.crt"));
    EXPECT_EQ(fetch(server + "/cn=Root CA,o=test,c=KR?cACertificate?base?(objectClass=*)", 3, bytes), 0);
    EXPECT_EQ(bytes, file("root.crt"));
    EXPECT_EQ(fetch(server + "/cn=ca (1),o=test,c=KR?certificateRevocationList", 1, bytes), 0);
    EXPECT_EQ(bytes, file("list.crl"));
    EXPECT_EQ(fetch(ldapServer() + "/cn=Root CA,o=test,c=KR", 1, bytes), 0) << "the scheme may be missing";
    EXPECT_EQ(bytes, file("root.crt"));
}

TEST_P(Fetch, OnlyWholeEscapesAreCharacters)
{
    std::string bytes;
    const std::string server = "ldap://" + ldapServer() + "/";
    for (const std::string name :
        {"cn=100%,o=test,c=KR", "cn%3d100%25%2Co%3Dtest,c=KR", "cn=100%25,o=test,c=%4bR"}) {
        EXPECT_EQ(fetch(server + name, SIGIL_TK_FETCH_CA_CERT, bytes), 0) << name << " " << toolkit.errorText();
        EXPECT_EQ(bytes, file("root.crt"));
    }
    for (const std::string name : {"cn=100%zz,o=test,c=KR", "cn=100%2z,o=test,c=KR", "cn=100%2@,o=test,c=KR",
             "cn=100%25,o=test,c=KR%2", "cn=100%25,o=test,c=KR%"})
        EXPECT_EQ(fetch(server + name, SIGIL_TK_FETCH_CA_CERT, bytes), SIGIL_TK_NOT_FOUND) << name;
}

TEST_P(Fetch, KoreanNamesWorkInBothCharacterSets)
{
    std::string bytes;
    const std::string name = "cn=홍길동,o=test,c=KR";
    EXPECT_EQ(fetch("ldap://" + ldapServer() + "/" + name, SIGIL_TK_FETCH_USER_CERT, bytes), 0);
    EXPECT_EQ(bytes, file("user.crt"));
    EXPECT_EQ(fetch("ldap://" + ldapServer() + "/" + toolkit::cp949FromUtf8(name), 2, bytes), 0);
    EXPECT_EQ(bytes, file("user.crt"));
}

TEST_P(Fetch, FailuresHaveTheirCodes)
{
    std::string bytes;
    EXPECT_EQ(fetch("ldap://" + ldapServer() + "/cn=nobody,o=test,c=KR", 1, bytes), SIGIL_TK_NOT_FOUND);
    EXPECT_EQ(fetch("ldap://" + ldapServer() + "/no name", 1, bytes), SIGIL_TK_NOT_FOUND);
    EXPECT_EQ(fetch("ldap://127.0.0.1:1/cn=x,c=KR", 1, bytes), SIGIL_TK_FETCH);
    EXPECT_EQ(fetch("ldap://[::1]:1/cn=x,c=KR", 1, bytes), SIGIL_TK_FETCH);
    EXPECT_EQ(fetch("ldap:///cn=x", 1, bytes), SIGIL_TK_URL);
    EXPECT_EQ(fetch("", 1, bytes), SIGIL_TK_URL);
    for (const std::string other :
        {"httpss://127.0.0.1/", "file:///etc/passwd", "ftp://127.0.0.1/", "ldaps://x/cn=y"})
        EXPECT_EQ(fetch(other, 1, bytes), SIGIL_TK_URL) << other;
    EXPECT_EQ(fetch(webServer() + "/none", 1, bytes), SIGIL_TK_NOT_FOUND);
    EXPECT_EQ(fetch("http://127.0.0.1:1/", 1, bytes), SIGIL_TK_FETCH);
    EXPECT_EQ(bytes, "");
}

TEST_P(Fetch, AWebServerAnswersTheBody)
{
    std::string bytes;
    EXPECT_EQ(fetch(webServer() + "/root.crt", SIGIL_TK_FETCH_CA_CERT, bytes), 0) << toolkit.errorText();
    EXPECT_EQ(bytes, file("root.crt"));
    EXPECT_EQ(fetch(webServer() + "/a b", SIGIL_TK_FETCH_ANY, bytes), 0);
    EXPECT_EQ(bytes, "with a blank");
}

TEST(GpkiLdap, AnyAttributeAndSearchByName)
{
    const ToolkitLibrary toolkit("GPKI_");
    const Workshop& workshop = servers().workshop;
    const std::string server = "127.0.0.1";
    const int port = servers().ldap->port();
    const std::string url = "ldap://127.0.0.1:" + std::to_string(port) + "/cn=Root CA,o=test,c=KR";
    ByteString attribute(toolkit);
    ASSERT_EQ(toolkit("LDAP_GetAnyDataByURL", text(url), text("cn"), attribute.get()), 0) << toolkit.errorText();
    EXPECT_EQ(attribute.bytes(), "Root CA");
    ByteString none(toolkit);
    EXPECT_EQ(toolkit("LDAP_GetAnyDataByURL", text(url), text("description"), none.get()), SIGIL_TK_NOT_FOUND);
    EXPECT_EQ(toolkit("LDAP_GetAnyDataByURL", text(url), text(""), none.get()), SIGIL_TK_URL);
    const std::string several = "ldap://127.0.0.1:" + std::to_string(port) + "/cn=100%25,o=test,c=KR";
    ByteString first(toolkit);
    ASSERT_EQ(toolkit("LDAP_GetAnyDataByURL", text(several), text("description"), first.get()), 0);
    EXPECT_EQ(first.bytes(), "one") << "the first of them";
    const auto byName = [&](const std::string& name, int mode) {
        ByteString out(toolkit);
        const int code = toolkit("LDAP_GetDataByCN", text(server), port, text(name), mode, text("c=KR"), out.get());
        return code == 0 ? out.bytes() : "code " + std::to_string(code);
    };
    EXPECT_EQ(byName("홍길동", SIGIL_TK_FETCH_USER_CERT), workshop.read("user.crt"));
    EXPECT_EQ(byName("ca (1)", SIGIL_TK_FETCH_CA_CERT), workshop.read("ca.crt"));
    EXPECT_EQ(byName("*", SIGIL_TK_FETCH_CA_CERT), "code " + std::to_string(SIGIL_TK_NOT_FOUND)) << "no pattern";
    EXPECT_TRUE(none.empty());
}

TEST(GpkiLdap, APathIsCollectedFromADirectory)
{
    const ToolkitLibrary toolkit("GPKI_");
    const Workshop& workshop = servers().workshop;
    const std::string server = "ldap://127.0.0.1:" + std::to_string(servers().ldap->port());
    ByteString user(toolkit, workshop.read("user.crt"));
    ByteString path(toolkit);
    ASSERT_EQ(toolkit("LDAP_GetCertPath", user.get(), text(server), path.get()), 0) << toolkit.errorText();
    EXPECT_THAT(path.bytes(),
        testing::EndsWith(workshop.read("user.crt") + workshop.read("ca.crt") + workshop.read("root.crt")));
    ByteString none(toolkit);
    EXPECT_EQ(toolkit("LDAP_GetCertPath", user.get(), text(""), none.get()), SIGIL_TK_VERIFY_NO_ISSUER);
    EXPECT_TRUE(none.empty());
}
