// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// What sample-store wrote, read by the openssl command and by the toolkit, held against its report.
#include "tests/support/sample_store.h"
#include "tests/tools/toolkit.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <sstream>

namespace {

using testing::HasSubstr;
using testing::Not;

constexpr const char* storePassword = "p4ss 단어";

/** One store of all families for all tests of this file. */
class ReadBack : public testing::Test {
protected:
    static void SetUpTestSuite()
    {
        s_store = std::make_unique<SampleStore>(std::vector<std::string>{
            "--count", "24", "--families", "npki,gpki,mpki,ppki", "--keys", "2", "--password", storePassword});
    }
    static void TearDownTestSuite() { s_store.reset(); }

    static const std::vector<Certificate>& certificates() { return s_store->certificates(); }
    static std::string issuerFile(const std::string& name) { return s_store->issuerFile(name); }

    static std::unique_ptr<SampleStore> s_store;
};

std::unique_ptr<SampleStore> ReadBack::s_store;

std::string x509(const std::string& file, std::vector<std::string> options)
{
    options.insert(options.begin(), {"openssl", "x509", "-inform", "DER", "-in", file, "-noout"});
    const Outcome outcome = run(options);
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    return outcome.out;
}

/** "cn=…,ou=…" as openssl prints it: "CN=…,OU=…". */
std::string withUpperTypes(std::string name)
{
    for (std::size_t at = 0; at != name.npos; at = name.find(',', at)) {
        at += name[at] == ',';
        for (; name[at] != '='; ++at)
            name[at] = static_cast<char>(std::toupper(static_cast<unsigned char>(name[at])));
    }
    return name;
}

TEST_F(ReadBack, ShowsTheReportedFieldsToOpenssl)
{
    for (const Certificate& c : certificates()) {
        std::string serial = c.at("serial");
        std::transform(serial.begin(), serial.end(), serial.begin(), ::toupper);
        const std::string expected = "subject=" + withUpperTypes(c.at("subject")) +
            "\nissuer=" + withUpperTypes(c.at("issuer")) + "\nserial=" + serial +
            "\nnotBefore=" + c.at("not_before") + "Z\nnotAfter=" + c.at("not_after") + "Z\n";
        EXPECT_EQ(x509(c.at("signing_certificate"),
                      {"-nameopt", "dn_rev,sep_comma_plus,sname,utf8", "-subject", "-issuer", "-serial",
                          "-startdate", "-enddate", "-dateopt", "iso_8601"}),
            expected);
    }
}

TEST_F(ReadBack, FollowsTheProfileOfSigningCertificates)
{
    for (const Certificate& c : certificates()) {
        const std::string text = x509(c.at("signing_certificate"), {"-text"});
        const bool old = c.at("bits") == "1024";
        const bool server = c.at("identity").empty();
        EXPECT_THAT(text, HasSubstr("Version: 3 (0x2)"));
        EXPECT_THAT(text, HasSubstr("Public-Key: (" + c.at("bits") + " bit)"));
        EXPECT_THAT(text, HasSubstr(old ? "sha1WithRSAEncryption" : "sha256WithRSAEncryption"));
        EXPECT_THAT(
            text, HasSubstr("X509v3 Key Usage: critical\n                Digital Signature, Non Repudiation\n"));
        EXPECT_THAT(text,
            HasSubstr(c.at("family") == "gpki" ? "X509v3 Certificate Policies: \n"
                                               : "X509v3 Certificate Policies: critical\n"));
        std::istringstream policies(c.at("policy"));
        for (std::string policy; policies >> policy;)
            EXPECT_THAT(text, HasSubstr("Policy: " + policy + "\n                  CPS: http://"));
        EXPECT_THAT(text, HasSubstr("User Notice:"));
        EXPECT_THAT(text, HasSubstr("X509v3 Subject Key Identifier:"));
        EXPECT_THAT(text, HasSubstr("keyid:"));
        EXPECT_THAT(text, HasSubstr("DirName:"));
        EXPECT_THAT(text, HasSubstr("serial:10:"));
        EXPECT_THAT(text, HasSubstr("URI:ldap://"));
        EXPECT_THAT(text, HasSubstr("OCSP - URI:http://"));
        EXPECT_THAT(text, Not(HasSubstr("Basic Constraints")));
        EXPECT_THAT(text, Not(HasSubstr("Extended Key Usage")));
        EXPECT_EQ(text.find("othername: 1.2.410.200004.10.1.1") == text.npos, server) << c.at("subject");
    }
}

// The authority itself comes first, the holder's kind second: readers take the second one.
TEST_F(ReadBack, GivesCertificatesOfTheOldTradeAuthorityTwoPolicies)
{
    const auto old = std::find_if(certificates().begin(), certificates().end(),
        [](const Certificate& c) { return c.at("issuer").starts_with("cn=TradeSignCA,"); });
    ASSERT_NE(old, certificates().end());
    EXPECT_EQ(old->at("policy"), "1.2.410.200004.2.1 1.2.410.200012.1.1.1");
    const std::string text = x509(old->at("signing_certificate"), {"-text"});
    EXPECT_LT(text.find("Policy: 1.2.410.200004.2.1\n"), text.find("Policy: 1.2.410.200012.1.1.1\n"));
}

TEST_F(ReadBack, FollowsTheProfileOfKeyManagementCertificates)
{
    int seen = 0;
    for (const Certificate& c : certificates()) {
        if (c.at("pairs") != "both")
            continue;
        ++seen;
        const std::string text = x509(c.at("km_certificate"), {"-text"});
        const std::string usage =
            c.at("family") == "gpki" ? "Key Encipherment, Data Encipherment\n" : "Key Encipherment\n";
        EXPECT_THAT(text, HasSubstr("X509v3 Key Usage: critical\n                " + usage));
        EXPECT_THAT(text, Not(HasSubstr("Subject Alternative Name")));
        EXPECT_EQ(x509(c.at("km_certificate"), {"-subject"}), x509(c.at("signing_certificate"), {"-subject"}));
        std::string serial = c.at("serial");
        ++serial.back(); // a digit 0, 2, 4, 6, 8, a, c or e
        std::transform(serial.begin(), serial.end(), serial.begin(), ::toupper);
        EXPECT_EQ(x509(c.at("km_certificate"), {"-serial"}), "serial=" + serial + "\n");
    }
    EXPECT_GT(seen, 15);
}

TEST_F(ReadBack, EncodesNamesAndNoticesAsTheAuthoritiesDo)
{
    for (const Certificate& c : certificates()) {
        const Outcome dump = run({"openssl", "asn1parse", "-inform", "DER", "-in", c.at("signing_certificate")});
        ASSERT_EQ(dump.status, 0);
        // Attribute types of issuer and subject in the order of the encoding, each with its string type.
        std::istringstream lines(dump.out);
        std::string previous;
        int countries = 0;
        for (std::string line; std::getline(lines, line); previous = line) {
            if (previous.find(":countryName") != previous.npos)
                countries += line.find("PRINTABLESTRING") != line.npos;
            if (previous.find(":commonName") != previous.npos || previous.find(":organization") != previous.npos) {
                EXPECT_THAT(line, HasSubstr("UTF8STRING"));
            }
        }
        EXPECT_EQ(countries, 2);
        const auto subject = dump.out.find("UTCTIME");
        const auto position = [&](const char* type) { return dump.out.find(type, subject); };
        EXPECT_LT(position(":countryName"), position(":organizationName"));
        EXPECT_LT(position(":organizationName"), position(":organizationalUnitName"));
        EXPECT_LT(position(":organizationName"), position(":commonName"));
    }
}

// Printed by openssl as raw BMPString: every second byte is the high half of a Hangul letter.
TEST_F(ReadBack, CarriesTheNoticeAsBmpString)
{
    const std::string der = readFile(certificates().at(0).at("signing_certificate"));
    EXPECT_THAT(der, HasSubstr(std::string("\x1E\x38\xC7\x74\x00\x20\xC7\x78\xC9\x9D\xC1\x1C", 12)));
}

TEST_F(ReadBack, VerifiesUpToTheRoot)
{
    for (const Certificate& c : certificates())
        for (const std::string column : {"signing_certificate", "km_certificate"}) {
            if (c.at(column).empty())
                continue;
            const std::string pem = run({"openssl", "x509", "-inform", "DER", "-in", c.at(column)}).out;
            const Outcome verified = run({"openssl", "verify", "-CAfile", issuerFile("root.pem"), "-untrusted",
                                             issuerFile("authorities.pem")},
                pem);
            EXPECT_EQ(verified.status == 0, c.at("state") != "expired") << c.at("subject") << verified.err;
            if (c.at("state") == "expired") {
                EXPECT_THAT(verified.err, HasSubstr("certificate has expired"));
            }
        }
}

std::string pathOf(const Certificate& c) { return c.at("signing_certificate"); }

TEST_F(ReadBack, LeavesAsMuchTimeAsTheStateSays)
{
    constexpr const char* days30 = "2592000";
    for (const Certificate& c : certificates()) {
        const int now =
            run({"openssl", "x509", "-inform", "DER", "-in", pathOf(c), "-noout", "-checkend", "0"}).status;
        const int soon =
            run({"openssl", "x509", "-inform", "DER", "-in", pathOf(c), "-noout", "-checkend", days30}).status;
        EXPECT_EQ(now, c.at("state") == "expired" ? 1 : 0) << c.at("subject");
        EXPECT_EQ(soon, c.at("state") == "valid" ? 0 : 1) << c.at("subject");
    }
}

std::string certifiedKeyOf(const std::string& certificate) { return x509(certificate, {"-pubkey"}); }

TEST_F(ReadBack, OpensStandardKeyFilesWithOpenssl)
{
    int opened = 0;
    for (const Certificate& c : certificates()) {
        if (c.at("variant") < "C")
            continue;
        const Outcome plain = run({"openssl", "pkcs8", "-provider", "legacy", "-provider", "default", "-inform",
            "DER", "-in", c.at("signing_key"), "-passin", std::string("pass:") + storePassword});
        ASSERT_EQ(plain.status, 0) << c.at("variant") << plain.err;
        const Outcome key = run({"openssl", "pkey", "-pubout"}, plain.out);
        EXPECT_EQ(key.out, certifiedKeyOf(c.at("signing_certificate")));
        ++opened;
    }
    EXPECT_GE(opened, 6);
}

TEST_F(ReadBack, OpensEveryKeyFileWithTheToolkit)
{
    Toolkit toolkit;
    for (const Certificate& c : certificates()) {
        const std::string certificate = readFile(c.at("signing_certificate"));
        const std::string key = toolkit.decryptKey(readFile(c.at("signing_key")), storePassword);
        EXPECT_EQ(toolkit.checkPair(certificate, key), 0) << c.at("variant");
        if (c.at("pairs") != "both")
            continue;
        const std::string kmKey = toolkit.decryptKey(readFile(c.at("km_key")), storePassword);
        EXPECT_EQ(toolkit.checkPair(readFile(c.at("km_certificate")), kmKey), 0);
        EXPECT_NE(toolkit.checkPair(certificate, kmKey), 0) << "two pairs, not one twice";
        EXPECT_EQ(toolkit.randomOf(kmKey), "") << "the random value is in the signing key only";
    }
}

TEST_F(ReadBack, ProvesTheIdentityToTheToolkit)
{
    Toolkit toolkit;
    for (const Certificate& c : certificates()) {
        const std::string certificate = readFile(c.at("signing_certificate"));
        const std::string random =
            toolkit.randomOf(toolkit.decryptKey(readFile(c.at("signing_key")), storePassword));
        if (c.at("identity").empty()) {
            EXPECT_EQ(random, "");
            continue;
        }
        EXPECT_EQ(random.size(), 20u);
        EXPECT_EQ(toolkit.verifyIdentity(certificate, random, c.at("identity")), 0);
        EXPECT_NE(toolkit.verifyIdentity(certificate, random, "7001011234567"), 0);
    }
}

/** The virtual identifier H(H(HashContent)), computed with the openssl command alone. */
std::string virtualIdentifier(const std::string& number, const std::string& random, const std::string& hash)
{
    std::string content = "\x13" + std::string(1, static_cast<char>(number.size())) + number;
    content += std::string("\x03\x15\x00", 3) + random;
    content = "\x30" + std::string(1, static_cast<char>(content.size())) + content;
    const std::string once = run({"openssl", "dgst", "-" + hash, "-binary"}, content).out;
    return run({"openssl", "dgst", "-" + hash, "-binary"}, once).out;
}

TEST_F(ReadBack, HoldsTheVirtualIdentifierThatOpensslComputes)
{
    Toolkit toolkit;
    for (const Certificate& c : certificates()) {
        if (c.at("identity").empty())
            continue;
        const std::string random =
            toolkit.randomOf(toolkit.decryptKey(readFile(c.at("signing_key")), storePassword));
        const std::string hash = c.at("bits") == "1024" ? "sha1" : "sha256";
        const std::string identifier = virtualIdentifier(c.at("identity"), random, hash);
        const std::string der = readFile(c.at("signing_certificate"));
        EXPECT_THAT(der, HasSubstr(identifier));
        EXPECT_THAT(der, HasSubstr("\x0C" + std::string(1, static_cast<char>(c.at("name").size())) + c.at("name")));
    }
}

TEST_F(ReadBack, RefusesAnotherPassword)
{
    Toolkit toolkit;
    for (const Certificate& c : certificates())
        EXPECT_EQ(toolkit.checkPair(readFile(c.at("signing_certificate")),
                      toolkit.decryptKey(readFile(c.at("signing_key")), "wrong")) == 0,
            false);
}

// Policies and issuers of the sample store show their names, not their numbers, in a list.
TEST_F(ReadBack, UsesPoliciesAndIssuersThatTheSettingsName)
{
    const std::string policyFile = "\n" + readFile(SIGILDESK_LIBRARY_FOLDER "/Policy_KOR.conf");
    const std::string issuerNames = readFile(SIGILDESK_LIBRARY_FOLDER "/Issuer_KOR.conf");
    for (const Certificate& c : certificates()) {
        std::istringstream policies(c.at("policy"));
        for (std::string policy; policies >> policy;)
            EXPECT_THAT(policyFile, HasSubstr("\n" + policy + "="));
        if (c.at("family") == "npki" || c.at("family") == "gpki") {
            EXPECT_THAT(
                issuerNames, HasSubstr("cn = " + c.at("issuer").substr(3, c.at("issuer").find(',') - 3) + "\n"));
        }
    }
}

TEST_F(ReadBack, LaysTheIssuersBesideTheStore)
{
    const std::string root = x509(issuerFile("root.der"), {"-text"});
    EXPECT_THAT(root, HasSubstr("CA:TRUE"));
    EXPECT_THAT(root, Not(HasSubstr("Key Usage"))) << "as the root in use";
    const std::string authority = x509(issuerFile("yessignCA_Class_1.der"), {"-text"});
    EXPECT_THAT(authority, HasSubstr("CA:TRUE, pathlen:0"));
    EXPECT_THAT(authority, HasSubstr("Certificate Sign, CRL Sign"));
    EXPECT_THAT(authority, HasSubstr("Policy: X509v3 Any Policy"));
    EXPECT_THAT(
        authority, HasSubstr("X509v3 Policy Constraints: critical\n                Require Explicit Policy:0"));
    EXPECT_THAT(authority, HasSubstr("othername: 1.2.410.200004.10.1.1"));
    EXPECT_EQ(run({"openssl", "x509", "-in", issuerFile("root.pem"), "-outform", "DER"}).out,
        readFile(issuerFile("root.der")));
}

TEST_F(ReadBack, LaysTheIssuersBesideEachNpkiCertificate)
{
    for (const Certificate& c : certificates()) {
        if (c.at("family") != "npki")
            continue;
        const std::string pubs =
            readFile(std::filesystem::path(c.at("signing_certificate")).parent_path() / "CaPubs");
        const Outcome parsed = run({"openssl", "asn1parse", "-inform", "DER"}, pubs);
        EXPECT_EQ(parsed.status, 0);
        EXPECT_THAT(pubs, HasSubstr(readFile(issuerFile("root.der"))));
        EXPECT_LT(pubs.find(readFile(issuerFile("root.der"))), pubs.size() / 4) << "root first";
    }
}

} // namespace
