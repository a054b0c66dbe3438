// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// The whole path: the library's exported functions over the installed open toolkit, on both types, for certificates and
// keys of each family of stores.

#include "tests/toolkit/facade.h"
#include "tests/toolkit/server.h"
#include "tests/toolkit/workshop.h"

#include <sigildesk/open_toolkit.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <tuple>

using namespace toolkit_test;

namespace {

/** How the stores of a family name their subjects and encrypt their keys. */
struct Family {
    const char* name;
    const char* subject;
    const char* policy;
    int keyAlgorithm;
};

const Family families[]{
    {"NPKI", "/C=KR/O=yessign/OU=personal4IB/CN=user", "1.2.410.200005.1.1.1", 48},
    {"GPKI", "/C=KR/O=Government of Korea/OU=people/CN=123user456", "1.2.410.100001.2.2.1", 64},
    {"MPKI", "/C=KR/O=Ministry of National Defense/OU=MPKI/CN=user", "1.2.410.200006.2.1", 224},
    {"PPKI", "/C=KR/O=Some Company/OU=staff/CN=user", "1.2.3.4", 48},
};

const Workshop& pathWorkshop()
{
    static const Workshop made;
    static const bool ready = [] {
        made.certificate("root", "/C=KR/O=test/CN=Root", "basicConstraints=critical,CA:TRUE");
        for (const Family& family : families)
            made.certificate(family.name, family.subject,
                std::string("keyUsage=digitalSignature\nsubjectKeyIdentifier=hash\ncertificatePolicies=") +
                    family.policy + identityExtension(),
                "root");
        return true;
    }();
    EXPECT_TRUE(ready);
    return made;
}

class FacadePath : public testing::TestWithParam<std::tuple<int, Family>> {
protected:
    int type() const { return std::get<0>(GetParam()); }
    const Family& family() const { return std::get<1>(GetParam()); }
    std::string file(const std::string& suffix) const { return pathWorkshop().read(family().name + suffix); }

    Facade facade{std::get<0>(GetParam())};
};

} // namespace

INSTANTIATE_TEST_SUITE_P(TypesAndFamilies, FacadePath,
    testing::Combine(testing::Values(0, 1), testing::ValuesIn(families)), [](const auto& combination) {
        return std::string(std::get<1>(combination.param).name) + (std::get<0>(combination.param) == 0 ? "0" : "1");
    });

TEST_P(FacadePath, ACertificateIsRead)
{
    Bytes certificate(facade, file(".crt"));
    ASSERT_EQ(CertLoad(facade.get(), certificate.get()), 0);
    std::array<char, 2048> out{};
    EXPECT_EQ(CertGetVersion(facade.get(), 2048, out.data()), 0);
    EXPECT_STREQ(out.data(), "3");
    EXPECT_EQ(CertGetSubjectName(facade.get(), 2048, out.data()), 0);
    EXPECT_THAT(out.data(), testing::AllOf(testing::StartsWith("cn="), testing::EndsWith(",c=KR")));
    EXPECT_EQ(CertGetKeyUsage(facade.get(), 2048, out.data()), 0);
    EXPECT_STREQ(out.data(), "digitalSignature");
    EXPECT_EQ(CertGetPolicyID(facade.get(), 40, out.data()), 0);
    std::string policy = family().policy;
    std::replace(policy.begin(), policy.end(), '.', ' ');
    EXPECT_EQ(out.data(), policy);
    std::array<char, 40> from{};
    std::array<char, 40> to{};
    ASSERT_EQ(CertGetValidity(facade.get(), 40, from.data(), 40, to.data()), 0);
    EXPECT_THAT(from.data(), testing::MatchesRegex("....-..-.. ..:..:.."));
    EXPECT_THAT(to.data(), testing::MatchesRegex("....-..-.. ..:..:.."));
    std::array<char, 50> algorithm{};
    std::array<char, 50> length{};
    Bytes key(facade);
    ASSERT_EQ(CertGetPubKeyInfo(facade.get(), algorithm.data(), length.data(), 2048, out.data(), key.get()), 0);
    EXPECT_STREQ(algorithm.data(), "RSA");
    EXPECT_STREQ(length.data(), "2048 Bits");
    EXPECT_EQ(CertUnLoad(facade.get()), 0);
}

TEST_P(FacadePath, AKeyIsWrittenOpenedUsedAndDeleted)
{
    Bytes certificate(facade, file(".crt"));
    Bytes key(facade, file(".key"));
    Bytes encrypted(facade);
    ASSERT_EQ(PriKeyEncrypt(facade.get(), family().keyAlgorithm, text("secret1!"), key.get(), encrypted.get()), 0);
    const std::string path = pathWorkshop().path("signPri.key");
    ASSERT_EQ(MediaDiskWriteFile(facade.get(), text(path), encrypted.get()), 0);
    Bytes stored(facade);
    ASSERT_EQ(MediaDiskReadFile(facade.get(), text(path), stored.get()), 0);
    Bytes opened(facade);
    EXPECT_EQ(PriKeyDecrypt(facade.get(), text("wrong"), stored.get(), opened.get()), 2004);
    std::array<char, 2048> error{};
    EXPECT_EQ(HV_GetErrInfo2(facade.get(), 2048, error.data()), 0);
    EXPECT_THAT(error.data(), testing::StartsWith("The password does not open the private key"));
    ASSERT_EQ(PriKeyDecrypt(facade.get(), text("secret1!"), stored.get(), opened.get()), 0);
    EXPECT_EQ(opened.content(), key.content());
    EXPECT_EQ(PriKeyCheckKeyPair(facade.get(), certificate.get(), opened.get()), 0);
    Bytes random(facade);
    EXPECT_EQ(VIDGetRandomFromPriKey(facade.get(), opened.get(), random.get()), 3500);

    Bytes data(facade, "signed text");
    Bytes signature(facade);
    ASSERT_EQ(CRYPTSign(facade.get(), certificate.get(), opened.get(), 0, data.get(), signature.get()), 0);
    EXPECT_EQ(CRYPTVerify(facade.get(), certificate.get(), 0, data.get(), signature.get()), 0);
    pathWorkshop().write("data", "signed text");
    pathWorkshop().write("signature", signature.content());
    pathWorkshop().run(std::string("openssl x509 -in ") + family().name +
        ".pem -noout -pubkey > public.pem && openssl dgst -sha256 -verify public.pem -signature signature data");

    EXPECT_EQ(MediaDiskDeletePriKey(facade.get(), text("wrong"), 1, text(path)), 2004);
    EXPECT_EQ(MediaDiskDeletePriKey(facade.get(), text("secret1!"), 1, text(path)), 0);
    EXPECT_EQ(MediaDiskReadFile(facade.get(), text(path), stored.get()), SIGIL_TK_FILE_NOT_FOUND);
}

TEST_P(FacadePath, APkcs12FileGoesOutAndIn)
{
    Bytes certificate(facade, file(".crt"));
    Bytes key(facade, file(".key"));
    Bytes other(facade, pathWorkshop().read("root.crt"));
    Bytes otherKey(facade, pathWorkshop().read("root.key"));
    Bytes pfx(facade);
    ASSERT_EQ(PFXExport(facade.get(), 0, text("secret1!"), certificate.get(), key.get(), other.get(),
                  otherKey.get(), pfx.get()),
        0);
    Bytes outCertificate(facade);
    Bytes outKey(facade);
    Bytes kmCertificate(facade);
    Bytes kmKey(facade);
    Bytes authorities(facade);
    const auto import = [&](const std::string& password) {
        return PFXImport(facade.get(), text(password), pfx.get(), outCertificate.get(), outKey.get(),
            kmCertificate.get(), kmKey.get(), authorities.get());
    };
    EXPECT_EQ(import("wrong"), 4505);
    ASSERT_EQ(import("secret1!"), 0);
    EXPECT_EQ(outCertificate.content(), certificate.content());
    EXPECT_EQ(outKey.content(), key.content());
    EXPECT_EQ(kmCertificate.content(), type() == 1 ? other.content() : "");
}

TEST_P(FacadePath, ACertificateIsVerified)
{
    Bytes certificate(facade, file(".crt"));
    Bytes root(facade, pathWorkshop().read("root.crt"));
    const auto verify = [&] {
        return CertVerify(
            facade.get(), certificate.get(), 1, nullptr, text("HVCToolkitV30.conf"), false, nullptr, nullptr);
    };
    ASSERT_EQ(CertSetVerifyEnv(facade.get(), 0, 2, false, nullptr, nullptr), 0);
    EXPECT_EQ(verify(), SIGIL_TK_VERIFY_NO_ISSUER);
    ASSERT_EQ(CertAddTrustedCert(facade.get(), root.get()), 0);
    EXPECT_EQ(verify(), 0);
}

TEST_P(FacadePath, AResponderTellsTheStateOnType1)
{
    const std::string serial =
        pathWorkshop().run(std::string("openssl x509 -noout -serial -in ") + family().name + ".pem");
    pathWorkshop().write("index",
        "R\t350101000000Z\t260102030405Z\t" + serial.substr(7, serial.find('\n') - 7) + "\tunknown\t/CN=user\n");
    const Server responder = Server::responder(pathWorkshop(), "root", "root", "-nmin 10");
    const std::string url = "http://127.0.0.1:" + std::to_string(responder.port());
    Bytes certificate(facade, file(".crt"));
    Bytes key(facade, file(".key"));
    Bytes root(facade, pathWorkshop().read("root.crt"));
    Bytes none(facade);
    std::array<char, 25> date{};
    int status = -1;
    const auto check = [&](BINSTR* signerKey) {
        return CertCheckStatByOCSP(facade.get(), certificate.get(), true, certificate.get(), signerKey, text(url),
            root.get(), date.data(), &status);
    };
    EXPECT_EQ(check(none.get()), 1001);
    EXPECT_EQ(check(key.get()), type() == 1 ? 0 : 1003);
    EXPECT_EQ(status, type() == 1 ? SIGIL_TK_STATUS_REVOKED : -1);
    EXPECT_THAT(date.data(), type() == 1 ? testing::StartsWith("2026-01-0") : testing::StartsWith(""));
}

TEST_P(FacadePath, AServerValidatesCertificateAndIdentity)
{
    const Server validator = Server::validator(pathWorkshop(), "root", "root");
    pathWorkshop().write("ivs.conf", "[IVS]\nURL = http://127.0.0.1:" + std::to_string(validator.port()) + "/\n");
    const std::string conf = pathWorkshop().path("ivs.conf");
    Bytes certificate(facade, file(".crt"));
    Bytes server(facade, pathWorkshop().read("root.crt"));
    Bytes random(facade, fromHex("a0a1a2a3a4a5a6a7a8a9aaabacadaeafb0b1b2b3"));
    const auto verify = [&](const std::string& path) {
        return CertVerifyByIVS(facade.get(), text(path), certificate.get(), server.get());
    };
    const auto verifyIdentity = [&](const std::string& number) {
        return VIDVerifyByIVS(
            facade.get(), text(conf), certificate.get(), random.get(), text(number), server.get());
    };
    EXPECT_EQ(verify(conf), 0);
    EXPECT_EQ(verify(conf + ".none"), SIGIL_TK_FILE_NOT_FOUND);
    EXPECT_EQ(verifyIdentity("0000001111111"), 0);
    EXPECT_EQ(verifyIdentity("0000001111112"), SIGIL_TK_VID_MISMATCH);
    pathWorkshop().write("lies", R"({"check": 1})");
    EXPECT_EQ(verify(conf), SIGIL_TK_IVS_INVALID);
    std::array<char, 2048> error{};
    EXPECT_EQ(HV_GetErrInfo2(facade.get(), 2048, error.data()), 0);
    EXPECT_STREQ(error.data(), "The validation server does not accept the certificate: check status 1");
    EXPECT_EQ(verifyIdentity("0000001111111"), SIGIL_TK_IVS_INVALID);
}

TEST_P(FacadePath, TimeStampsAndSingleStepsReachTheToolkit)
{
    Bytes certificate(facade, file(".crt"));
    Bytes out(facade);
    int number = 0;
    EXPECT_EQ(TSPVerifyToken(facade.get(), certificate.get(), out.get()), SIGIL_TK_TSP_MALFORMED);
    EXPECT_EQ(OCSPVerifyResMsg(facade.get(), certificate.get(), certificate.get(), &number, out.get()),
        SIGIL_TK_OCSP_NONCE);
}
