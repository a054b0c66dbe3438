// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Verification of certificates against trusted ones, with time, usage, policies and revocation lists.

#include "tests/toolkit/server.h"
#include "tests/toolkit/toolkit_library.h"
#include "tests/toolkit/workshop.h"
#include "toolkit/engine/x509/text.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <ctime>
#include <memory>
#include <vector>

using namespace toolkit_test;

namespace {

constexpr const char* caExtensions =
    "basicConstraints=critical,CA:TRUE\nkeyUsage=critical,keyCertSign,cRLSign\nsubjectKeyIdentifier=hash\n"
    "certificatePolicies=2.5.29.32.0";
constexpr const char* authority = "authorityKeyIdentifier=keyid,issuer\n";
constexpr long day = 24 * 60 * 60;

/** root > ca > user, revoked, km; another root; lists of both authorities; everything on a web server. */
class Pki {
public:
    Pki()
    {
        m_http = std::make_unique<Server>(Server::web(workshop));
        const std::string base = "http://127.0.0.1:" + std::to_string(m_http->port());
        const std::string crl = "crlDistributionPoints=URI:" + base + "/ca.crl\n";
        const std::string issuer = "authorityInfoAccess=caIssuers;URI:" + base + "/ca.crt\n";
        // KISA's root has no key usage, and must be good enough.
        workshop.certificate(
            "root", "/C=KR/CN=root", "basicConstraints=critical,CA:TRUE\nsubjectKeyIdentifier=hash");
        workshop.certificate("other", "/C=KR/CN=other root", "basicConstraints=critical,CA:TRUE");
        workshop.certificate("ca", "/C=KR/CN=ca",
            std::string(caExtensions) + "\ncrlDistributionPoints=URI:" + base + "/root.crl\n" + authority, "root");
        workshop.certificate("user", "/C=KR/CN=user",
            "keyUsage=digitalSignature\ncertificatePolicies=critical,1.2.410.200005.1.1.1\n" + crl + issuer +
                authority,
            "ca");
        workshop.certificate("revoked", "/C=KR/CN=revoked", "keyUsage=digitalSignature\n" + crl + authority, "ca");
        workshop.certificate("km", "/C=KR/CN=km", std::string("keyUsage=keyEncipherment\n") + authority, "ca");
        revocationList("root", {});
        revocationList("ca", {}); // the other part, on which nothing stands
        part("theirs", "issuingDistributionPoint=critical,@point\n[point]\nfullname=URI:" + base + "/other.crl\n");
        revocationList("ca", {"revoked"});
        part("mine",
            "issuingDistributionPoint=critical,@point\n[point]\nfullname=URI:" + base + "/ca.crl\nonlyuser=TRUE\n");
        part("authorities", "issuingDistributionPoint=critical,@point\n[point]\nonlyCA=TRUE\n");
        part("reasons", "issuingDistributionPoint=critical,@point\n[point]\nonlysomereasons=keyCompromise\n");
        part("changes", "2.5.29.27=critical,DER:020101\n");
    }

    /** Makes NAME.crl, on which the given certificates stand. */
    void revocationList(const std::string& name, const std::vector<std::string>& revoked) const
    {
        workshop.write("ca.conf",
            "[ca]\ndefault_ca=own\n[own]\ndatabase=" + name + ".txt\ncrlnumber=" + name +
                ".number\ndefault_md=sha256\ndefault_crl_days=30\n");
        workshop.write(name + ".txt", "");
        workshop.write(name + ".number", "01\n");
        const std::string ca = "openssl ca -config ca.conf -cert " + name + ".pem -keyfile " + name + ".key.pem ";
        for (const std::string& certificate : revoked)
            workshop.run(ca + "-revoke " + certificate + ".pem");
        workshop.run(ca + "-gencrl -out list.pem && openssl crl -in list.pem -outform DER -out " + name + ".crl");
    }

    /** Makes NAME.crl from the list of "ca", whose settings were written last, with extensions. */
    void part(const std::string& name, const std::string& extensions) const
    {
        workshop.write("part.conf", workshop.read("ca.conf") + "[extensions]\n" + extensions);
        workshop.run("openssl ca -config part.conf -cert ca.pem -keyfile ca.key.pem -gencrl -crlexts extensions"
                     " -out list.pem && openssl crl -in list.pem -outform DER -out " +
            name + ".crl");
    }

    Workshop workshop;
    const Server& http() const { return *m_http; }

private:
    std::unique_ptr<Server> m_http;
};

const Pki& pki()
{
    static const Pki made;
    return made;
}

std::string timeIn(long seconds) { return toolkit::timeText(std::time(nullptr) + seconds); }

class Trust : public testing::TestWithParam<const char*> {
protected:
    bool hvtk() const { return GetParam() == std::string("HVTK_"); }
    std::string file(const std::string& name) const { return pki().workshop.read(name); }
    int trust(const std::string& name)
    {
        ByteString certificate(toolkit, file(name));
        return toolkit("CERT_AddTrustedCert", certificate.get());
    }
    int setAuthorities(const std::string& names)
    {
        ByteString list(toolkit, file(names));
        return toolkit(hvtk() ? "CERT_SetCaPubs" : "API_SetCaPubs", list.get());
    }
    int freeAuthorities() { return toolkit(hvtk() ? "CERT_FreeCaPubs" : "API_FreeCaPubs"); }
    int environment(int source, int revocation, bool tolerant = false, const std::string& time = "")
    {
        return hvtk()
            ? toolkit("CERT_SetVerifyEnv1", source, revocation, tolerant, text(time))
            : toolkit("CERT_SetVerifyEnv", source, revocation, tolerant, static_cast<char*>(nullptr), text(time));
    }
    int verify(const std::string& name, int usage = 0, const std::string& policies = "", bool revocation = false,
        BINSTR* authorities = nullptr, BINSTR* path = nullptr)
    {
        ByteString certificate(toolkit, file(name + ".crt"));
        return hvtk()
            ? toolkit("CERT_Verify", certificate.get(), usage, text(policies), revocation, authorities, path)
            : toolkit("CERT_Verify", certificate.get(), usage, text(policies), static_cast<char*>(nullptr),
                  revocation, authorities, path);
    }
    int status(const std::string& name, int& value, const std::string& url = "")
    {
        ByteString certificate(toolkit, file(name + ".crt"));
        return toolkit("CERT_CheckStatByCRL", certificate.get(), text(url), &value);
    }

    ToolkitLibrary toolkit{GetParam()};
};

} // namespace

INSTANTIATE_TEST_SUITE_P(
    Faces, Trust, testing::Values("HVTK_", "GPKI_"), [](const auto& face) { return std::string(face.param, 4); });

TEST_P(Trust, ThePathLeadsToATrustedCertificate)
{
    EXPECT_EQ(verify("user"), SIGIL_TK_VERIFY_NO_ISSUER);
    ASSERT_EQ(trust("root.crt"), 0);
    EXPECT_EQ(verify("user"), SIGIL_TK_VERIFY_NO_ISSUER) << "the authority in between is missing";
    EXPECT_THAT(toolkit.errorText(), testing::HasSubstr("issuer"));
    ASSERT_EQ(setAuthorities("ca.crt"), 0);
    EXPECT_EQ(verify("user"), 0) << toolkit.errorText();
    EXPECT_EQ(verify("other"), SIGIL_TK_VERIFY_NO_ISSUER);
    ASSERT_EQ(freeAuthorities(), 0);
    EXPECT_EQ(verify("user"), SIGIL_TK_VERIFY_NO_ISSUER);
}

TEST_P(Trust, AnyTrustedCertificateEndsThePath)
{
    ASSERT_EQ(trust("ca.pem"), 0);
    ASSERT_EQ(trust("ca.crt"), 0);
    EXPECT_EQ(verify("user"), 0) << toolkit.errorText();
    ByteString garbage(toolkit, "garbage");
    EXPECT_EQ(toolkit("CERT_AddTrustedCert", garbage.get()), SIGIL_TK_CERT_MALFORMED);
}

TEST_P(Trust, TheWayTheProcessorVerifies)
{
    ASSERT_EQ(trust("root.crt"), 0);
    ASSERT_EQ(trust("ca.crt"), 0);
    ByteString user(toolkit, file("user.crt"));
    char* const none = nullptr;
    BINSTR* const nothing = nullptr;
    if (hvtk()) {
        ASSERT_EQ(toolkit("CERT_SetVerifyEnv1", 0, 2, false, none), 0);
        EXPECT_EQ(toolkit("CERT_Verify", user.get(), 1, none, false, nothing, nothing), 0);
    } else {
        ASSERT_EQ(toolkit("CERT_SetVerifyEnv", 0, 2, false, none, none), 0);
        EXPECT_EQ(
            toolkit("CERT_Verify", user.get(), 1, none, text("HVCToolkitV30.conf"), false, nothing, nothing), 0);
    }
}

TEST_P(Trust, GivenAuthoritiesAndThePathHandedOut)
{
    ASSERT_EQ(trust("root.crt"), 0);
    ByteString authorities(toolkit, file("ca.crt"));
    ByteString path(toolkit);
    ASSERT_EQ(verify("user", 0, "", false, authorities.get(), path.get()), 0) << toolkit.errorText();
    EXPECT_THAT(path.bytes(), testing::EndsWith(file("user.crt") + file("ca.crt") + file("root.crt")));
    ByteString untouched(toolkit);
    EXPECT_NE(verify("other", 0, "", false, nullptr, untouched.get()), 0);
    EXPECT_TRUE(untouched.empty());
}

TEST_P(Trust, TimeIsNowOrWhatTheEnvironmentSays)
{
    ASSERT_EQ(trust("ca.crt"), 0);
    ASSERT_EQ(environment(0, 2, false, timeIn(366 * day)), 0);
    EXPECT_EQ(verify("user"), SIGIL_TK_VERIFY_EXPIRED);
    ASSERT_EQ(environment(0, 2, false, timeIn(-2 * day)), 0);
    EXPECT_EQ(verify("user"), SIGIL_TK_VERIFY_NOT_YET);
    ASSERT_EQ(environment(0, 2), 0);
    EXPECT_EQ(verify("user"), 0);
    EXPECT_EQ(environment(0, 2, false, "soon"), SIGIL_TK_ENCODING);
    EXPECT_EQ(environment(2, 2), SIGIL_TK_OPTION);
    EXPECT_EQ(environment(0, 3), SIGIL_TK_OPTION);
    EXPECT_EQ(environment(-1, -1), SIGIL_TK_OPTION);
}

TEST_P(Trust, UsageIsChecked)
{
    ASSERT_EQ(trust("root.crt"), 0);
    ASSERT_EQ(setAuthorities("ca.crt"), 0);
    const struct {
        const char* name;
        int usage;
        int code;
    } cases[]{
        {"user", SIGIL_TK_USAGE_USER, 0},
        {"km", SIGIL_TK_USAGE_USER, 0},
        {"ca", SIGIL_TK_USAGE_USER, SIGIL_TK_VERIFY_USAGE},
        {"user", SIGIL_TK_USAGE_SIGN, 0},
        {"km", SIGIL_TK_USAGE_SIGN, SIGIL_TK_VERIFY_USAGE},
        {"km", SIGIL_TK_USAGE_KEY_MANAGEMENT, 0},
        {"user", SIGIL_TK_USAGE_KEY_MANAGEMENT, SIGIL_TK_VERIFY_USAGE},
        {"ca", SIGIL_TK_USAGE_AUTHORITY, 0},
        {"user", SIGIL_TK_USAGE_AUTHORITY, SIGIL_TK_VERIFY_USAGE},
        {"user", 5, SIGIL_TK_OPTION},
    };
    for (const auto& expected : cases)
        EXPECT_EQ(verify(expected.name, expected.usage), expected.code) << expected.name << " " << expected.usage;
}

TEST_P(Trust, PoliciesAreChecked)
{
    ASSERT_EQ(trust("root.crt"), 0);
    ASSERT_EQ(setAuthorities("ca.crt"), 0);
    EXPECT_EQ(verify("user", 0, "1 2 410 200005 1 1 1"), 0) << toolkit.errorText();
    EXPECT_EQ(verify("user", 0, "1.2.3|1.2.410.200005.1.1.1|"), 0);
    EXPECT_EQ(verify("user", 0, "1.2.3, 1.2.4"), SIGIL_TK_VERIFY_POLICY);
    EXPECT_EQ(verify("km", 0, "1.2.410.200005.1.1.1"), SIGIL_TK_VERIFY_POLICY);
    EXPECT_EQ(verify("user", 0, "no policy"), SIGIL_TK_ARGUMENT);
}

TEST_P(Trust, RevocationListsAreFetched)
{
    ASSERT_EQ(trust("root.crt"), 0);
    ASSERT_EQ(setAuthorities("ca.crt"), 0);
    ASSERT_EQ(environment(0, SIGIL_TK_REVOCATION_LEAF), 0);
    EXPECT_EQ(verify("user"), 0) << toolkit.errorText();
    EXPECT_EQ(verify("revoked"), SIGIL_TK_VERIFY_REVOKED);
    EXPECT_EQ(verify("km"), SIGIL_TK_VERIFY_NO_CRL) << "it names no list";
    ASSERT_EQ(environment(0, SIGIL_TK_REVOCATION_LEAF, true), 0);
    EXPECT_EQ(verify("km"), 0) << toolkit.errorText();
    EXPECT_EQ(verify("revoked"), SIGIL_TK_VERIFY_REVOKED);
    ASSERT_EQ(environment(0, SIGIL_TK_REVOCATION_PATH), 0);
    EXPECT_EQ(verify("user"), 0) << toolkit.errorText();
    ASSERT_EQ(environment(0, SIGIL_TK_REVOCATION_NONE), 0);
    EXPECT_EQ(verify("revoked"), 0);
    EXPECT_EQ(verify("revoked", 0, "", true), SIGIL_TK_VERIFY_REVOKED);
}

TEST_P(Trust, AMissingIssuerIsFetchedWhenAllowed)
{
    ASSERT_EQ(trust("root.crt"), 0);
    EXPECT_EQ(verify("user"), SIGIL_TK_VERIFY_NO_ISSUER);
    ASSERT_EQ(environment(SIGIL_TK_PATH_FETCH, SIGIL_TK_REVOCATION_NONE), 0);
    EXPECT_EQ(verify("user"), 0) << toolkit.errorText();
    EXPECT_EQ(verify("km"), SIGIL_TK_VERIFY_NO_ISSUER) << "it names no address";
}

TEST_P(Trust, StatusOnARevocationList)
{
    int value = -1;
    EXPECT_EQ(status("user", value), SIGIL_TK_VERIFY_NO_ISSUER);
    ASSERT_EQ(setAuthorities("ca.crt"), 0);
    ASSERT_EQ(status("user", value), 0) << toolkit.errorText();
    EXPECT_EQ(value, SIGIL_TK_STATUS_GOOD);
    ASSERT_EQ(status("revoked", value), 0);
    EXPECT_EQ(value, SIGIL_TK_STATUS_REVOKED);
    const std::string base = "http://127.0.0.1:" + std::to_string(pki().http().port());
    value = -1;
    EXPECT_EQ(status("km", value), SIGIL_TK_VERIFY_NO_CRL);
    EXPECT_EQ(status("km", value, base + "/root.crl"), SIGIL_TK_VERIFY_NO_CRL) << "the list of another authority";
    EXPECT_EQ(status("km", value, base + "/none.crl"), SIGIL_TK_NOT_FOUND);
    EXPECT_EQ(status("km", value, base + "/ca.crt"), SIGIL_TK_CRL_MALFORMED);
    std::string forged = file("ca.crl");
    forged.back() = static_cast<char>(forged.back() ^ 1);
    pki().workshop.write("forged.crl", forged);
    EXPECT_EQ(status("km", value, base + "/forged.crl"), SIGIL_TK_VERIFY_SIGNATURE);
    EXPECT_EQ(value, -1);
    ASSERT_EQ(environment(0, 2, false, timeIn(31 * day)), 0);
    EXPECT_EQ(status("user", value), SIGIL_TK_VERIFY_NO_CRL) << "the list is too old by then";
}

TEST_P(Trust, ListsOfOtherCertificatesTellNothing)
{
    int value = -1;
    ASSERT_EQ(setAuthorities("ca.crt"), 0);
    const std::string base = "http://127.0.0.1:" + std::to_string(pki().http().port());
    for (const char* other : {"theirs", "authorities", "reasons", "changes"})
        EXPECT_EQ(status("user", value, base + "/" + other + ".crl"), SIGIL_TK_VERIFY_NO_CRL) << other;
    EXPECT_EQ(value, -1);
    ASSERT_EQ(status("user", value, base + "/mine.crl"), 0) << toolkit.errorText();
    EXPECT_EQ(value, SIGIL_TK_STATUS_GOOD);
    ASSERT_EQ(status("revoked", value, base + "/mine.crl"), 0);
    EXPECT_EQ(value, SIGIL_TK_STATUS_REVOKED);
    EXPECT_EQ(status("km", value, base + "/mine.crl"), SIGIL_TK_VERIFY_NO_CRL) << "it names no list";
}

TEST_P(Trust, TheListOfACertificateIsHandedOut)
{
    ByteString user(toolkit, file("user.crt"));
    ByteString km(toolkit, file("km.crt"));
    ByteString list(toolkit);
    const std::string function = hvtk() ? "HVAP_GetCRLByCert" : "LDAP_GetCRLByCert";
    EXPECT_EQ(toolkit(function, km.get(), list.get()), SIGIL_TK_VERIFY_NO_CRL);
    EXPECT_TRUE(list.empty());
    ASSERT_EQ(toolkit(function, user.get(), list.get()), 0);
    EXPECT_EQ(list.bytes(), file("ca.crl"));
}

TEST(HvtkTrust, EnvironmentOfLists)
{
    const ToolkitLibrary toolkit("HVTK_");
    const Workshop& workshop = pki().workshop;
    ByteString trusted(toolkit, workshop.read("ca.crt"));
    ByteString crls(toolkit, workshop.read("ca.crl"));
    ByteString revoked(toolkit, workshop.read("revoked.crt"));
    ByteString km(toolkit, workshop.read("km.crt"));
    ByteString garbage(toolkit, "garbage");
    char* const none = nullptr;
    ASSERT_EQ(toolkit("CERT_SetVerifyEnv2", text(""), trusted.get(), crls.get()), 0);
    EXPECT_EQ(toolkit("CERT_SetVerifyEnv2", text(""), trusted.get(), garbage.get()), SIGIL_TK_ENCODING);
    BINSTR* const nothing = nullptr;
    EXPECT_EQ(toolkit("CERT_Verify", km.get(), 0, none, true, nothing, nothing), 0) << "the list is at hand";
    EXPECT_EQ(toolkit("CERT_Verify", revoked.get(), 0, none, true, nothing, nothing), SIGIL_TK_VERIFY_REVOKED);
    EXPECT_EQ(toolkit("CERT_Verify2", revoked.get(), 1, none, none), 0);
    EXPECT_EQ(toolkit("CERT_Verify2", revoked.get(), 1, none, text(timeIn(400 * day))), SIGIL_TK_VERIFY_EXPIRED);
    EXPECT_EQ(toolkit("CERT_Verify2", revoked.get(), 1, text("1.2.3"), none), SIGIL_TK_VERIFY_POLICY);
}

TEST(HvtkTrust, OfSeveralListsTheOneOfTheCertificateIsTaken)
{
    const ToolkitLibrary toolkit("HVTK_");
    const Workshop& workshop = pki().workshop;
    ByteString authorities(toolkit, workshop.read("ca.crt"));
    ByteString trusted(toolkit, workshop.read("ca.crt"));
    ByteString revoked(toolkit, workshop.read("revoked.crt"));
    ByteString lists(toolkit);
    for (const char* name : {"theirs.crl", "changes.crl", "mine.crl"}) {
        ByteString list(toolkit, workshop.read(name));
        ASSERT_EQ(toolkit("UTIL_AddObject", list.get(), lists.get()), 0);
    }
    ASSERT_EQ(toolkit("CERT_SetVerifyEnv2", text(""), trusted.get(), lists.get()), 0);
    ASSERT_EQ(toolkit("CERT_SetCaPubs", authorities.get()), 0);
    int value = -1;
    ASSERT_EQ(toolkit("CERT_CheckStatByCRL", revoked.get(), text(""), &value), 0) << toolkit.errorText();
    EXPECT_EQ(value, SIGIL_TK_STATUS_REVOKED);
    BINSTR* const nothing = nullptr;
    EXPECT_EQ(toolkit("CERT_Verify", revoked.get(), 0, text(""), true, nothing, nothing), SIGIL_TK_VERIFY_REVOKED);
}

TEST(HvtkTrust, PathRootAndTrust)
{
    const ToolkitLibrary toolkit("HVTK_");
    const Workshop& workshop = pki().workshop;
    ByteString user(toolkit, workshop.read("user.crt"));
    ByteString root(toolkit, workshop.read("root.crt"));
    ByteString other(toolkit, workshop.read("other.crt"));
    ByteString ca(toolkit, workshop.read("ca.crt"));
    ByteString path(toolkit);
    ByteString top(toolkit);
    EXPECT_EQ(toolkit("UTIL_GetCertPath", user.get(), path.get()), SIGIL_TK_VERIFY_NO_ISSUER);
    EXPECT_EQ(toolkit("UTIL_GetRootCert", user.get(), top.get()), SIGIL_TK_VERIFY_NO_ISSUER);
    ASSERT_EQ(toolkit("CERT_SetCaPubs", ca.get()), 0);
    bool trusted = false;
    EXPECT_EQ(toolkit("UTIL_IsTrustCert", user.get(), root.get(), &trusted), 0);
    EXPECT_TRUE(trusted);
    EXPECT_EQ(toolkit("UTIL_IsTrustCert", user.get(), other.get(), &trusted), 0);
    EXPECT_FALSE(trusted);
    ASSERT_EQ(toolkit("CERT_AddTrustedCert", root.get()), 0);
    ASSERT_EQ(toolkit("UTIL_GetCertPath", user.get(), path.get()), 0);
    int count = 0;
    EXPECT_EQ(toolkit("UTIL_GetObjectCount", path.get(), &count), 0);
    EXPECT_EQ(count, 3);
    ASSERT_EQ(toolkit("UTIL_GetRootCert", user.get(), top.get()), 0);
    EXPECT_EQ(top.bytes(), root.bytes());
}
