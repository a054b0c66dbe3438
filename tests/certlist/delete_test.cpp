// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Deletion of listed certificates.

#include "tests/certlist/transfer.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>

namespace fs = std::filesystem;

// The linker sends every question for rights of the test program here.
extern "C" int __real_faccessat(int folder, const char* path, int mode, int how);
extern "C" int __wrap_faccessat(int folder, const char* path, int mode, int how);

namespace {

fs::path folderNotToBeWritten; // as for a user without rights, which the administrator never is

TEST_F(Transfer, DeleteRemovesTheFilesAndKeepsTheFolder)
{
    EXPECT_EQ(CLP_DeleteCert(clp, 0, nullptr, Text(goodPassword)), 1001); // the first entry cannot be deleted
    EXPECT_EQ(CLP_DeleteCert(clp, 1, nullptr, Text(goodPassword)), 0);
    EXPECT_TRUE(fs::is_empty(second));
    EXPECT_TRUE(fs::exists(home / "NPKI/yessign/USER/a/signCert.der"));
    EXPECT_EQ(count(), 2); // until the list is built again
    const auto deletions = doubles::callsOf("HVTK_MEDIA_DISK_DeletePriKey");
    EXPECT_EQ(deletions.size(), 2u);
}

TEST_F(Transfer, DeleteOfAnEntryWithoutAKeyManagementPairMakesTwoCalls)
{
    addNpki("c", {{"subject", "cn=c"}}, "TradeSign");
    ASSERT_EQ(load(), 0);
    doubles::forgetCalls();
    ASSERT_EQ(CLP_DeleteCert(clp, 2, nullptr, Text(goodPassword)), 0);
    std::vector<std::string> symbols;
    for (const doubles::Call& call : doubles::calls())
        symbols.push_back(call.symbol);
    EXPECT_EQ(symbols, (std::vector<std::string>{"HVTK_MEDIA_DISK_DeletePriKey", "HVTK_MEDIA_DISK_DeleteCert"}));
}

/** The paths of the key-management files are always named, so their absence is noticed late. */
TEST_F(Transfer, DeleteOfAGovernmentCertificateWithoutAKeyManagementPairFailsHalfWay)
{
    const fs::path folder = home / "GPKI/Certificate/class2";
    addGpki("g1");
    addGpki("g2");
    ASSERT_EQ(load(), 0);
    const fs::path certificate = entry(1)->szSignCertPath;
    ASSERT_EQ(certificate.parent_path(), folder);
    EXPECT_EQ(CLP_DeleteCert(clp, 1, nullptr, Text(goodPassword)), 1125);
    EXPECT_FALSE(fs::exists(certificate));
    EXPECT_FALSE(fs::exists(fs::path(certificate).replace_extension(".key")));
}

TEST_F(Transfer, DeleteOnMedia)
{
    const std::pair<int, int> media[] = {{0, 1001}, {6, 1001}, {7, 1005}, {8, 1001}};
    for (const auto& [medium, result] : media) {
        ASSERT_EQ(CLP_SetMediaType(clp, medium, nullptr, 0), 0);
        EXPECT_EQ(CLP_DeleteCert(clp, 1, Text("1234"), Text(goodPassword)), result) << medium;
    }
    ASSERT_EQ(CLP_SetMediaType(clp, 1, nullptr, 0), 0);
    EXPECT_EQ(CLP_DeleteCert(clp, 1, Text("1234"), nullptr), 1001);
    EXPECT_EQ(CLP_DeleteCert(clp, 1, Text("1234"), Text("")), 1001);
}

TEST_F(Transfer, DeleteFailures)
{
    const char function[] = "CLoadDISK::DeleteCertNKey()";
    EXPECT_EQ(CLP_DeleteCert(clp, 1, nullptr, Text("wrong")), 1113);
    EXPECT_EQ(lastLog(), logRecord(function, "ERR_INVALIDPASSWORD", "MediaDiskDeletePriKey()", 2004));
    doubles::answer("HVTK_MEDIA_DISK_DeletePriKey", 77);
    EXPECT_EQ(CLP_DeleteCert(clp, 1, nullptr, Text(goodPassword)), 1125);
    EXPECT_EQ(lastLog(), logRecord(function, "ERR_DELETECERTNKEY", "MediaDiskDeletePriKey()", 77));
    EXPECT_TRUE(fs::exists(second / "signCert.der"));
    fake::install();
    doubles::answer("HVTK_MEDIA_DISK_DeleteCert", 78);
    EXPECT_EQ(CLP_DeleteCert(clp, 1, nullptr, Text(goodPassword)), 1125);
    EXPECT_EQ(lastLog(), logRecord(function, "ERR_DELETECERTNKEY", "MediaDiskDeleteCert()", 78));
    // Nothing is undone: the key is gone, the certificate is still there.
    EXPECT_FALSE(fs::exists(second / "signPri.key"));
    EXPECT_TRUE(fs::exists(second / "signCert.der"));
}

TEST_F(Transfer, DeleteWithAWrongPasswordOfAnEntryWithoutAKeyManagementPair)
{
    const fs::path folder = addNpki("c", {{"subject", "cn=c"}}, "TradeSign");
    ASSERT_EQ(load(), 0);
    EXPECT_EQ(CLP_DeleteCert(clp, 2, nullptr, Text("wrong")), 1113);
    EXPECT_EQ(lastLog(),
        logRecord("CLoadDISK::DeleteCertNKey()", "ERR_INVALIDPASSWORD", "MediaDiskDeletePriKey()", 2004));
    EXPECT_TRUE(fs::exists(folder / "signCert.der"));
    EXPECT_TRUE(fs::exists(folder / "signPri.key"));
}

TEST_F(Transfer, DeleteLeavesAPairAloneThatItsFolderWillNotLetGo)
{
    for (const char* gone : {"", "signPri.key"}) { // each file of the pair is looked at
        if (*gone)
            fs::remove(second / gone);
        doubles::forgetCalls();
        folderNotToBeWritten = second;
        EXPECT_EQ(CLP_DeleteCert(clp, 1, nullptr, Text(goodPassword)), 1125);
        folderNotToBeWritten.clear();
        EXPECT_EQ(lastLog(), "CLoadDISK::DeleteCertNKey() - ERR_DELETECERTNKEY >> access() : 1125");
        EXPECT_TRUE(doubles::callsOf("HVTK_MEDIA_DISK_DeletePriKey").empty());
        EXPECT_TRUE(fs::exists(second / "signCert.der"));
        EXPECT_TRUE(fs::exists(second / "kmPri.key"));
    }
}

TEST_F(Transfer, DeleteRemovesAnEmptyHomeFolder)
{
    ASSERT_EQ(CLP_DeleteCert(clp, 1, nullptr, Text(goodPassword)), 0);
    EXPECT_TRUE(fs::exists(home)); // it is not empty
    static std::string empty;
    empty = (disk / "empty home").string();
    fs::create_directory(empty);
    sigil::environment().homeFolder = [] { return empty; };
    addPair(second, {});
    addKm(second);
    ASSERT_EQ(CLP_DeleteCert(clp, 1, nullptr, Text(goodPassword)), 0);
    EXPECT_FALSE(fs::exists(empty));
}

TEST_F(Transfer, DeleteOfAPrivateCasCertificateRemovesAnEmptyHomeFolder)
{
    static std::string empty;
    empty = (disk / "empty home").string();
    fs::create_directory(empty);
    addPair(home / "Halvard/TALOCERT/TALO/p", {{"subject", "cn=ppki"}});
    addKm(home / "Halvard/TALOCERT/TALO/p");
    ASSERT_EQ(load(), 0);
    ASSERT_STREQ(entry(2)->szSubjectDN, "cn=ppki");
    sigil::environment().homeFolder = [] { return empty; };
    ASSERT_EQ(CLP_DeleteCert(clp, 2, nullptr, Text(goodPassword)), 0);
    EXPECT_FALSE(fs::exists(empty));
}

TEST_F(Transfer, DeleteOfTheOtherFamiliesLeavesTheHomeFolder)
{
    static std::string empty;
    empty = (disk / "empty home").string();
    fs::create_directory(empty);
    addPair(home / "MPKI/USER/m", {{"subject", "cn=mpki"}});
    options.nPKITypes = 2 + 4;
    setOptions();
    ASSERT_EQ(load(), 0);
    ASSERT_STREQ(entry(2)->szSubjectDN, "cn=mpki");
    sigil::environment().homeFolder = [] { return empty; };
    ASSERT_EQ(CLP_DeleteCert(clp, 2, nullptr, Text(goodPassword)), 0);
    EXPECT_TRUE(fs::exists(empty));
}

} // namespace

extern "C" int __wrap_faccessat(int folder, const char* path, int mode, int how)
{
    if (folderNotToBeWritten.empty() || path != folderNotToBeWritten || (mode & W_OK) == 0)
        return __real_faccessat(folder, path, mode, how);
    errno = EACCES;
    return -1;
}
