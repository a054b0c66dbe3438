// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Stores that somebody has prepared: names, kinds, sizes and rights that no honest program makes.

#include "tests/certlist/scripted.h"

#include <sys/stat.h>
#include <unistd.h>

#include <fstream>

namespace fs = std::filesystem;

namespace {

class Hostile : public Scripted {
protected:
    Hostile() { addNpki("honest", {{"subject", "cn=honest"}}, "NCASign"); }
    /** The honest certificate is found, and nothing else. */
    void expectOnlyHonest()
    {
        if (!clp)
            start();
        ASSERT_EQ(load(), 0);
        EXPECT_EQ(subjects(), std::vector<std::string>{"cn=honest"});
    }
    fs::path npki = home / "NPKI/yessign/USER";
    fs::path gpki = home / "GPKI/Certificate/class1";
};

TEST_F(Hostile, TensOfThousandsOfFolders)
{
    for (int i = 0; i < 20000; ++i)
        fs::create_directories(npki / std::to_string(i));
    expectOnlyHonest();
    fs::remove_all(npki);
}

TEST_F(Hostile, LongNamesAndNamesThatAreNotText)
{
    addPair(npki / std::string(255, 'n'), {}); // its files have paths of more than 259 bytes
    fs::create_directories(npki / "\xff\xfe\n\x01");
    fs::create_directories(npki / "%s%n%s");
    fs::create_directories(gpki / (std::string(240, 'g') + "_sig.cer"));
    writeFile(gpki / ("_sig.cer"), "");
    writeFile(gpki / ("%n_sig.cer"), "x");
    expectOnlyHonest();
}

TEST_F(Hostile, NameThatIsCutInTheMiddleOfTheFileName)
{
    // The folder's path fits and the signing certificate's does not: the cut path names no file.
    const std::size_t room = 259 - (npki.string().size() + 1);
    addPair(npki / std::string(std::min<std::size_t>(room, 255), 'n'), {});
    expectOnlyHonest();
}

TEST_F(Hostile, PipesAndDevicesNamedLikeCertificates)
{
    fs::create_directories(gpki);
    ASSERT_EQ(mkfifo((gpki / "pipe_sig.cer").c_str(), 0600), 0);
    fs::create_directories(npki / "pipes");
    for (const char* name : {"signCert.der", "signPri.key", "kmCert.der", "kmPri.key"})
        ASSERT_EQ(mkfifo((npki / "pipes" / name).c_str(), 0600), 0);
    fs::create_directories(npki / "device");
    fs::create_symlink("/dev/zero", npki / "device/signCert.der");
    fs::create_symlink("/dev/zero", npki / "device/signPri.key");
    fs::create_directories(npki / "folders/signCert.der");
    expectOnlyHonest();
}

TEST_F(Hostile, KeyManagementPipeBesideAnHonestPair)
{
    ASSERT_EQ(mkfifo((home / "NPKI/NCASign/USER/honest/kmCert.der").c_str(), 0600), 0);
    expectOnlyHonest();
    EXPECT_EQ(entry()->nKmCertLen, 0);
}

TEST_F(Hostile, HugeFilesAreNotRead)
{
    writeFile(npki / "huge/signCert.der", "x");
    fs::resize_file(npki / "huge/signCert.der", 100u << 20);
    writeFile(npki / "huge/signPri.key", "x");
    start();
    doubles::forgetCalls();
    expectOnlyHonest();
    EXPECT_EQ(doubles::callsOf("HVTK_MEDIA_DISK_ReadFile").size(), 4u); // those of the honest pair, twice
}

TEST_F(Hostile, UnreadableFoldersAndFiles)
{
    addPair(npki / "locked", {});
    fs::permissions(npki / "locked", fs::perms::none);
    fs::create_directories(home / "MPKI/USER");
    fs::permissions(home / "MPKI/USER", fs::perms::none);
    if (geteuid() != 0)
        expectOnlyHonest();
    else // root may read everything
        EXPECT_TRUE((start(), load() == 0));
    fs::permissions(npki / "locked", fs::perms::all);
    fs::permissions(home / "MPKI/USER", fs::perms::all);
}

TEST_F(Hostile, FoldersThatAreFilesOrLinksToThemselves)
{
    writeFile(home / "NPKI/yessign/USER", "a file");
    fs::create_directories(home / "MPKI");
    fs::create_directory_symlink(home / "MPKI/USER", home / "MPKI/USER");
    expectOnlyHonest();
}

TEST_F(Hostile, SettingsOfRandomBytes)
{
    std::string noise;
    unsigned state = 1;
    for (int i = 0; i < 100000; ++i)
        noise += static_cast<char>((state = state * 1103515245 + 12345) >> 16);
    writeFile(library / "Policy_KOR.conf", noise);
    writeFile(library / "Issuer_KOR.conf", noise);
    expectOnlyHonest();
}

TEST_F(Hostile, TextsOfACertificateThatAreNoText)
{
    addNpki("x",
        {{"subject", std::string("cn=\xff\xff,o=\x01\x80,") + std::string(900, '\xb0')},
            {"notAfter", "99999999999999999999-99-99 99"}, {"policyId", std::string(1100, ',')},
            {"issuer", "cn=TradeSignCA,"}});
    start();
    EXPECT_EQ(load(), 0);
    EXPECT_EQ(count(), 2);
}

} // namespace
