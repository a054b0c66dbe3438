// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Copies of certificates: where they go, how their keys are encrypted, what may be copied.

#include "tests/certlist/transfer.h"

#include <tuple>

namespace fs = std::filesystem;

namespace {

/** A copy: the certificate's subject, the medium, and the four files, below the base folder. */
struct Target {
    const char* subject;
    int medium;
    std::vector<std::string> files;
};

const Target targets[] = {
    {"cn=Kim,ou=unit,o=yessign,c=KR", 2,
        {"\\NPKI\\yessign\\User\\cn=Kim,ou=unit,o=yessign,c=KR\\SignCert.der",
            "\\NPKI\\yessign\\User\\cn=Kim,ou=unit,o=yessign,c=KR\\SignPri.key",
            "\\NPKI\\yessign\\User\\cn=Kim,ou=unit,o=yessign,c=KR\\KmCert.der",
            "\\NPKI\\yessign\\User\\cn=Kim,ou=unit,o=yessign,c=KR\\KmPri.key"}},
    {"cn=Kim,ou=unit,o=KICA,c=KR", 1,
        {"\\NPKI\\KICA\\User\\cn=Kim,ou=unit,o=KICA,c=KR\\SignCert.der",
            "\\NPKI\\KICA\\User\\cn=Kim,ou=unit,o=KICA,c=KR\\SignPri.key",
            "\\NPKI\\KICA\\User\\cn=Kim,ou=unit,o=KICA,c=KR\\KmCert.der",
            "\\NPKI\\KICA\\User\\cn=Kim,ou=unit,o=KICA,c=KR\\KmPri.key"}},
    {"cn=Kim,ou=A/B,o=../up,c=KR", 2,
        {"\\NPKI\\.._up\\User\\cn=Kim,ou=A_B,o=.._up,c=KR\\SignCert.der"}}, // no folder of the certificate's choice
    {"cn=001SVR,ou=Group of Server,o=GOVERNMENT of Korea,c=KR", 2,
        {"\\GPKI\\Certificate\\class1\\001SVR_sig.cer", "\\GPKI\\Certificate\\class1\\001SVR_sig.key",
            "\\GPKI\\Certificate\\class1\\001SVR_env.cer", "\\GPKI\\Certificate\\class1\\001SVR_env.key"}},
    {"cn=123Kim,ou=People,o=Government of Korea,c=KR", 2,
        {"\\GPKI\\Certificate\\class2\\123Kim_sig.cer", "\\GPKI\\Certificate\\class2\\123Kim_sig.key",
            "\\GPKI\\Certificate\\class2\\123Kim_env.cer", "\\GPKI\\Certificate\\class2\\123Kim_env.key"}},
    {"cn=001SVR,ou=Group of Server,o=Government of Korea,c=KR", 1,
        {"Library/Preferences/GPKI/Certificate/class1/class2/001SVR_sig.cer",
            "Library/Preferences/GPKI/Certificate/class1/class2/001SVR_sig.key",
            "Library/Preferences/GPKI/Certificate/class1/class2/001SVR_env.cer",
            "Library/Preferences/GPKI/Certificate/class1/class2/001SVR_env.key"}},
    {"cn=123Kim,ou=people,o=Government of Korea,c=KR", 1,
        {"/Library/Preferences/GPKI/Certificate/class2/class2/123Kim_sig.cer",
            "Library/Preferences/GPKI/Certificate/class2/class2/123Kim_sig.key",
            "Library/Preferences/GPKI/Certificate/class2/class2/123Kim_env.cer",
            "Library/Preferences/GPKI/Certificate/class2/class2/123Kim_env.key"}},
};

/** Copies whose home folder lies in a folder of its own: the templates write beside it. */
class CopyTargets : public Transfer {
protected:
    void SetUp() override
    {
        Transfer::SetUp();
        static std::string nested;
        nested = (disk / "users/kim").string();
        fs::create_directories(nested);
        sigil::environment().homeFolder = [] { return nested; };
        base = nested;
    }
    std::string base;
};

TEST_F(CopyTargets, TemplatesOfEveryKind)
{
    for (const Target& target : targets) {
        const std::string certificate = fake::certificate({{"subject", target.subject}});
        const std::string kmCertificate = fake::certificate({{"subject", target.subject}, {"pair", "K1"}});
        ASSERT_EQ(stage(certificate, signKey, kmCertificate, kmKey), 0);
        ASSERT_EQ(CLP_CopyCertToDISK(clp, target.medium, Text(base), Text("copy")), 0) << target.subject;
        const std::string contents[] = {
            certificate, fake::encrypted(signKey, "copy"), kmCertificate, fake::encrypted(kmKey, "copy")};
        for (std::size_t i = 0; i < target.files.size(); ++i)
            EXPECT_EQ(readFile(base + target.files[i]), contents[i]) << target.files[i];
    }
    EXPECT_EQ(fs::status(base + "Library").permissions() & fs::perms::others_all, fs::perms::none);
}

TEST_F(CopyTargets, CertificatesOfThePrivateCaHaveNoFiles)
{
    ASSERT_EQ(stage(fake::certificate({{"subject", "cn=x,ou=y,o=HALVARD,c=KR"}}), signKey), 0);
    EXPECT_EQ(copyStaged(), 1124);
    EXPECT_EQ(lastLog(),
        logRecord("CLoadDISK::WriteCertNKey()", "ERR_WRITECERTNKEY", "MediaDiskWriteFile()", fake::writeError));
}

TEST_F(CopyTargets, PathsThatAreTooLongAreNotWritten)
{
    const std::string subject = "cn=" + std::string(250, 'x') + ",ou=y,o=yessign,c=KR";
    ASSERT_EQ(stage(fake::certificate({{"subject", subject}}), signKey), 0);
    std::vector<std::string> written;
    doubles::answer("HVTK_MEDIA_DISK_WriteFile", [&](const doubles::Call& call) {
        written.push_back(call.pointer<char>(0));
        return fake::writeError;
    });
    EXPECT_EQ(copyStaged(), 1124); // cut short, all four files would have the same name
    EXPECT_EQ(written, std::vector<std::string>{""});
}

TEST_F(Transfer, CopyOfASelectedEntry)
{
    ASSERT_EQ(CLP_CopySelCertToDISK(clp, 1, 1, 2, Text(disk.string()), Text(goodPassword)), 0);
    const std::string folder = disk.string() + "\\NPKI\\SignKorea\\User\\cn=b,ou=unit,o=SignKorea,c=KR\\";
    EXPECT_EQ(readFile(folder + "SignCert.der"), readFile(second / "signCert.der"));
    EXPECT_EQ(readFile(folder + "SignPri.key"), fake::encrypted(signKey, goodPassword));
    EXPECT_EQ(readFile(folder + "KmCert.der"), kmCert);
    EXPECT_EQ(readFile(folder + "KmPri.key"), fake::encrypted(kmKey, goodPassword));
    EXPECT_EQ(doubles::liveByteStrings(), 0);
}

TEST_F(Transfer, CopyWithoutAKeyManagementPairWritesTwoFiles)
{
    ASSERT_EQ(CLP_CopySelCertToDISK(clp, 1, 0, 2, Text(disk.string()), Text(goodPassword)), 0);
    EXPECT_EQ(doubles::callsOf("HVTK_MEDIA_DISK_WriteFile").size(), 2u);
}

TEST_F(Transfer, CopyEncryptsWithTheAlgorithmOfTheCertificate)
{
    ASSERT_EQ(stage(fake::certificate({{"policyId", "1 2 410 100001 2 1"}}), signKey), 0);
    ASSERT_EQ(copyStaged(), 0);
    EXPECT_EQ(doubles::callsOf("HVTK_PRIKEY_Encrypt").at(0).integer(0), 64);
    // The signing certificate decides for both keys.
    doubles::forgetCalls();
    ASSERT_EQ(stage(fake::certificate({{"policyId", "1 2 410 100001 2 1"}}), signKey, kmCert, kmKey), 0);
    ASSERT_EQ(copyStaged(), 0);
    EXPECT_EQ(doubles::callsOf("HVTK_PRIKEY_Encrypt").at(1).integer(0), 64);
    doubles::forgetCalls();
    ASSERT_EQ(stage(kmCert, kmKey), 0);
    ASSERT_EQ(copyStaged(), 0);
    EXPECT_NE(doubles::callsOf("HVTK_PRIKEY_Encrypt").at(0).integer(0), 64);
}

TEST_F(Transfer, CopySources)
{
    const std::pair<int, int> media[] = {{0, 1001}, {-1, 1001}, {3, 1005}, {4, 1005}, {5, 1005}, {6, 1001},
        {8, 1001}, {7, 1001}}; // 7 has empty parts, so the check of the pair refuses it
    for (const auto& [medium, result] : media)
        EXPECT_EQ(CLP_CopySelCertToDISK(clp, medium, 0, 2, Text(disk.string()), Text(goodPassword)), result)
            << medium;
    EXPECT_EQ(CLP_CopySelCertToDISK(clp, 1, 0, 2, Text(disk.string()), Text("wrong")), 1113);
    EXPECT_EQ(CLP_CopySelCertToDISK(clp, 1, 0, 2, Text(disk.string()), Text("")), 1001);
    EXPECT_EQ(CLP_CopySelCertToDISK(clp, 1, 0, 2, nullptr, Text(goodPassword)), 1001);
    EXPECT_EQ(CLP_CopySelCertToDISK(clp, 1, 0, 2, Text(""), Text(goodPassword)), 1001);
    EXPECT_EQ(CLP_CopySelCertToDISK(clp, 1, 0, 3, Text(disk.string()), Text(goodPassword)), 0); // not judged, kept
}

TEST_F(Transfer, CopyOfASelectedEntryChangesTheMedium)
{
    ASSERT_EQ(CLP_SetMediaType(clp, 6, nullptr, 0), 0);
    ASSERT_EQ(CLP_CopySelCertToDISK(clp, 1, 0, 2, Text(disk.string()), Text(goodPassword)), 0);
    EXPECT_EQ(count(), 2); // of the disk
    ASSERT_EQ(CLP_CopySelCertToDISK(clp, 6, 0, 2, Text(disk.string()), Text(goodPassword)), 1001);
    EXPECT_EQ(count(), 0); // also when it fails
}

TEST_F(Transfer, OtherCopiesLeaveTheMedium)
{
    ASSERT_EQ(CLP_SetMediaType(clp, 6, nullptr, 0), 0);
    EXPECT_EQ(CLP_CopySelCertToDISK(clp, 4, 0, 2, Text(disk.string()), Text(goodPassword)), 1005);
    EXPECT_EQ(CLP_CopySelCertToDISK(clp, 1, 0, 2, Text(disk.string()), Text("")), 1001);
    EXPECT_EQ(count(), 0);
    ASSERT_EQ(stage(signCert, signKey), 0);
    ASSERT_EQ(copyStaged(), 0);
    EXPECT_EQ(count(), 0);
}

TEST_F(Transfer, StagedKeyManagementPairStaysUntilItIsReplaced)
{
    ASSERT_EQ(stage(signCert, signKey, kmCert, kmKey), 0);
    ASSERT_EQ(stage(signCert, signKey, kmCert, ""), 0);
    ASSERT_EQ(copyStaged(), 0);
    EXPECT_EQ(doubles::callsOf("HVTK_MEDIA_DISK_WriteFile").size(), 4u);
}

TEST_F(Transfer, HalfAKeyManagementPairIsNotStaged)
{
    char whole[] = "k";
    const std::tuple<char*, int, char*, int> halves[] = {
        {nullptr, 1, whole, 1}, {whole, 1, nullptr, 1}, {whole, 0, whole, 1}, {whole, 1, whole, 0}};
    for (const auto& [certificate, certificateLength, itsKey, keyLength] : halves) {
        doubles::forgetCalls();
        EXPECT_EQ(CLP_CopyforSetData(clp, Text(signCert), int(signCert.size()), Text(signKey), int(signKey.size()),
                      certificate, certificateLength, itsKey, keyLength),
            0);
        EXPECT_EQ(copyStaged(), 0);
        EXPECT_EQ(doubles::callsOf("HVTK_MEDIA_DISK_WriteFile").size(), 2u);
    }
}

TEST_F(Transfer, NothingStaged) { EXPECT_EQ(copyStaged(), 1001); }

TEST_F(Transfer, CopyOfAnEntryWhoseKeyIsEmpty)
{
    writeFile(home / "NPKI/yessign/USER/a/signPri.key", fake::encrypted("", goodPassword));
    ASSERT_EQ(load(), 0);
    EXPECT_EQ(CLP_CopySelCertToDISK(clp, 1, 0, 2, Text(disk.string()), Text(goodPassword)), 1001);
    EXPECT_EQ(lastLog(), "CLoadExtra::CheckKeyPair() - ERR_INVALIDINPUT >>");
    EXPECT_TRUE(doubles::callsOf("HVTK_MEDIA_DISK_WriteFile").empty());
}

TEST_F(Transfer, CopyOfWhatDoesNotBelongTogether)
{
    ASSERT_EQ(stage(signCert, kmKey), 0);
    EXPECT_EQ(copyStaged(), 1130);
    EXPECT_EQ(lastLog(),
        logRecord(
            "CLoadExtra::GetRootCertInfo()", "ERR_DIFFCERTKEYPAIR", "PriKeyCheckKeyPair( usage : sign )", 3004));
    ASSERT_EQ(stage(signCert, signKey, kmCert, signKey), 0);
    EXPECT_EQ(copyStaged(), 1130);
    EXPECT_EQ(lastLog(),
        logRecord(
            "CLoadExtra::GetRootCertInfo()", "ERR_DIFFCERTKEYPAIR", "PriKeyCheckKeyPair( usage : km )", 3004));
}

TEST_F(Transfer, CopySteps)
{
    const std::tuple<const char*, std::string, std::string, std::string, int> rows[] = {
        {"HVTK_CERT_Load", "CLoadDISK::MakeCertPath()", "ERR_PARSINGCERT", "CertLoad()", 1122},
        {"HVTK_CERT_GetSubjectName", "CLoadDISK::ParsingCert()", "ERR_PARSINGCERT", "CertGetSubjectName()", 1122},
        {"HVTK_CERT_GetPubKey2", "CLoadDISK::ParsingCert()", "ERR_PARSINGCERT", "CertGetPubKeyInfo()", 1122},
        {"HVTK_CERT_GetCertPolicy_PolicyID", "CLoadSMCard::GetPrikeyAlg()", "ERR_PARSINGCERT", "CertGetPolicyID()",
            1122},
        {"HVTK_PRIKEY_Encrypt", "CLoadDISK::WriteCertNKey()", "ERR_WRITECERTNKEY", "PriKeyEncrypt()", 1124},
        {"HVTK_MEDIA_DISK_WriteFile", "CLoadDISK::WriteCertNKey()", "ERR_WRITECERTNKEY", "MediaDiskWriteFile()",
            1124},
    };
    ASSERT_EQ(stage(signCert, signKey), 0);
    for (const auto& [symbol, function, name, callee, result] : rows) {
        fake::install();
        doubles::answer(symbol, 77);
        EXPECT_EQ(copyStaged(), result) << symbol;
        EXPECT_EQ(lastLog(), logRecord(function, name, callee, 77)) << symbol;
        EXPECT_EQ(doubles::liveByteStrings(), 0) << symbol;
    }
}

} // namespace
