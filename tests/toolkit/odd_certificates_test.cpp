// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Certificates and names in forms that hardly any authority writes, and in damaged ones.

#include "fuzz/toolkit/two_readings.h"
#include "tests/toolkit/failure.h"
#include "tests/toolkit/workshop.h"
#include "toolkit/engine/base/der.h"
#include "toolkit/engine/base/oid.h"
#include "toolkit/engine/base/pem.h"
#include "toolkit/engine/keys/identity.h"
#include "toolkit/engine/net/fetch.h"
#include "toolkit/engine/trust/soundness.h"
#include "toolkit/engine/trust/trust.h"
#include "toolkit/engine/x509/general_name.h"
#include "toolkit/engine/x509/name.h"
#include "toolkit/engine/x509/parsed_certificate.h"
#include "toolkit/engine/x509/text.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <utility>

namespace odd_certificates {
namespace {

namespace der = toolkit::der;
using testing::HasSubstr;
using toolkit::Bytes;
using toolkit::Certificate;
using toolkit::view;
using toolkit_test::codeOf;
using toolkit_test::fromHex;
using toolkit_test::toHex;

class OddCertificates : public testing::Test {
protected:
    /** A self-signed certificate of the openssl command. */
    Bytes certificate(const std::string& options, const std::string& extensions = "") const
    {
        workshop.write("config",
            "[req]\ndistinguished_name=name\nx509_extensions=extensions\nstring_mask=default\n"
            "[name]\n[extensions]\n" +
                extensions + "\n");
        workshop.run("openssl ecparam -name prime256v1 -genkey -noout -out key.pem");
        workshop.run("openssl req -x509 -config config -utf8 -days 2 -outform DER -out made " + options);
        return toolkit::toBytes(view(workshop.read("made")));
    }
    /** One with a key on a curve. */
    Bytes withExtensions(const std::string& extensions) const
    {
        return certificate("-new -key key.pem -subj /CN=odd", extensions);
    }
    std::optional<std::string> difference(const Bytes& der) const
    {
        return fuzz::TwoReadings(library, der).difference();
    }

    toolkit_test::Workshop workshop;
    toolkit::Library library;
};

std::string rewritten(const std::string& name) { return toolkit::nameText(toolkit::nameFromText(name).get()); }

std::string generalNameOf(const std::string& hex)
{
    const std::string bytes = fromHex(hex);
    const auto* at = reinterpret_cast<const unsigned char*>(bytes.data());
    const toolkit::Handle<GENERAL_NAME, GENERAL_NAME_free> name(
        d2i_GENERAL_NAME(nullptr, &at, static_cast<long>(bytes.size())));
    return name ? toolkit::generalName(name.get()) : "damaged";
}

} // namespace

TEST(OddNames, TypesAreReadInEitherCaseAndByNumber)
{
    EXPECT_EQ(rewritten("CN = Hong , O=Org,C=KR"), "cn=Hong,o=Org,c=KR");
    EXPECT_EQ(rewritten("2.5.4.3=Hong,c=KR"), "cn=Hong,c=KR");
    EXPECT_EQ(rewritten("cn=\xC8\xAB\xB1\xE6\xB5\xBF,c=KR"), "cn=\xC8\xAB\xB1\xE6\xB5\xBF,c=KR") << "CP949";
    EXPECT_EQ(rewritten("cn=a,{=b,c=KR"), "cn=a,{=b,c=KR") << "a comma in a value";
    EXPECT_EQ(rewritten("cn=a,[x]=b,c=KR"), "cn=a,[x]=b,c=KR");
    for (const char* const none :
        {"", "Hong", "{cn}=Hong", "[cn]=Hong", "c:n=Hong", "=Hong", "cn=", "1.2.x=Hong", "zz=Hong"})
        EXPECT_EQ(codeOf([&] { rewritten(none); }), SIGIL_TK_ARGUMENT) << none;
}

TEST(OddNames, AddressesMayBeRanges)
{
    EXPECT_EQ(toolkit::addressesText(view(fromHex("c0000201"))), "192.0.2.1");
    EXPECT_EQ(toolkit::addressesText(view(fromHex("c0000200ffffff00"))), "192.0.2.0/255.255.255.0");
    EXPECT_EQ(toolkit::addressesText(view(fromHex("c0000200ffffff0001"))), "c0000200ffffff0001");
    EXPECT_EQ(toolkit::addressesText(view(fromHex("c00002"))), "c00002");
}

TEST(OddNames, OfEveryKindAreNamed)
{
    EXPECT_EQ(generalNameOf("a505a1030c0178"), "unsupported") << "of an EDI party";
    EXPECT_EQ(generalNameOf("88032a0304"), "oid=1.2.3.4");
    EXPECT_EQ(generalNameOf("a00a06032a0304a0030c0178"), "otherName=1.2.3.4");
    EXPECT_EQ(generalNameOf("a01106092a831a8c9a440a0101a0040c027878"), "otherName=1.2.410.200004.10.1.1")
        << "identity data that are no sequence";
}

TEST(OddNames, IdentityDataOfAnotherFormHoldNoNumber)
{
    const auto sequence = [](std::initializer_list<toolkit::View> parts) {
        return der::element(der::Sequence, parts);
    };
    const Bytes name = der::element(der::Utf8String, {view("Hong")});
    const Bytes vid = der::oid("1.2.410.200004.10.1.1.1");
    const Bytes hash = sequence({der::oid("2.16.840.1.101.3.4.2.1")});
    const Bytes value = der::element(der::Explicit0, {der::element(der::OctetString, {Bytes(20)})});
    const auto withVid = [&](const Bytes& attribute) { return sequence({name, sequence({attribute})}); };
    EXPECT_THAT(toolkit::identityText(withVid(sequence({vid, sequence({hash, value})}))), HasSubstr(", vid=000"));
    const std::pair<const char*, Bytes> without[] = {
        {"no value", withVid(sequence({vid}))},
        {"no hash", withVid(sequence({vid, sequence({value})}))},
        {"a hash without a name", withVid(sequence({vid, sequence({sequence({}), value})}))},
        {"a hash and no value", withVid(sequence({vid, sequence({hash})}))},
        {"a value of another kind",
            withVid(sequence({vid, sequence({hash, der::element(der::Explicit0, {name})})}))},
        {"another attribute", withVid(sequence({der::oid("1.2.3.4"), sequence({hash, value})}))},
    };
    for (const auto& [what, data] : without)
        EXPECT_EQ(toolkit::identityText(data), "identifyData(Hong)") << what;
    EXPECT_EQ(toolkit::identityText(view("Hong")), "identifyData");
}

TEST(OddNames, SurrogatesAreNoUtf8)
{
    EXPECT_TRUE(toolkit::isUtf8("\xED\x9F\xBF"));
    EXPECT_FALSE(toolkit::isUtf8("\xED\xA0\x80"));
    EXPECT_FALSE(toolkit::isUtf8("\xF4\x90\x80\x80")) << "beyond Unicode";
}

TEST(OddNames, HexadecimalDigitsAndTimesHaveOneForm)
{
    EXPECT_EQ(toHex(toolkit_test::stringOf(toolkit::bytesOfHex("00ff"))), "00ff");
    for (const char* const digits : {"00:ff", "0", "0g"})
        EXPECT_EQ(codeOf([&] { toolkit::bytesOfHex(digits); }), SIGIL_TK_ENCODING) << digits;
    for (const char* const time :
        {"2024-07-1: 12:00:00", "2024-07-10 12:00:0/", "2024-07-10T12:00:00", "2024-07-10"})
        EXPECT_FALSE(toolkit::timeFromText(time).has_value()) << time;
    EXPECT_FALSE(toolkit::asn1Time(nullptr).has_value());
}

TEST(OddNames, Base64MayHaveBlanksAndNothingElse)
{
    EXPECT_EQ(toolkit_test::stringOf(toolkit::fromBase64(view("Z g\t=\v=\r\n"))), "f");
    for (const char* const text : {"Zg==\x01\x02\x03\x04", "Zg=", "Z===", "=Zg=", "Zg-_"})
        EXPECT_EQ(codeOf([&] { toolkit::fromBase64(view(text)); }), SIGIL_TK_ENCODING) << text;
}

TEST(OddNames, AnObjectWithoutANumberHasNoText)
{
    EXPECT_EQ(toolkit::dottedOid(OBJ_nid2obj(NID_undef)), "");
    EXPECT_EQ(toolkit::dottedOid(OBJ_nid2obj(NID_commonName)), "2.5.4.3");
}

TEST(OddNames, PoliciesMayHaveBlanksAroundThem)
{
    EXPECT_THAT(toolkit::policiesOf("  , 1.2 |1 3 ,  "), testing::ElementsAre("1.2", "1.3"));
    EXPECT_THAT(toolkit::policiesOf(""), testing::IsEmpty());
}

TEST_F(OddCertificates, NamesInWideCharactersAreReadAlike)
{
    workshop.run("openssl ecparam -name prime256v1 -genkey -noout -out key.pem");
    const Bytes der = certificate("-new -key key.pem -subj '/C=KR/CN=홍길동'");
    ASSERT_THAT(toHex(toolkit_test::stringOf(der)), HasSubstr("1e06d64dae38b3d9")) << "a BMPString";
    EXPECT_EQ(difference(der), std::nullopt);
    EXPECT_EQ(Certificate(library, der).subjectName(), "cn=\xC8\xAB\xB1\xE6\xB5\xBF,c=KR");
    const Bytes whole = toolkit::toBytes(view(fromHex("1e06d64dae38b3d9")));
    for (const std::string& other : {fromHex("1e06d84dae38b3d9"), fromHex("1e05d64dae38b3")}) {
        Bytes damaged = der;
        for (auto at = damaged.begin();
             (at = std::search(at, damaged.end(), whole.begin(), whole.end())) != damaged.end(); ++at)
            std::copy(other.begin(), other.end(), at);
        EXPECT_EQ(difference(damaged), std::nullopt) << toHex(other);
    }
}

TEST_F(OddCertificates, PoliciesWithNoticesOfEveryKindAreReadAlike)
{
    // SEQUENCE { SEQUENCE { 1.2.3.4, SEQUENCE { SEQUENCE { unotice, SEQUENCE { TEXT } } } } }
    const auto withNotice = [&](const Bytes& text) {
        const auto sequence = [](std::initializer_list<toolkit::View> parts) {
            return der::element(der::Sequence, parts);
        };
        const Bytes qualifier = sequence({der::oid("1.3.6.1.5.5.7.2.2"), sequence({text})});
        const Bytes policies = sequence({sequence({der::oid("1.2.3.4"), sequence({qualifier})})});
        return withExtensions("certificatePolicies=DER:" + toHex(toolkit_test::stringOf(policies)));
    };
    workshop.run("openssl ecparam -name prime256v1 -genkey -noout -out key.pem");
    const auto textOf = [](der::Tag tag) { return der::element(tag, {view("note")}); };
    for (const der::Tag tag : {der::Utf8String, der::Ia5String, der::VisibleString, der::BmpString}) {
        const Bytes der = withNotice(textOf(tag));
        EXPECT_EQ(difference(der), std::nullopt) << tag;
        EXPECT_THAT(Certificate(library, der).policies(), testing::StartsWith("1 2 3 4 [")) << tag;
    }
    for (const Bytes& odd : {Bytes(), textOf(der::OctetString), der::element(der::BmpString, {Bytes(3)})}) {
        const Bytes der = withNotice(odd);
        EXPECT_EQ(difference(der), std::nullopt);
    }
}

TEST_F(OddCertificates, ExtensionsInRareFormsAreTold)
{
    workshop.run("openssl ecparam -name prime256v1 -genkey -noout -out key.pem");
    const Bytes der =
        withExtensions("basicConstraints=CA:FALSE\n"
                       "policyConstraints=inhibitPolicyMapping:2\n"
                       "crlDistributionPoints=relative,issuer,DNS:crl.example.kr\n"
                       "authorityInfoAccess=caIssuers;URI:http://ca.example.kr/,OCSP;DNS:ocsp.example.kr\n"
                       "certificatePolicies=@policy\n"
                       "[relative]\nrelativename=common\n[issuer]\nCRLissuer=dirName:common\n"
                       "[common]\nCN=crl\n[policy]\npolicyIdentifier=1.2.3.4\nuserNotice=@notice\n"
                       "[notice]\norganization=Org\nnoticeNumbers=1,2\n");
    EXPECT_EQ(difference(der), std::nullopt);
    const toolkit::ParsedCertificate read(library, der);
    EXPECT_EQ(read.basicConstraints(), "CA=FALSE");
    EXPECT_FALSE(read.isAuthority());
    EXPECT_EQ(read.policyConstraints(), "inhibitPolicyMapping=2");
    EXPECT_EQ(read.crlDistributionPoints(), "dns=crl.example.kr");
    EXPECT_THAT(read.crlUrls(), testing::IsEmpty());
    EXPECT_THAT(read.issuerUrls(), testing::ElementsAre("http://ca.example.kr/"));
    EXPECT_THAT(read.responderUrls(), testing::IsEmpty());
    EXPECT_EQ(read.policies(), "1 2 3 4");
}

TEST_F(OddCertificates, KeysOfOtherKindsAreReadAlike)
{
    for (const std::string kind : {"ed25519", "ed448", "rsa-pss:1024"}) {
        const Bytes der = certificate("-newkey " + kind + " -nodes -keyout key.pem -subj /CN=odd");
        EXPECT_EQ(difference(der), std::nullopt) << kind;
        EXPECT_NE(Certificate(library, der).publicKeyAlgorithm(), "") << kind;
    }
}

TEST_F(OddCertificates, OnlyAuthoritiesAreOfNoUseToUsers)
{
    workshop.run("openssl ecparam -name prime256v1 -genkey -noout -out key.pem");
    const auto verified = [&](const std::string& extensions, int usage) {
        toolkit::TrustStore store;
        const Bytes der = withExtensions(extensions);
        store.trusted.emplace_back(library, der);
        toolkit::VerifyRequest request;
        request.usage = usage;
        return codeOf([&] { verifyCertificate(library, store, Certificate(library, der), request); });
    };
    const std::string user = "basicConstraints=CA:FALSE";
    const std::string authority = "basicConstraints=critical,CA:TRUE";
    for (const int usage : {SIGIL_TK_USAGE_USER, SIGIL_TK_USAGE_SIGN, SIGIL_TK_USAGE_KEY_MANAGEMENT}) {
        EXPECT_EQ(verified(user, usage), SIGIL_TK_OK) << usage;
        EXPECT_EQ(verified(authority, usage), SIGIL_TK_VERIFY_USAGE) << usage;
    }
    EXPECT_EQ(verified(user, SIGIL_TK_USAGE_AUTHORITY), SIGIL_TK_VERIFY_USAGE);
    EXPECT_EQ(verified(authority, SIGIL_TK_USAGE_AUTHORITY), SIGIL_TK_OK);
    EXPECT_EQ(verified(user, 99), SIGIL_TK_OPTION);
}

TEST_F(OddCertificates, NumbersBelowZeroAreReadAlike)
{
    workshop.run("openssl ecparam -name prime256v1 -genkey -noout -out key.pem");
    const Bytes der = certificate("-new -key key.pem -subj /CN=odd -set_serial -5");
    EXPECT_EQ(difference(der), std::nullopt);
    EXPECT_EQ(Certificate(library, der).serialNumber(), "-05");
}

TEST_F(OddCertificates, MoreExtensionsThanUsualAreReadAlike)
{
    workshop.run("openssl ecparam -name prime256v1 -genkey -noout -out key.pem");
    std::string extensions;
    for (int i = 0; i < 40; ++i)
        extensions += "1.2.3." + std::to_string(i) + "=ASN1:NULL\n";
    EXPECT_EQ(difference(withExtensions(extensions)), std::nullopt);
}

TEST_F(OddCertificates, ExtensionsThatNobodyKnowsAreSoundAndDamagedOnesAreNot)
{
    workshop.run("openssl ecparam -name prime256v1 -genkey -noout -out key.pem");
    const auto soundness = [&](const std::string& extensions) {
        const Certificate certificate(library, withExtensions(extensions));
        return codeOf([&] { toolkit::requireSound(certificate); });
    };
    EXPECT_EQ(
        soundness("keyUsage=digitalSignature\n1.2.3.4=DER:ff\nnoCheck=ignored\n1.3.6.1.5.5.7.48.1.2=DER:0500"),
        SIGIL_TK_OK);
    EXPECT_EQ(soundness("keyUsage=DER:ff"), SIGIL_TK_VERIFY_FAILED);
    EXPECT_EQ(soundness("keyUsage=DER:030205a000"), SIGIL_TK_VERIFY_FAILED) << "something behind it";
}

TEST(OddSignatures, WithBrokenHashesAreForgeableInEveryScheme)
{
    const auto sequence = [](std::initializer_list<toolkit::View> parts) {
        return der::element(der::Sequence, parts);
    };
    const auto isForgeable = [](const Bytes& algorithm) {
        const auto* at = algorithm.data();
        const toolkit::Handle<X509_ALGOR, X509_ALGOR_free> read(
            d2i_X509_ALGOR(nullptr, &at, static_cast<long>(algorithm.size())));
        return toolkit::isForgeable(read.get());
    };
    const auto pss = [&](const char* hash) {
        const Bytes named = der::element(der::Explicit0, {sequence({der::oid(hash)})});
        return sequence({der::oid("1.2.840.113549.1.1.10"), sequence({named})});
    };
    EXPECT_TRUE(isForgeable(sequence({der::oid("1.2.840.113549.1.1.4")}))) << "RSA with MD5";
    EXPECT_FALSE(isForgeable(sequence({der::oid("1.2.840.113549.1.1.11")}))) << "RSA with SHA-256";
    EXPECT_TRUE(isForgeable(pss("1.2.840.113549.2.5"))) << "MD5";
    EXPECT_FALSE(isForgeable(pss("2.16.840.1.101.3.4.2.1"))) << "SHA-256";
    EXPECT_FALSE(isForgeable(sequence({der::oid("1.2.840.113549.1.1.10")}))) << "SHA-1, which goes without saying";
}

TEST_F(OddCertificates, ShortKeysAreShortInEveryScheme)
{
    const auto isShort = [&](const std::string& kind) {
        const toolkit::KeyHandle key([&] {
            workshop.run("openssl genpkey -outform DER -out key -algorithm " + kind);
            const std::string bytes = workshop.read("key");
            const auto* at = reinterpret_cast<const unsigned char*>(bytes.data());
            return d2i_AutoPrivateKey(nullptr, &at, static_cast<long>(bytes.size()));
        }());
        return toolkit::isShortKey(key.get());
    };
    EXPECT_TRUE(isShort("RSA -pkeyopt rsa_keygen_bits:512"));
    EXPECT_TRUE(isShort("RSA-PSS -pkeyopt rsa_keygen_bits:512"));
    EXPECT_FALSE(isShort("RSA-PSS -pkeyopt rsa_keygen_bits:1024"));
    EXPECT_FALSE(isShort("ED25519"));
    EXPECT_FALSE(toolkit::isShortKey(nullptr));
}

TEST(OddAddresses, AreRefusedBeforeAnyServerIsAsked)
{
    for (const int mode : {-1, 5})
        EXPECT_EQ(codeOf([&] { toolkit::fetch("ldap://127.0.0.1:9/", mode); }), SIGIL_TK_OPTION) << mode;
    EXPECT_EQ(toolkit::webAddress("[::1]", 0), "http://[::1]:80/");
    EXPECT_EQ(toolkit::webAddress("host", 8080), "http://host:8080/");
    for (const char* const address : {"[::1", "::1", "host/", "[::1]/x]"})
        EXPECT_EQ(codeOf([&] { toolkit::webAddress(address, 1); }), SIGIL_TK_URL) << address;
    for (const int port : {-1, 65536}) {
        EXPECT_EQ(codeOf([&] { toolkit::webAddress("host", port); }), SIGIL_TK_ARGUMENT) << port;
        EXPECT_EQ(codeOf([&] { toolkit::fetchByCommonName("host", port, "Hong", 1, "c=KR"); }), SIGIL_TK_ARGUMENT)
            << port;
    }
    EXPECT_EQ(codeOf([&] { toolkit::fetchByCommonName("host", 0, "", 1, "c=KR"); }), SIGIL_TK_ARGUMENT);
    EXPECT_EQ(codeOf([&] { toolkit::fetchByCommonName("", 0, "Hong", 1, "c=KR"); }), SIGIL_TK_ARGUMENT);
}

} // namespace odd_certificates
