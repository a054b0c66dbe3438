// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Fields of certificates that the openssl command made, in the text forms that the layers above rely on.

#include "tests/toolkit/toolkit_library.h"
#include "tests/toolkit/workshop.h"
#include "toolkit/engine/base/error.h"
#include "toolkit/engine/keys/identity.h"
#include "toolkit/engine/x509/text.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cctype>

using namespace toolkit_test;
using toolkit::cp949FromUtf8;

namespace {

const std::string userExtensions = R"(
keyUsage=critical,digitalSignature,nonRepudiation
certificatePolicies=critical,@policy,1.2.410.200012.1.1.2
authorityKeyIdentifier=keyid:always,issuer:always
subjectKeyIdentifier=hash
subjectAltName=@names
crlDistributionPoints=URI:ldap://ds.yessign.or.kr:389/ou=dp4p54541,URI:http://crl.example.kr/1.crl
authorityInfoAccess=OCSP;URI:http://ocsp.yessign.org:4612,caIssuers;URI:http://ca.example.kr/ca.crt
extendedKeyUsage=clientAuth,emailProtection
[policy]
policyIdentifier=1.2.410.200005.1.1.1
CPS=http://www.yessign.or.kr/cps.htm
userNotice=@notice
[notice]
explicitText=UTF8:이 인증서는 공인인증서입니다
[names]
email=hong@example.kr
otherName=1.2.410.200004.10.1.1;SEQUENCE:identify
)" + identitySections("홍길동");

constexpr const char* rootExtensions = R"(
basicConstraints=critical,CA:TRUE,pathlen:0
keyUsage=critical,keyCertSign,cRLSign
subjectKeyIdentifier=hash
policyConstraints=requireExplicitPolicy:0
issuerAltName=DNS:ca.example.kr
)";

/** A root and a user below it, made once for all tests. */
const Workshop& certificates()
{
    static const Workshop workshop;
    static const bool made = [] {
        workshop.certificate("root", "/C=KR/O=yessign/OU=AccreditedCA/CN=yessignCA", rootExtensions);
        workshop.certificate("user", "/C=kr/O=yessign/OU=personal4IB/OU=은행/CN=홍길동(HONG)0004", userExtensions,
            "root", "-days 30 -set_serial 0x0123456789abcdef");
        workshop.certificate("bare", "/CN=bare", "");
        workshop.certificate("curve", "/CN=curve", "keyUsage=keyAgreement,decipherOnly", "", "-days 1",
            "ec -pkeyopt ec_paramgen_curve:P-256");
        return true;
    }();
    EXPECT_TRUE(made);
    return workshop;
}

class CertificateFields : public testing::TestWithParam<const char*> {
protected:
    void load(const std::string& name)
    {
        ByteString certificate(toolkit, certificates().read(name));
        ASSERT_EQ(toolkit("CERT_Load", certificate.get()), 0) << toolkit.errorText();
    }
    std::string get(const std::string& getter, int capacity = 2048)
    {
        std::array<char, 2049> out{};
        out.fill('#');
        const int code = toolkit("CERT_" + getter, capacity, out.data());
        return code == 0 ? std::string(out.data()) : "code " + std::to_string(code);
    }
    std::string policyIds(int capacity = 2048)
    {
        return get(GetParam() == std::string("HVTK_") ? "GetCertPolicy_PolicyID" : "GetCertPolicyID", capacity);
    }

    ToolkitLibrary toolkit{GetParam()};
};

std::string faceName(const testing::TestParamInfo<const char*>& info) { return std::string(info.param, 4); }

/** A value that `openssl x509` prints after a label. */
std::string opensslPrints(const std::string& options)
{
    std::string out = certificates().run("openssl x509 -in user.pem -noout " + options);
    out = out.substr(out.find('=') + 1);
    return out.substr(0, out.find('\n'));
}

} // namespace

INSTANTIATE_TEST_SUITE_P(Faces, CertificateFields, testing::Values("HVTK_", "GPKI_"), faceName);

TEST_P(CertificateFields, NamesAreMostSpecificFirstInCp949)
{
    load("user.crt");
    EXPECT_EQ(get("GetSubjectName"), cp949FromUtf8("cn=홍길동(HONG)0004,ou=은행,ou=personal4IB,o=yessign,c=kr"));
    EXPECT_EQ(get("GetIssuerName"), "cn=yessignCA,ou=AccreditedCA,o=yessign,c=KR");
    EXPECT_EQ(get("GetUID"), cp949FromUtf8("홍길동(HONG)0004"));
}

TEST_P(CertificateFields, NumbersAndAlgorithms)
{
    load("user.crt");
    int version = 0;
    EXPECT_EQ(toolkit("CERT_GetVersion", &version), 0);
    EXPECT_EQ(version, 3);
    EXPECT_EQ(get("GetSerialNum"), "0123456789abcdef");
    EXPECT_EQ(get("GetSignatureAlgorithm"), "sha256WithRSAEncryption");
    EXPECT_EQ(get("GetSignature").size(), 512U);
}

TEST_P(CertificateFields, UsagesAndConstraints)
{
    load("user.crt");
    EXPECT_EQ(get("GetKeyUsage"), "digitalSignature, nonRepudiation");
    EXPECT_EQ(get("GetExtKeyUsage"), "clientAuth, emailProtection");
    load("root.crt");
    EXPECT_EQ(get("GetKeyUsage"), "keyCertSign, crlSign");
    EXPECT_EQ(get("GetBasicConstraints"), "CA=TRUE, pathLen=0");
    load("curve.crt");
    EXPECT_EQ(get("GetKeyUsage"), "keyAgreement, decipherOnly");
}

TEST_P(CertificateFields, Policies)
{
    load("user.crt");
    EXPECT_EQ(policyIds(), "1 2 410 200005 1 1 1, 1 2 410 200012 1 1 2");
    EXPECT_EQ(get("GetCertPolicy"),
        cp949FromUtf8("1 2 410 200005 1 1 1 [CPS: http://www.yessign.or.kr/cps.htm; 이 인증서는 공인인증서입니다], "
                      "1 2 410 200012 1 1 2"));
}

TEST_P(CertificateFields, KeyIdentifiers)
{
    load("user.crt");
    std::string subject =
        certificates().run("openssl x509 -in user.pem -noout -ext subjectKeyIdentifier | tail -1");
    std::erase_if(subject, [](char c) { return c == ':' || c == ' ' || c == '\n'; });
    std::transform(
        subject.begin(), subject.end(), subject.begin(), [](unsigned char c) { return std::tolower(c); });
    EXPECT_EQ(get("GetSubKeyID"), subject);
    const std::string authority = get("GetAuthKeyID");
    EXPECT_THAT(authority, testing::StartsWith("KeyID="));
    EXPECT_THAT(authority, testing::HasSubstr(", issuer=cn=yessignCA,ou=AccreditedCA,o=yessign,c=KR, serial="));
}

TEST_P(CertificateFields, AlternativeNamesAndAddresses)
{
    load("user.crt");
    EXPECT_EQ(get("GetSubjectAltName"),
        cp949FromUtf8("email=hong@example.kr, identifyData(홍길동, "
                      "vid=98a8495714503f3be48bce33d512bbb529db8a841a90082b292a1530f371e22d)"));
    EXPECT_EQ(get("GetCRLDP"), "ldap://ds.yessign.or.kr:389/ou=dp4p54541, http://crl.example.kr/1.crl");
    EXPECT_EQ(get("GetAIA"), "OCSP=http://ocsp.yessign.org:4612, caIssuers=http://ca.example.kr/ca.crt");
}

TEST_P(CertificateFields, AMissingExtensionIsAnEmptyText)
{
    load("bare.crt");
    for (const char* getter : {"GetKeyUsage", "GetBasicConstraints", "GetCertPolicy", "GetExtKeyUsage",
             "GetSubjectAltName", "GetAuthKeyID", "GetSubKeyID", "GetCRLDP", "GetAIA"})
        EXPECT_EQ(get(getter), "") << getter;
    EXPECT_EQ(policyIds(), "");
}

TEST_P(CertificateFields, IdentifyingTextsAreNeverCutAndOthersAreCutAtACharacter)
{
    load("user.crt");
    const std::string tooSmall = "code " + std::to_string(SIGIL_TK_BUFFER_TOO_SMALL);
    for (const char* getter : {"GetSubjectName", "GetIssuerName", "GetUID", "GetSerialNum"})
        EXPECT_EQ(get(getter, 10), tooSmall) << getter;
    EXPECT_EQ(get("GetSerialNum", 16), tooSmall);
    EXPECT_EQ(get("GetSerialNum", 17), "0123456789abcdef");
    EXPECT_EQ(policyIds(40), "1 2 410 200005 1 1 1, 1 2 410 200012 1 ");
    EXPECT_EQ(get("GetKeyUsage", 8), "digital");
    EXPECT_EQ(get("GetKeyUsage", 1), "");
    EXPECT_EQ(get("GetKeyUsage", 0), "code " + std::to_string(SIGIL_TK_ARGUMENT));
    EXPECT_EQ(toolkit("CERT_GetKeyUsage", 8, static_cast<char*>(nullptr)), SIGIL_TK_ARGUMENT);
}

TEST_P(CertificateFields, NothingIsLoadedBeforeLoadAndAfterUnload)
{
    EXPECT_EQ(get("GetUID"), "code " + std::to_string(SIGIL_TK_CERT_NOT_LOADED));
    load("user.crt");
    EXPECT_EQ(toolkit("CERT_Unload"), 0);
    EXPECT_EQ(get("GetUID"), "code " + std::to_string(SIGIL_TK_CERT_NOT_LOADED));
    EXPECT_EQ(toolkit("CERT_Unload"), 0);
}

TEST_P(CertificateFields, AFailedLoadKeepsTheLoadedCertificate)
{
    load("bare.crt");
    ByteString garbage(toolkit, "garbage");
    EXPECT_EQ(toolkit("CERT_Load", garbage.get()), SIGIL_TK_CERT_MALFORMED);
    EXPECT_EQ(get("GetUID"), "bare");
}

TEST_P(CertificateFields, PemIsReadToo)
{
    load("user.pem");
    EXPECT_EQ(get("GetSerialNum"), "0123456789abcdef");
}

TEST_P(CertificateFields, AKeyOfAnUnknownAlgorithmLeavesTheOtherFieldsReadable)
{
    std::string der = certificates().read("user.crt");
    const std::size_t at = der.find(fromHex("300d06092a864886f70d010101"));
    ASSERT_NE(at, der.npos);
    der[at + 12] = 0x7F;
    ByteString certificate(toolkit, der);
    ASSERT_EQ(toolkit("CERT_Load", certificate.get()), 0);
    EXPECT_EQ(get("GetSerialNum"), "0123456789abcdef");
    const std::string algorithm = "1.2.840.113549.1.1.127";
    if (GetParam() == std::string("GPKI_")) {
        EXPECT_EQ(get("GetPubKeyAlg"), algorithm);
        EXPECT_EQ(get("GetPubKeyLen"), "2160 Bits") << "that of the bit string";
    } else {
        std::array<char, 50> name{};
        std::array<char, 20> length{};
        ByteString key(toolkit);
        ASSERT_EQ(toolkit("CERT_GetPubKey2", name.data(), length.data(), key.get()), 0);
        EXPECT_EQ(name.data(), algorithm);
        EXPECT_STREQ(length.data(), "2160 Bits");
    }
    ByteString key(toolkit, certificates().read("user.key"));
    EXPECT_EQ(toolkit("PRIKEY_CheckKeyPair", certificate.get(), key.get()), SIGIL_TK_ALGORITHM);
}

TEST_P(CertificateFields, EveryTruncationIsDamage)
{
    const std::string der = certificates().read("user.crt");
    for (std::size_t length = 1; length < der.size(); length += 11) {
        ByteString cut(toolkit, der.substr(0, length));
        EXPECT_EQ(toolkit("CERT_Load", cut.get()), SIGIL_TK_CERT_MALFORMED) << length;
    }
}

TEST_P(CertificateFields, RemainingDays)
{
    ByteString certificate(toolkit, certificates().read("user.crt"));
    int days = -99;
    EXPECT_EQ(toolkit("CERT_GetRemainDays", certificate.get(), &days), 0);
    EXPECT_THAT(days, testing::AnyOf(29, 30)) << "30 days less the time since it was made";
    EXPECT_EQ(toolkit("CERT_GetRemainDays", certificate.get(), static_cast<int*>(nullptr)), SIGIL_TK_ARGUMENT);
}

TEST(Certificate, RemainingDaysAreWholeDays)
{
    const toolkit::Library library;
    const std::string der = certificates().read("user.crt");
    const toolkit::Certificate certificate(library, toolkit::view(der));
    constexpr int day = 24 * 60 * 60;
    EXPECT_EQ(certificate.remainingDays(certificate.notAfter() - day), 1);
    EXPECT_EQ(certificate.remainingDays(certificate.notAfter() - day + 1), 0);
    EXPECT_EQ(certificate.remainingDays(certificate.notAfter()), 0);
    EXPECT_EQ(certificate.remainingDays(certificate.notAfter() + 1), -1);
    EXPECT_EQ(certificate.remainingDays(certificate.notAfter() + day + 1), -2);
}

TEST(HvtkCertificate, ValidityIsTwoTexts)
{
    const ToolkitLibrary toolkit("HVTK_");
    ByteString certificate(toolkit, certificates().read("user.crt"));
    ASSERT_EQ(toolkit("CERT_Load", certificate.get()), 0);
    std::array<char, 25> from{};
    std::array<char, 25> to{};
    ASSERT_EQ(toolkit("CERT_GetValidity", from.data(), to.data()), 0);
    const auto seconds = [](const char* text) { return std::to_string(*toolkit::timeFromText(text)); };
    const auto expected = [](const std::string& option) {
        return certificates().run("date -u -d '" + opensslPrints(option) + "' +%s");
    };
    EXPECT_EQ(seconds(from.data()) + "\n", expected("-startdate"));
    EXPECT_EQ(seconds(to.data()) + "\n", expected("-enddate"));
}

TEST(HvtkCertificate, PublicKey)
{
    const ToolkitLibrary toolkit("HVTK_");
    const auto check = [&](const std::string& name, const std::string& algorithm, const std::string& length) {
        ByteString certificate(toolkit, certificates().read(name + ".crt"));
        ASSERT_EQ(toolkit("CERT_Load", certificate.get()), 0);
        std::array<char, 50> algorithmText{};
        std::array<char, 20> lengthText{};
        std::array<char, 2048> keyText{};
        ByteString key(toolkit);
        ASSERT_EQ(toolkit("CERT_GetPubKey", 2048, algorithmText.data(), keyText.data()), 0);
        ASSERT_EQ(toolkit("CERT_GetPubKey2", algorithmText.data(), lengthText.data(), key.get()), 0);
        EXPECT_EQ(algorithmText.data(), algorithm);
        EXPECT_EQ(lengthText.data(), length);
        certificates().run(
            "openssl x509 -in " + name + ".pem -noout -pubkey | openssl pkey -pubin -outform DER -out k");
        EXPECT_EQ(key.bytes(), certificates().read("k"));
        EXPECT_THAT(toHex(key.bytes()), testing::EndsWith(keyText.data()));
    };
    check("user", "RSA", "2048 Bits");
    check("curve", "EC", "256 Bits");
}

TEST(HvtkCertificate, WhatOnlyThisFaceHas)
{
    const ToolkitLibrary toolkit("HVTK_");
    ByteString root(toolkit, certificates().read("root.crt"));
    ASSERT_EQ(toolkit("CERT_Load", root.get()), 0);
    std::array<char, 256> out{};
    EXPECT_EQ(toolkit("CERT_GetIssuerAltName", 256, out.data()), 0);
    EXPECT_STREQ(out.data(), "dns=ca.example.kr");
    EXPECT_EQ(toolkit("CERT_GetPolicyConstraints", 256, out.data()), 0);
    EXPECT_STREQ(out.data(), "requireExplicitPolicy=0");
    ByteString name(toolkit);
    EXPECT_EQ(toolkit("CERT_GetSubjectName_DERFormat", name.get()), 0);
    EXPECT_THAT(name.bytes(), testing::EndsWith("yessignCA"));
    ByteString user(toolkit, certificates().read("user.crt"));
    ASSERT_EQ(toolkit("CERT_Load", user.get()), 0);
    EXPECT_EQ(toolkit("CERT_GetCRLDP_URL", 256, out.data()), 0);
    EXPECT_STREQ(out.data(), "ldap://ds.yessign.or.kr:389/ou=dp4p54541, http://crl.example.kr/1.crl");
}

TEST(HvtkCertificate, AddressesPrintAsAddresses)
{
    const ToolkitLibrary toolkit("HVTK_");
    certificates().certificate("hosts", "/CN=hosts", "subjectAltName=IP:192.0.2.1,IP:2001:db8::1");
    ByteString certificate(toolkit, certificates().read("hosts.crt"));
    ASSERT_EQ(toolkit("CERT_Load", certificate.get()), 0);
    std::array<char, 256> out{};
    EXPECT_EQ(toolkit("CERT_GetSubjectAltName", 256, out.data()), 0);
    EXPECT_STREQ(out.data(), "ip=192.0.2.1, ip=2001:db8::1");
}

TEST(Identity, MatchesTheWorkedValues)
{
    const toolkit::Library library;
    const std::string random = fromHex("a0a1a2a3a4a5a6a7a8a9aaabacadaeafb0b1b2b3");
    const auto vid = [&](const std::string& hash, const std::string& idn) {
        const auto value = toolkit::computeVid(library, hash, idn, toolkit::view(random)).value;
        return toolkit::hexText(value);
    };
    const std::string sha256 = "2.16.840.1.101.3.4.2.1";
    EXPECT_EQ(vid("1.3.14.3.2.26", "0000001111111"), "19cdaf9caa6dcf0f00256ff8a4d26db769e72fd2");
    EXPECT_EQ(vid(sha256, "0000001111111"), "98a8495714503f3be48bce33d512bbb529db8a841a90082b292a1530f371e22d");
    EXPECT_EQ(vid(sha256, "000000-111 1111"), "98a8495714503f3be48bce33d512bbb529db8a841a90082b292a1530f371e22d");
    EXPECT_EQ(vid(sha256, "0000000000"), "8254817c882e0559e2409c7d218fda18af60ac67fb925d94b99437f7be6d44e8");
    const toolkit::IdentifyData data{
        "홍길동", toolkit::computeVid(library, sha256, "0000001111111", toolkit::view(random))};
    EXPECT_EQ(toolkit::hexText(toolkit::encodeIdentifyData(data)),
        "304e0c09ed998deab8b8eb8f993041303f060a2a831a8c9a440a0101013031300b0609608648016503040201a022042098a8495714"
        "503f"
        "3be48bce33d512bbb529db8a841a90082b292a1530f371e22d");
}

TEST_P(CertificateFields, TheIdentityNumberIsChecked)
{
    ByteString certificate(toolkit, certificates().read("user.crt"));
    ByteString random(toolkit, fromHex("a0a1a2a3a4a5a6a7a8a9aaabacadaeafb0b1b2b3"));
    ByteString other(toolkit, fromHex("a0a1a2a3a4a5a6a7a8a9aaabacadaeafb0b1b2b4"));
    ByteString bare(toolkit, certificates().read("bare.crt"));
    EXPECT_EQ(toolkit("VID_Verify", certificate.get(), random.get(), text("000000-1111111")), 0);
    EXPECT_EQ(toolkit("VID_Verify", certificate.get(), random.get(), text("0000001111112")), SIGIL_TK_VID_MISMATCH);
    EXPECT_EQ(toolkit("VID_Verify", certificate.get(), other.get(), text("0000001111111")), SIGIL_TK_VID_MISMATCH);
    EXPECT_EQ(toolkit("VID_Verify", bare.get(), random.get(), text("0000001111111")), SIGIL_TK_VID_NO_DATA);
    const Workshop workshop;
    const std::string name = "subjectAltName=otherName:1.2.410.200004.10.1.1;";
    workshop.certificate("named", "/CN=named", name + "SEQUENCE:identify\n[identify]\nrealName=UTF8:name");
    workshop.certificate("texted", "/CN=texted", name + "UTF8:name");
    for (const std::string file : {"named.crt", "texted.crt"}) {
        ByteString without(toolkit, workshop.read(file));
        EXPECT_EQ(toolkit("VID_Verify", without.get(), random.get(), text("0000001111111")), SIGIL_TK_VID_NO_DATA)
            << file;
    }
}

TEST_P(CertificateFields, ASignatureIsVerifiedByTheOpensslCommand)
{
    ByteString certificate(toolkit, certificates().read("user.crt"));
    ByteString key(toolkit, certificates().read("user.key"));
    ByteString wrongKey(toolkit, certificates().read("bare.key"));
    ByteString data(toolkit, "what is signed");
    ByteString signature(toolkit);
    EXPECT_EQ(toolkit("PRIKEY_CheckKeyPair", certificate.get(), key.get()), 0);
    EXPECT_EQ(toolkit("PRIKEY_CheckKeyPair", certificate.get(), wrongKey.get()), SIGIL_TK_KEY_MISMATCH);
    EXPECT_EQ(toolkit("CRYPT_Sign", certificate.get(), wrongKey.get(), 0, data.get(), signature.get()),
        SIGIL_TK_KEY_MISMATCH);
    EXPECT_TRUE(signature.empty());
    ASSERT_EQ(toolkit("CRYPT_Sign", certificate.get(), key.get(), 0, data.get(), signature.get()), 0);
    certificates().write("data", data.bytes());
    certificates().write("signature", signature.bytes());
    certificates().run("openssl x509 -in user.pem -noout -pubkey > public.pem && "
                       "openssl dgst -sha256 -verify public.pem -signature signature data");
    EXPECT_EQ(toolkit("CRYPT_Verify", certificate.get(), 0, data.get(), signature.get()), 0);
    ByteString changed(toolkit, "what is signed?");
    EXPECT_EQ(toolkit("CRYPT_Verify", certificate.get(), 0, changed.get(), signature.get()), SIGIL_TK_SIGNATURE);
}
