// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Export of listed certificates into PKCS#12 files.

#include "tests/certlist/transfer.h"

namespace fs = std::filesystem;

namespace {

TEST_F(Transfer, ExportOfOnePair)
{
    const std::string path = (disk / "out.pfx").string();
    ASSERT_EQ(CLP_ExportPFX(clp, 0, Text(goodPassword), Text(path)), 0);
    const std::string expected = fake::certificate({{"subject", "cn=a,ou=unit,o=yessign,c=KR"}});
    EXPECT_EQ(readFile(path), fake::pfx(goodPassword, {expected}, {signKey}));
    EXPECT_EQ(doubles::callsOf("HVTK_PFX_Export").at(0).integer(0), 0);
    EXPECT_EQ(import(readFile(path), goodPassword), 0);
    EXPECT_EQ(cert.text(), expected);
}

TEST_F(Transfer, ExportOfTwoPairsToALongPath)
{
    fs::path folder = disk;
    while (folder.string().size() < 200)
        folder /= "long folder name";
    fs::create_directories(folder);
    const std::string path = folder.string() + "/" + std::string(259 - folder.string().size() - 1, 'p');
    ASSERT_EQ(CLP_ExportPFX(clp, 1, Text(goodPassword), Text(path)), 0);
    const std::string expected = fake::certificate({{"subject", "cn=b,ou=unit,o=SignKorea,c=KR"}});
    EXPECT_EQ(readFile(path), fake::pfx(goodPassword, {expected, kmCert}, {signKey, kmKey}));
    EXPECT_EQ(doubles::callsOf("HVTK_PFX_ExportMultiPair").at(0).integer(0), 0);
    EXPECT_EQ(doubles::liveByteStrings(), 0);
}

TEST_F(Transfer, ExportDoesNotLookAtTheMedium)
{
    ASSERT_EQ(CLP_SetMediaType(clp, 6, nullptr, 0), 0);
    EXPECT_EQ(CLP_ExportPFX(clp, 0, Text(goodPassword), Text((disk / "out.pfx").string())), 0);
}

TEST_F(Transfer, ExportFailures)
{
    const std::string path = (disk / "out.pfx").string();
    EXPECT_EQ(CLP_ExportPFX(clp, 0, Text("wrong"), Text(path)), 1113);
    doubles::answer("HVTK_PFX_Export", 77);
    EXPECT_EQ(CLP_ExportPFX(clp, 0, Text(goodPassword), Text(path)), 1128);
    EXPECT_EQ(lastLog(), logRecord("CLoadDISK::MakePKCS12()", "ERR_EXPORTCERT", "PFXExport2()", 77));
    doubles::answer("HVTK_PFX_Export", 3002); // the toolkit lacks memory
    EXPECT_EQ(CLP_ExportPFX(clp, 0, Text(goodPassword), Text(path)), 1000);
    doubles::answer("HVTK_PFX_Export", 0); // no output
    EXPECT_EQ(CLP_ExportPFX(clp, 0, Text(goodPassword), Text(path)), 1126);
    doubles::answer("HVTK_PFX_ExportMultiPair", 77);
    EXPECT_EQ(CLP_ExportPFX(clp, 1, Text(goodPassword), Text(path)), 1128);
    EXPECT_EQ(lastLog(), logRecord("CLoadDISK::MakePKCS12()", "ERR_EXPORTCERT", "PFXExportMultiPair()", 77));
    doubles::answer("HVTK_UTIL_AddObject", 78);
    EXPECT_EQ(CLP_ExportPFX(clp, 1, Text(goodPassword), Text(path)), 1128);
    EXPECT_EQ(lastLog(), logRecord("CLoadDISK::MakePKCS12()", "ERR_EXPORTCERT", "UTILAddObject()", 78));
    doubles::answer("HVTK_PRIKEY_Decrypt", 0); // an empty key
    EXPECT_EQ(CLP_ExportPFX(clp, 0, Text(goodPassword), Text(path)), 1127);
    EXPECT_FALSE(fs::exists(path));
    fake::install();
    EXPECT_EQ(
        CLP_ExportPFX(clp, 0, Text(goodPassword), Text((disk / "no folder/out.pfx").string())), fake::writeError);
}

} // namespace
