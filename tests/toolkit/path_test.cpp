// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Paths that RFC 5280 forbids although every signature is right, authorities that share a name, lists of all kinds, and what a
// certificate may make the host fetch.

#include "tests/toolkit/server.h"
#include "tests/toolkit/toolkit_library.h"
#include "tests/toolkit/workshop.h"
#include "toolkit/engine/base/handles.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <openssl/pem.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <vector>

using namespace toolkit_test;

namespace {

constexpr const char* ca = "basicConstraints=critical,CA:TRUE\n";
/** So that names alone tell who may be the issuer. */
constexpr const char* noIdentifiers = "\nsubjectKeyIdentifier=none\nauthorityKeyIdentifier=none\n";
constexpr const char* smallKey = "ec -pkeyopt ec_paramgen_curve:P-256";

/** A root on a web server whose log tells what was asked for, and what hangs from it. */
class Pki {
public:
    Pki()
    {
        m_http = std::make_unique<Server>(Server::web(workshop));
        certificate("root", "root", ca);
        certificate("other", "other root", ca);
        certificate("strict", "strict",
            std::string(ca) + "policyConstraints=critical,requireExplicitPolicy:0\n" + "certificatePolicies=1.2.3",
            "root");
        certificate("without", "without", "keyUsage=digitalSignature", "strict");
        certificate("with", "with", "certificatePolicies=1.2.3", "strict");
        certificate("plain", "plain", "keyUsage=digitalSignature", "root");
        workshop.certificate("old", "/C=KR/CN=old root", ca, {}, "-days 365 -md5"); // trusted, whatever signed it
        workshop.certificate("fine", "/C=KR/CN=fine", "keyUsage=digitalSignature", "old");
        workshop.certificate("md5", "/C=KR/CN=md5", "keyUsage=digitalSignature", "old", "-days 365 -md5");
        workshop.certificate("sha1", "/C=KR/CN=sha1", "keyUsage=digitalSignature", "old", "-days 365 -sha1");
        workshop.certificate("short", "/C=KR/CN=short", "keyUsage=digitalSignature", "old", "-days 365", "rsa:512");
        workshop.certificate("shortca", "/C=KR/CN=short ca", ca, "root", "-days 365", "rsa:768");
        certificate("below", "below", "keyUsage=digitalSignature", "shortca");
        twins();
    }

    void certificate(const std::string& name, const std::string& commonName, const std::string& extensions,
        const std::string& issuer = {}, const std::string& options = "-days 365") const
    {
        workshop.certificate(name, "/C=KR/CN=" + commonName, extensions + noIdentifiers, issuer, options, smallKey);
    }

    /** Writes NAME.crt: the certificate @p from after @p change, signed anew by the root. */
    void change(const std::string& name, const std::string& from, const std::function<void(X509*)>& change) const
    {
        const std::string der = workshop.read(from + ".crt");
        const auto* at = reinterpret_cast<const unsigned char*>(der.data());
        const toolkit::X509Handle certificate(d2i_X509(nullptr, &at, static_cast<long>(der.size())));
        const std::string keyDer = workshop.read("root.key");
        const auto* keyAt = reinterpret_cast<const unsigned char*>(keyDer.data());
        const toolkit::KeyHandle key(d2i_AutoPrivateKey(nullptr, &keyAt, static_cast<long>(keyDer.size())));
        change(certificate.get());
        ASSERT_GT(X509_sign(certificate.get(), key.get(), EVP_sha256()), 0);
        const auto out = toolkit::encode<std::vector<unsigned char>>(certificate.get(), i2d_X509);
        workshop.write(name + ".crt", {out.begin(), out.end()});
    }

    std::string url(const std::string& name) const
    {
        return "http://127.0.0.1:" + std::to_string(m_http->port()) + "/" + name;
    }
    /** How often the web server was asked for names that begin with @p name. */
    long asked(const std::string& name) const
    {
        const std::string log = workshop.read("server.log");
        long count = 0;
        for (std::size_t at = 0; (at = log.find("GET /" + name, at)) != log.npos; ++at)
            ++count;
        return count;
    }

    Workshop workshop;

private:
    /** Two authorities of one name with a key each, and the first one certified by another root and in the past, too. */
    void twins() const
    {
        certificate("twin", "twin", ca, "root");
        certificate("double", "twin", ca, "root");
        certificate("child", "child", "keyUsage=digitalSignature", "twin");
        const std::string again = "openssl x509 -req -in twin.csr -extfile twin.cnf -extensions ext -outform DER ";
        workshop.run(again + "-CA other.pem -CAkey other.key.pem -CAcreateserial -days 99 -out astray.crt");
        workshop.run(again + "-CA root.pem -CAkey root.key.pem -CAcreateserial -days -1 -out past.crt");
        workshop.run(again + "-CA root.pem -CAkey root.key.pem -CAcreateserial -days -1 -out older.crt");
    }

    std::unique_ptr<Server> m_http;
};

const Pki& pki()
{
    static const Pki made;
    return made;
}

class Paths : public testing::Test {
protected:
    Paths() { trust("root"); }

    std::string file(const std::string& name) const { return pki().workshop.read(name); }
    void trust(const std::string& name)
    {
        ByteString certificate(toolkit, file(name + ".crt"));
        ASSERT_EQ(toolkit("CERT_AddTrustedCert", certificate.get()), 0);
    }
    std::string list(const std::vector<std::string>& files) const
    {
        ByteString all(toolkit);
        for (const std::string& name : files) {
            ByteString one(toolkit, file(name));
            EXPECT_EQ(toolkit("UTIL_AddObject", one.get(), all.get()), 0) << name;
        }
        return all.bytes();
    }
    int verify(const std::string& name, const std::vector<std::string>& authorities = {}, bool revocation = false,
        const std::string& policies = "")
    {
        ByteString certificate(toolkit, file(name + ".crt"));
        ByteString between(toolkit, list(authorities));
        BINSTR* const nothing = nullptr;
        return toolkit("CERT_Verify", certificate.get(), 0, text(policies), revocation, between.get(), nothing);
    }
    /** Trusts @p anchor alone and has @p lists at hand. */
    void relyOn(const std::string& anchor, const std::vector<std::string>& lists)
    {
        ByteString trusted(toolkit, file(anchor + ".crt"));
        ByteString crls(toolkit, list(lists));
        ASSERT_EQ(toolkit("CERT_SetVerifyEnv2", text(""), trusted.get(), crls.get()), 0) << toolkit.errorText();
    }
    int status(const std::string& name, int& value)
    {
        ByteString certificate(toolkit, file(name + ".crt"));
        return toolkit("CERT_CheckStatByCRL", certificate.get(), text(""), &value);
    }

    ToolkitLibrary toolkit{"HVTK_"};
};

void repeatExtension(X509* certificate) { X509_add_ext(certificate, X509_get_ext(certificate, 0), -1); }

/** Where to learn more of the issuer, in these bytes. */
void addExtension(X509* certificate, const std::string& bytes)
{
    const toolkit::Handle<ASN1_OCTET_STRING, ASN1_OCTET_STRING_free> garbage(ASN1_OCTET_STRING_new());
    ASN1_OCTET_STRING_set(
        garbage.get(), reinterpret_cast<const unsigned char*>(bytes.data()), static_cast<int>(bytes.size()));
    const toolkit::Handle<X509_EXTENSION, X509_EXTENSION_free> extension(
        X509_EXTENSION_create_by_NID(nullptr, NID_info_access, 0, garbage.get()));
    X509_add_ext(certificate, extension.get(), -1);
}

void dropExtensions(X509* certificate)
{
    while (X509_get_ext_count(certificate) > 0)
        X509_EXTENSION_free(X509_delete_ext(certificate, 0));
}

} // namespace

TEST_F(Paths, AnAuthorityMayInsistOnPoliciesThatNobodyNamed)
{
    EXPECT_EQ(verify("with", {"strict.crt"}), 0) << toolkit.errorText();
    EXPECT_EQ(verify("without", {"strict.crt"}), SIGIL_TK_VERIFY_POLICY);
    EXPECT_EQ(verify("with", {"strict.crt"}, false, "1.2.3"), 0);
    EXPECT_EQ(verify("with", {"strict.crt"}, false, "1.2.4"), SIGIL_TK_VERIFY_POLICY);
    EXPECT_EQ(verify("plain"), 0) << "nobody insists";
}

TEST_F(Paths, SignaturesThatAnybodyCanMakeAreRefused)
{
    trust("old");
    EXPECT_EQ(verify("fine"), 0) << toolkit.errorText();
    EXPECT_EQ(verify("sha1"), 0) << toolkit.errorText();
    EXPECT_EQ(verify("md5"), SIGIL_TK_VERIFY_FAILED);
    EXPECT_EQ(verify("short"), SIGIL_TK_VERIFY_FAILED);
    EXPECT_EQ(verify("below", {"shortca.crt"}), SIGIL_TK_VERIFY_FAILED);
    trust("shortca");
    EXPECT_EQ(verify("below"), SIGIL_TK_VERIFY_FAILED) << "trust does not make the key longer";
}

TEST_F(Paths, FormsThatTheStandardForbidsAreRefused)
{
    pki().change("v4", "plain", [](X509* x) { X509_set_version(x, 3); });
    pki().change("v1", "plain", [](X509* x) { X509_set_version(x, X509_VERSION_1); });
    pki().change("v2", "plain", [](X509* x) { X509_set_version(x, X509_VERSION_2); });
    pki().change("twice", "plain", repeatExtension);
    pki().change("v0", "plain", [](X509* x) { X509_set_version(x, -1); });
    pki().change("malformed", "plain", [](X509* x) { addExtension(x, "garbage"); });
    pki().change("endless", "plain", [](X509* x) { addExtension(x, fromHex("30800000")); });
    pki().change("twiceca", "twin", repeatExtension);
    pki().change("bare", "plain", [](X509* x) {
        dropExtensions(x);
        X509_set_version(x, X509_VERSION_1);
    });
    for (const char* name : {"v0", "v4", "v1", "v2", "twice", "malformed", "endless"})
        EXPECT_EQ(verify(name), SIGIL_TK_VERIFY_FAILED) << name;
    EXPECT_EQ(verify("child", {"twiceca.crt"}), SIGIL_TK_VERIFY_FAILED);
    EXPECT_EQ(verify("bare"), 0) << toolkit.errorText();
}

TEST_F(Paths, EveryAuthorityOfANameIsTried)
{
    std::vector<std::string> authorities{"double.crt", "past.crt", "astray.crt", "twin.crt"};
    std::sort(authorities.begin(), authorities.end());
    do
        EXPECT_EQ(verify("child", authorities), 0) << toolkit.errorText() << testing::PrintToString(authorities);
    while (std::next_permutation(authorities.begin(), authorities.end()));
    EXPECT_EQ(verify("child", {"double.crt"}), SIGIL_TK_VERIFY_SIGNATURE);
    EXPECT_EQ(verify("child", {"astray.crt"}), SIGIL_TK_VERIFY_NO_ISSUER);
    EXPECT_EQ(verify("child", {"astray.crt", "past.crt"}), SIGIL_TK_VERIFY_EXPIRED);
    EXPECT_EQ(verify("child", {"past.crt", "older.crt"}), SIGIL_TK_VERIFY_EXPIRED) << "each of them leads nowhere";
}

TEST_F(Paths, AnAuthorityWithoutAKnownKeySignsNothing)
{
    pki().change("keyless", "twin", [](X509* x) {
        X509_PUBKEY_set0_param(
            X509_get_X509_PUBKEY(x), OBJ_txt2obj("1.2.3.4", 1), V_ASN1_UNDEF, nullptr, nullptr, 0);
    });
    EXPECT_EQ(verify("child", {"keyless.crt"}), SIGIL_TK_VERIFY_NO_ISSUER);
}

TEST_F(Paths, APathHasSixteenCertificates)
{
    const auto nameOf = [](int link) { return link == 0 ? std::string("root") : "link" + std::to_string(link); };
    const auto setName = [](X509_NAME* name, const std::string& text) {
        X509_NAME_ENTRY_free(X509_NAME_delete_entry(name, X509_NAME_entry_count(name) - 1));
        X509_NAME_add_entry_by_txt(name, "CN", MBSTRING_UTF8, reinterpret_cast<const unsigned char*>(text.c_str()),
            static_cast<int>(text.size()), -1, 0);
    };
    std::vector<std::string> authorities;
    for (int link = 1; link <= 16; ++link) {
        pki().change(nameOf(link), "root", [&](X509* x) { // all of them have the root's key
            setName(X509_get_subject_name(x), nameOf(link));
            setName(X509_get_issuer_name(x), nameOf(link - 1));
        });
        authorities.push_back(nameOf(link) + ".crt");
    }
    EXPECT_EQ(verify("link15", authorities), 0) << toolkit.errorText();
    EXPECT_EQ(verify("link16", authorities), SIGIL_TK_VERIFY_NO_ISSUER) << toolkit.errorText();
}

namespace {

/** An authority with a good and a revoked user, and lists of every kind. */
class Lists : public Paths {
protected:
    static void SetUpTestSuite()
    {
        const Workshop& workshop = pki().workshop;
        workshop.certificate("lister", "/C=KR/CN=lister", ca); // RSA: ECDSA does not go with MD5
        pki().certificate("good", "good", "keyUsage=digitalSignature", "lister");
        pki().certificate("bad", "bad", "keyUsage=digitalSignature", "lister");
        workshop.write("ca.conf",
            "[ca]\ndefault_ca=own\n[own]\ndatabase=index\ncrlnumber=number\ndefault_md=sha256\ndefault_crl_days="
            "9\n");
        workshop.write("index", "");
        workshop.write("number", "01\n");
        makeList("base", "freshestCRL=URI:http://127.0.0.1:1/\n");
        workshop.run("openssl ca -config ca.conf -cert lister.pem -keyfile lister.key.pem -revoke bad.pem"
                     " -crl_reason keyCompromise");
        makeList("delta", "2.5.29.27=critical,DER:020101\n");
        makeList("full", "");
        makeList("compromised", "issuingDistributionPoint=critical,@p\n[p]\nonlysomereasons=keyCompromise\n");
        makeList("md5", "", "-md md5");
        workshop.write("index", "");
        makeList("otherwise",
            "issuingDistributionPoint=critical,@p\n[p]\nonlysomereasons=CACompromise,affiliationChanged,superseded,"
            "cessationOfOperation,certificateHold,privilegeWithdrawn,AACompromise\n");
    }
    /** @param signer another certificate of the authority's name, when not its own */
    static void makeList(const std::string& name, const std::string& extensions, const std::string& options = "",
        const std::string& signer = "lister")
    {
        const Workshop& workshop = pki().workshop;
        workshop.write("list.conf", workshop.read("ca.conf") + "[extensions]\n" + extensions);
        workshop.run("openssl ca -config list.conf -cert " + signer + ".pem -keyfile " + signer +
            ".key.pem -gencrl " + options + (extensions.empty() ? "" : " -crlexts extensions") +
            " -out list.pem && openssl crl -in list.pem -outform DER -out " + name + ".crl");
    }
    /** What both ways to ask for revocation say, as one code. */
    int revocationOf(const std::string& name, const std::vector<std::string>& lists)
    {
        relyOn("lister", lists);
        int value = -1;
        const int code = status(name, value);
        const int asStatus = code == 0 && value == SIGIL_TK_STATUS_REVOKED ? int(SIGIL_TK_VERIFY_REVOKED) : code;
        EXPECT_EQ(verify(name, {}, true), asStatus) << name << " " << testing::PrintToString(lists);
        return asStatus;
    }
};

} // namespace

TEST_F(Lists, ChangesCountWithTheListThatTheyChange)
{
    EXPECT_EQ(revocationOf("bad", {"base.crl"}), 0);
    EXPECT_EQ(revocationOf("bad", {"base.crl", "delta.crl"}), SIGIL_TK_VERIFY_REVOKED);
    EXPECT_EQ(revocationOf("good", {"base.crl", "delta.crl"}), 0);
    EXPECT_EQ(revocationOf("good", {"delta.crl"}), SIGIL_TK_VERIFY_NO_CRL);
}

TEST_F(Lists, ListsOfSomeReasonsCountTogether)
{
    EXPECT_EQ(revocationOf("good", {"compromised.crl"}), SIGIL_TK_VERIFY_NO_CRL);
    EXPECT_EQ(revocationOf("good", {"compromised.crl", "otherwise.crl"}), 0);
    EXPECT_EQ(revocationOf("bad", {"otherwise.crl", "compromised.crl"}), SIGIL_TK_VERIFY_REVOKED);
}

TEST_F(Lists, AListThatAnybodyCanMakeTellsNothing)
{
    EXPECT_EQ(revocationOf("bad", {"full.crl"}), SIGIL_TK_VERIFY_REVOKED);
    EXPECT_EQ(revocationOf("bad", {"md5.crl"}), SIGIL_TK_VERIFY_NO_CRL);
}

TEST_F(Lists, ASignerThatAnybodyCanBeTellsNothing)
{
    struct Signer {
        std::string name;
        std::string options;
        std::string key;
        int expected; // of a good certificate
    };
    for (const Signer& signer :
        {Signer{"second", "", "rsa:2048", 0}, Signer{"shorter", "", "rsa:512", SIGIL_TK_VERIFY_NO_CRL},
            Signer{"forged", " -md5", "rsa:2048", SIGIL_TK_VERIFY_NO_CRL}}) {
        pki().workshop.certificate(signer.name, "/C=KR/CN=lister", std::string(ca) + "keyUsage=cRLSign,keyCertSign",
            "lister", "-days 365" + signer.options, signer.key);
        makeList(signer.name, "authorityKeyIdentifier=issuer:always", "", signer.name);
        ByteString authority(toolkit, file(signer.name + ".crt"));
        ASSERT_EQ(toolkit("CERT_SetCaPubs", authority.get()), 0);
        relyOn("lister", {signer.name + ".crl"});
        int value = -1;
        EXPECT_EQ(status("good", value), signer.expected) << signer.name << toolkit.errorText();
        EXPECT_EQ(value, signer.expected == 0 ? SIGIL_TK_STATUS_GOOD : -1);
    }
}

TEST_F(Lists, WhatIsTrustedItselfHasNoStatusWithoutAList)
{
    relyOn("lister", {});
    int value = -1;
    EXPECT_EQ(status("lister", value), SIGIL_TK_VERIFY_NO_CRL);
}

TEST_F(Paths, AForgedCertificateSendsNobodyAnywhere)
{
    pki().certificate("caller", "caller",
        "crlDistributionPoints=URI:" + pki().url("forged.crl") +
            "\nauthorityInfoAccess=caIssuers;URI:" + pki().url("forged.crt"),
        "root");
    std::string forged = file("caller.crt");
    forged.back() = static_cast<char>(forged.back() ^ 1);
    pki().workshop.write("forged-caller.crt", forged);
    ASSERT_EQ(
        toolkit("CERT_SetVerifyEnv1", int(SIGIL_TK_PATH_FETCH), int(SIGIL_TK_REVOCATION_PATH), false, text("")), 0);
    int value = -1;
    ByteString certificate(toolkit, forged);
    ByteString out(toolkit);
    EXPECT_EQ(verify("forged-caller"), SIGIL_TK_VERIFY_SIGNATURE);
    EXPECT_EQ(status("forged-caller", value), SIGIL_TK_VERIFY_SIGNATURE);
    EXPECT_EQ(toolkit("HVAP_GetCRLByCert", certificate.get(), out.get()), SIGIL_TK_VERIFY_SIGNATURE);
    EXPECT_EQ(pki().asked("forged"), 0);
    EXPECT_EQ(verify("caller"), SIGIL_TK_VERIFY_NO_CRL);
    EXPECT_EQ(pki().asked("forged.crl"), 1) << "the true one does";
}

TEST_F(Paths, AnIssuerThatDidNotSignLeadsNowhere)
{
    pki().certificate("lost", "lost", "authorityInfoAccess=caIssuers;URI:" + pki().url("lure.crt"), "other");
    pki().certificate("lure", "other root", // the right name, another key, and an address of its own
        std::string(ca) + "authorityInfoAccess=caIssuers;URI:" + pki().url("next.crt"), "root");
    ASSERT_EQ(
        toolkit("CERT_SetVerifyEnv1", int(SIGIL_TK_PATH_FETCH), int(SIGIL_TK_REVOCATION_NONE), false, text("")), 0);
    EXPECT_EQ(verify("lost"), SIGIL_TK_VERIFY_SIGNATURE);
    EXPECT_EQ(pki().asked("lure.crt"), 1);
    EXPECT_EQ(pki().asked("next.crt"), 0);
}

TEST_F(Paths, AddressesThatLeadNowhereAreAskedOnce)
{
    const auto hinted = [](const std::string& name, const std::string& issuer) {
        const std::string hint = "caIssuers;URI:" + pki().url(issuer);
        pki().certificate(name, name, "authorityInfoAccess=" + hint + "," + hint, "other");
    };
    hinted("lonely", "gone.crt");
    hinted("misled", "without.crt");
    hinted("selfish", "selfish.crt");
    ASSERT_EQ(
        toolkit("CERT_SetVerifyEnv1", int(SIGIL_TK_PATH_FETCH), int(SIGIL_TK_REVOCATION_NONE), false, text("")), 0);
    for (const std::string name : {"lonely", "misled", "selfish"})
        EXPECT_EQ(verify(name), SIGIL_TK_VERIFY_NO_ISSUER) << name;
    for (const std::string name : {"gone.crt", "without.crt", "selfish.crt"})
        EXPECT_EQ(pki().asked(name), 1) << name;
}

TEST_F(Paths, OneCallTriesFourAddresses)
{
    std::string points;
    for (int i = 0; i < 9; ++i)
        points += (i == 0 ? "crlDistributionPoints=URI:" : ",URI:") + pki().url("many" + std::to_string(i));
    pki().certificate("many", "many", points, "root");
    EXPECT_EQ(verify("many", {}, true), SIGIL_TK_VERIFY_NO_CRL);
    EXPECT_EQ(pki().asked("many"), 4);
    int value = -1;
    EXPECT_EQ(status("many", value), SIGIL_TK_VERIFY_NO_CRL);
    EXPECT_EQ(pki().asked("many"), 8);
    ByteString certificate(toolkit, file("many.crt"));
    ByteString out(toolkit);
    EXPECT_EQ(toolkit("HVAP_GetCRLByCert", certificate.get(), out.get()), SIGIL_TK_VERIFY_NO_CRL);
    EXPECT_EQ(pki().asked("many"), 12);
}
