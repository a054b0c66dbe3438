// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Root certificates, verification, key pairs.

#include "tests/certlist/scripted.h"

#include "certlist/load_extra.h"

#include <sigildesk/handles.h>

namespace fs = std::filesystem;

namespace {

const char twoRoots[] = "[VALIDATOIN_OPTION]\nCA_INFO_COUNT=3\n"
                        "[CA_INFO1]\nCA_DN=cn=KISA RootCA 4,o=KISA\nDIR_URL=ldap://one:389\n"
                        "[CA_INFO2]\nCA_DN=cn=yessignCA,o=yessign\nDIR_URL=ldap://two:389\n"
                        "[CA_INFO3]\nCA_DN=cn=GPKIRootCA1,c=KR\nDIR_URL=\n";

class Extra : public Scripted {
protected:
    Extra() { settings(twoRoots); }
    void settings(const std::string& text) { writeFile(confFile, text); }
    int verify(const std::string& certificate)
    {
        if (!clp)
            start();
        return CLP_VerifyCert(clp, Text(certificate), int(certificate.size()), sizeof message, message);
    }
    std::vector<std::string> fetched()
    {
        std::vector<std::string> addresses;
        doubles::answer("HVTK_HVAP_GetDataByURL", [&](const doubles::Call& call) {
            EXPECT_EQ(call.integer(0), 1);
            addresses.push_back(call.pointer<char>(1));
            return 77;
        });
        EXPECT_EQ(verify(fake::certificate()), 0);
        return addresses;
    }
    std::string record(const std::string& callee, int code)
    {
        return "CLoadExtra::VerifyCert() - ERR_VERIFYCERT >> " + callee + " : " + std::to_string(code) +
            " (Msg : words of the toolkit)";
    }

    fs::path confFile = library / "HVCToolkitV30.conf";
    char message[64] = "stale";
};

TEST_F(Extra, WordsOfAnEarlierFailureAreNotHandedOut)
{
    const std::string revoked = fake::certificate({{"revoked", "yes"}});
    ASSERT_EQ(verify(revoked), 1120);
    EXPECT_STREQ(message, "words of the toolkit");
    doubles::answer("HVTK_API_GetErrInfo", 77);
    EXPECT_EQ(verify(revoked), 1120);
    EXPECT_STREQ(message, "");
    EXPECT_EQ(lastLog(), "CLoadExtra::VerifyCert() - ERR_VERIFYCERT >> CertVerify() : 3005");
}

TEST_F(Extra, VerifiesWithTheRootsThatCanBeFetched)
{
    fake::directory["ldap://one:389/cn=KISA RootCA 4,o=KISA"] = "root certificate";
    ASSERT_EQ(verify(fake::certificate()), 0);
    EXPECT_STREQ(message, "stale");
    EXPECT_EQ(doubles::callsOf("HVTK_HVAP_GetDataByURL").size(), 2u); // the second cannot be fetched
    EXPECT_EQ(doubles::callsOf("HVTK_CERT_AddTrustedCert").size(), 1u);
    const doubles::Call environment = doubles::callsOf("HVTK_CERT_SetVerifyEnv1").at(0);
    EXPECT_EQ(environment.integer(0), 0);
    EXPECT_EQ(environment.integer(1), 2);
    EXPECT_EQ(environment.integer(2), 0);
    const doubles::Call verification = doubles::callsOf("HVTK_CERT_Verify").at(0);
    EXPECT_EQ(verification.integer(1), 1);
    EXPECT_EQ(verification.pointer<char>(2), nullptr);
    EXPECT_EQ(doubles::liveByteStrings(), 0);
    EXPECT_TRUE(log().empty());
}

TEST_F(Extra, TheGpkiLibraryIsToldTheSettings)
{
    settings("[VALIDATOIN_OPTION]\nCA_INFO_COUNT=1\n[CA_INFO1]\nCA_DN=cn=yessignCA\n");
    ASSERT_EQ(CLP_Initalize(&clp, nullptr, 1, 1, Text(library.string())), 0);
    ASSERT_EQ(verify(fake::certificate()), 0);
    const doubles::Call verification = doubles::callsOf("GPKI_CERT_Verify").at(0);
    EXPECT_EQ(verification.integer(1), 1);
    EXPECT_EQ(verification.pointer<char>(2), nullptr);
    // The text lives as long as the loader.
    EXPECT_STREQ(verification.pointer<char>(3), confFile.c_str());
    EXPECT_EQ(verification.integer(4), 0);
    EXPECT_EQ(verification.pointer<BINSTR>(5), nullptr);
    EXPECT_EQ(verification.pointer<BINSTR>(6), nullptr);
}

TEST_F(Extra, AddressesInTheOrderOfTheFile)
{
    EXPECT_EQ(
        fetched(), (std::vector<std::string>{"ldap://one:389/cn=KISA RootCA 4,o=KISA", "/cn=GPKIRootCA1,c=KR"}));
}

TEST_F(Extra, TheMilitaryRootIsNeverFetched)
{
    settings("[VALIDATOIN_OPTION]\nCA_INFO_COUNT=2\n"
             "[CA_INFO1]\nCA_DN=CN=Root ca,ou=mpki,o=Ministry of National Defense,c=kr\nDIR_URL=ldap://m\n"
             "[CA_INFO2]\nCA_DN=cn=Root CA 2\nDIR_URL=ldap://n\n");
    EXPECT_EQ(fetched(), std::vector<std::string>{"ldap://n/cn=Root CA 2"});
}

TEST_F(Extra, WithoutARootTheCertificateIsStillVerified)
{
    settings(
        "[VALIDATOIN_OPTION]\nCA_INFO_COUNT=1\n[CA_INFO1]\nCA_DN=cn=root in small letters\nDIR_URL=ldap://n\n");
    EXPECT_TRUE(fetched().empty());
    EXPECT_EQ(doubles::callsOf("HVTK_CERT_Verify").size(), 1u);
}

TEST_F(Extra, FailedVerificationHandsOutTheToolkitsWords)
{
    EXPECT_EQ(verify(fake::certificate({{"revoked", "yes"}})), 1120);
    EXPECT_STREQ(message, "words of the toolkit");
    EXPECT_EQ(lastLog(), record("CertVerify()", 3005));
    EXPECT_EQ(CLP_VerifyCert(clp, Text("revoked=yes\n"), 12, 6, message), 1120);
    EXPECT_STREQ(message, "words"); // cut to the caller's buffer
}

TEST_F(Extra, TheTextsBufferIsClearedToItsSizeAndNoFurther)
{
    doubles::answer("HVTK_CERT_SetVerifyEnv1", 77);
    start();
    std::string buffer(64, 'x');
    const std::string certificate = fake::certificate();
    EXPECT_EQ(CLP_VerifyCert(clp, Text(certificate), int(certificate.size()), 32, buffer.data()), 1120);
    EXPECT_EQ(buffer, std::string(32, '\0') + std::string(32, 'x'));
    EXPECT_EQ(CLP_VerifyCert(nullptr, Text(certificate), int(certificate.size()), 64, buffer.data()), 1008);
    EXPECT_EQ(buffer.back(), 'x');
}

TEST_F(Extra, OtherFailuresLeaveTheTextEmpty)
{
    fake::directory["ldap://one:389/cn=KISA RootCA 4,o=KISA"] = "root certificate";
    doubles::answer("HVTK_CERT_SetVerifyEnv1", 77);
    EXPECT_EQ(verify(fake::certificate()), 1120);
    EXPECT_STREQ(message, "");
    EXPECT_EQ(lastLog(), record("CertSetVerifyEnv()", 77));
    doubles::answer("HVTK_CERT_AddTrustedCert", 78);
    EXPECT_EQ(verify(fake::certificate()), 1120);
    EXPECT_EQ(lastLog(), record("CertAddTrustedCert()", 78));
    fs::remove(confFile);
    EXPECT_EQ(verify(fake::certificate()), 1120);
    EXPECT_EQ(lastLog(), record("GetRootCertCount()", 1100));
    EXPECT_EQ(doubles::liveByteStrings(), 0);
}

/** The loader's own operations. */
class LoaderExtra : public Extra {
protected:
    void SetUp() override
    {
        ASSERT_EQ(sigildesk::initialise(toolkit, 0, Text(library.string())), 0);
        loader.bind(toolkit.get(), logFile.c_str());
    }

    sigildesk::CryptoHandle toolkit;
    CLoadExtra loader{1, library.c_str()};
};

TEST_F(LoaderExtra, CountsAndListsTheRoots)
{
    int count = 0;
    ASSERT_EQ(loader.GetRootCertCount(confFile.c_str(), &count), 0);
    ASSERT_EQ(count, 2);
    std::vector<tagROOTCERTURLINFO> roots(2);
    ASSERT_EQ(loader.GetRootCertURL(confFile.c_str(), roots), 0);
    EXPECT_STREQ(roots[0].szDN, "cn=KISA RootCA 4,o=KISA");
    EXPECT_STREQ(roots[0].szURL, "ldap://one:389");
    EXPECT_STREQ(roots[1].szDN, "cn=GPKIRootCA1,c=KR");
    EXPECT_STREQ(roots[1].szURL, "");
    std::vector<tagROOTCERTURLINFO> tooFew(1); // the file may have grown since it was counted
    EXPECT_EQ(loader.GetRootCertURL(confFile.c_str(), tooFew), 0);
}

TEST_F(LoaderExtra, NamesAreReadInto100Bytes)
{
    settings("[VALIDATOIN_OPTION]\nCA_INFO_COUNT=1\n[CA_INFO1]\nCA_DN=cn=Root" + std::string(200, 'x') + "\n");
    std::vector<tagROOTCERTURLINFO> roots(1);
    ASSERT_EQ(loader.GetRootCertURL(confFile.c_str(), roots), 0);
    EXPECT_EQ(std::string(roots[0].szDN).size(), 99u);
}

TEST_F(LoaderExtra, BadSettings)
{
    int count = 0;
    std::vector<tagROOTCERTURLINFO> roots(1);
    for (const char* path : {static_cast<const char*>(nullptr), ""}) {
        EXPECT_EQ(loader.GetRootCertCount(path, &count), 1001);
        EXPECT_EQ(lastLog(), "CLoadExtra::GetRootCertCount() - ERR_INVALIDINPUT >>");
        EXPECT_EQ(loader.GetRootCertURL(path, roots), 1001);
        EXPECT_EQ(lastLog(), "CLoadExtra::GetRootCertURL() - ERR_INVALIDINPUT >>");
    }
    for (const char* wrong : {"", "[VALIDATOIN_OPTION]\nCA_INFO_COUNT=0\n",
             "[VALIDATOIN_OPTION]\nCA_INFO_COUNT=-3\n", "[VALIDATION_OPTION]\nCA_INFO_COUNT=1\n"}) {
        settings(wrong);
        EXPECT_EQ(loader.GetRootCertCount(confFile.c_str(), &count), 1100);
        EXPECT_NE(lastLog().find("CLoadExtra::GetRootCertCount() - ERR_LOADCONF >>"), std::string::npos);
        EXPECT_EQ(loader.GetRootCertURL(confFile.c_str(), roots), 1100);
        EXPECT_TRUE(log().empty()); // not logged
    }
    settings("[VALIDATOIN_OPTION]\nCA_INFO_COUNT=2000000000\n");
    EXPECT_EQ(loader.GetRootCertCount(confFile.c_str(), &count), 0); // and does not take for ever
    EXPECT_EQ(count, 0);
}

TEST_F(LoaderExtra, NullCertificate)
{
    CBinary text;
    EXPECT_EQ(loader.VerifyCert(nullptr, 1, &text), 1001);
    EXPECT_EQ(lastLog(), "CLoadExtra::VerifyCert() - ERR_INVALIDINPUT >>");
}

TEST_F(LoaderExtra, CheckKeyPair)
{
    sigil::CertNKey pairs;
    EXPECT_EQ(loader.CheckKeyPair(pairs), 1001);
    EXPECT_EQ(lastLog(), "CLoadExtra::CheckKeyPair() - ERR_INVALIDINPUT >>");
    pairs.signCert = Text(fake::certificate());
    pairs.signKey = Text(fake::key());
    pairs.kmCert = Text("a key-management certificate without its key is not looked at");
    EXPECT_EQ(loader.CheckKeyPair(pairs), 0);
    EXPECT_EQ(doubles::callsOf("HVTK_PRIKEY_CheckKeyPair").size(), 1u);
    pairs.kmKey = Text("KEY(K1)");
    EXPECT_EQ(loader.CheckKeyPair(pairs), 1130);
}

TEST_F(LoaderExtra, SettingsAreReportedUnderTwoNames)
{
    writeFile(library / "Policy_KOR.conf", "");
    EXPECT_EQ(loader.SetInitalize(), 1102);
    EXPECT_EQ(lastLog(), "CLoadExtra::SetPolicyIDNameList() - ERR_FILEREAD_NODATA >> fseek : 1102");
    fs::remove(library / "Policy_KOR.conf");
    EXPECT_EQ(loader.SetInitalize(), 1100);
    EXPECT_EQ(lastLog(), "CLoadDISK::SetPolicyIDNameList() - ERR_LOADCONF >> fopen : 1100");
}

} // namespace
