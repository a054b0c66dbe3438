// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Discovery of certificates on disks: which folders, which files, in which order.

#include "tests/certlist/scripted.h"

#include "certlist/load_disk.h"

#include <dirent.h>

#include <algorithm>
#include <cerrno>

namespace fs = std::filesystem;

// The linker sends every opendir and readdir of the test program here.
extern "C" DIR* __real_opendir(const char* path);
extern "C" DIR* __wrap_opendir(const char* path);
extern "C" dirent* __real_readdir(DIR* folder);
extern "C" dirent* __wrap_readdir(DIR* folder);

namespace {

fs::path brokenFolder;    // empty for none
bool lacksMemory = false; // for an open folder

using Names = std::vector<std::string>;

using Listing = Scripted;

TEST_F(Listing, FindsEveryFamilyInTheOrderOfFamiliesAndFolders)
{
    addPair(home / "NPKI/TALO/User/p2", {{"subject", "cn=ppki two"}});
    addPair(home / "Halvard/TALOCERT/TALO/p1", {{"subject", "cn=ppki one"}});
    addPair(home / "MPKI/USER/m1", {{"subject", "cn=mpki"}});
    for (const char* ca : {"NCASign", "KICA", "SignGate", "CrossCert", "TradeSign", "SignKorea", "yessign"})
        addNpki("n", {{"subject", std::string("cn=") + ca}}, ca);
    addGpki("g2", {{"subject", "cn=gpki class2"}}, "class2");
    addGpki("g1", {{"subject", "cn=gpki class1"}}, "class1");
    start();
    ASSERT_EQ(load(), 0);
    EXPECT_EQ(subjects(),
        (Names{"cn=gpki class1", "cn=gpki class2", "cn=yessign", "cn=SignKorea", "cn=TradeSign", "cn=CrossCert",
            "cn=SignGate", "cn=KICA", "cn=NCASign", "cn=mpki", "cn=ppki one", "cn=ppki two"}));
    const std::vector<std::pair<int, int>> families{{0, 1}, {1, 1}, {2, 2}, {8, 2}, {9, 4}, {10, 8}, {11, 8}};
    for (const auto& [index, family] : families)
        EXPECT_EQ(entry(index)->nPKIType, family) << index;
}

TEST_F(Listing, OnlyTheFamiliesAskedFor)
{
    addNpki("n", {{"subject", "cn=npki"}});
    addGpki("g", {{"subject", "cn=gpki"}});
    addPair(home / "MPKI/USER/m", {{"subject", "cn=mpki"}});
    start();
    const std::vector<std::pair<int, Names>> masks{
        {1, {"cn=gpki"}}, {2, {"cn=npki"}}, {4, {"cn=mpki"}}, {5, {"cn=gpki", "cn=mpki"}}, {16 + 2, {"cn=npki"}}};
    for (const auto& [mask, names] : masks) {
        options.nPKITypes = mask;
        setOptions();
        ASSERT_EQ(load(), 0) << mask;
        EXPECT_EQ(subjects(), names) << mask;
    }
    options.nPKITypes = 0;
    setOptions();
    EXPECT_EQ(load(), 1115);
    options.nPKITypes = 8;
    setOptions();
    EXPECT_EQ(load(), 1115);
    EXPECT_EQ(count(), 0); // the list of before is gone
}

TEST_F(Listing, RemovableDiskHasNoPrivateCaFamily)
{
    addPair(disk / "Halvard/TALOCERT/TALO/p", {{"subject", "cn=p1"}});
    addPair(disk / "NPKI/TALO/User/p", {{"subject", "cn=p2"}});
    addPair(disk / "TALO/User/p", {{"subject", "cn=p3"}});
    addPair(disk / "MPKI/USER/m", {{"subject", "cn=mpki"}});
    start();
    options.nPKITypes = 8;
    setOptions();
    EXPECT_EQ(load(2, disk.string()), 1115);
    options.nPKITypes = 15;
    setOptions();
    ASSERT_EQ(load(2, disk.string()), 0);
    EXPECT_EQ(subjects(), Names{"cn=mpki"});
    EXPECT_EQ(entry()->szSignCertPath, disk.string() + "/MPKI/USER//m/signCert.der");
}

TEST_F(Listing, FolderCounts)
{
    CLoadDISK loader(1, library.c_str());
    const std::vector<std::pair<int, int>> hardDiskCounts{{1, 2}, {2, 7}, {4, 1}, {8, 4}, {0, 0}, {3, 0}};
    for (const auto& [family, folders] : hardDiskCounts)
        EXPECT_EQ(loader.GetDirectoryCount(family), folders);
    loader.setMedium(2);
    const std::vector<std::pair<int, int>> removableCounts{{1, 2}, {2, 7}, {4, 1}, {8, 0}, {16, 0}};
    for (const auto& [family, folders] : removableCounts)
        EXPECT_EQ(loader.GetDirectoryCount(family), folders);
    EXPECT_EQ(loader.GetCertDirectory(16), 0);   // unknown family
    EXPECT_EQ(loader.GetCertDirectory(2), 1111); // no drive folder
    loader.setDrive("/media/usb");
    EXPECT_EQ(loader.GetCertDirectory(2), 0);
    EXPECT_EQ(loader.GetCertDirectory(8), 0); // its folders have no place in the list
    loader.setMedium(7);
    EXPECT_EQ(loader.GetCertDirectory(2), 0);
}

TEST_F(Listing, NoHomeFolder)
{
    start();
    sigil::environment().homeFolder = [] { return std::string(); };
    EXPECT_EQ(load(), 1111);
}

TEST_F(Listing, PathsOfEveryFamily)
{
    const fs::path npki = addNpki("n", {{"subject", "cn=n"}});
    addKm(npki);
    addGpki("x", {{"subject", "cn=g"}});
    addPair(home / "Halvard/TALOCERT/TALO/p", {{"subject", "cn=p"}});
    const fs::path mpki = home / "MPKI/USER/m";
    addPair(mpki, {{"subject", "cn=m"}});
    start();
    ASSERT_EQ(load(), 0);
    const std::string base = home.string();
    // Whether or not the key-management files exist, a government certificate names them.
    EXPECT_EQ(entry(0)->szSignCertPath, base + "/GPKI/Certificate/class2/x_sig.cer");
    EXPECT_EQ(entry(0)->szSignPriKeyPath, base + "/GPKI/Certificate/class2/x_sig.key");
    EXPECT_EQ(entry(0)->szKmCertPath, base + "/GPKI/Certificate/class2/x_env.cer");
    EXPECT_EQ(entry(0)->szKmPriKeyPath, base + "/GPKI/Certificate/class2/x_env.key");
    EXPECT_EQ(entry(1)->szSignCertPath, base + "/NPKI/yessign/USER/n/signCert.der");
    EXPECT_EQ(entry(1)->szSignPriKeyPath, base + "/NPKI/yessign/USER/n/signPri.key");
    EXPECT_EQ(entry(1)->szKmCertPath, base + "/NPKI/yessign/USER/n/kmCert.der");
    EXPECT_EQ(entry(1)->szKmPriKeyPath, base + "/NPKI/yessign/USER/n/kmPri.key");
    EXPECT_EQ(entry(2)->szSignCertPath, base + "/MPKI/USER//m/signCert.der"); // the doubled "/" is kept
    EXPECT_EQ(entry(2)->szSignPriKeyPath, base + "/MPKI/USER//m/signPri.key");
    EXPECT_STREQ(entry(2)->szKmCertPath, "");
    EXPECT_EQ(entry(3)->szSignCertPath, base + "/Halvard/TALOCERT/TALO//p/signCert.der");
    EXPECT_EQ(entry(3)->szKmCertPath, base + "/Halvard/TALOCERT/TALO//p/kmCert.der"); // not probed
    EXPECT_EQ(entry(3)->szKmPriKeyPath, base + "/Halvard/TALOCERT/TALO//p/kmPri.key");
    EXPECT_EQ(entry(3)->szSignPriKeyPath, base + "/Halvard/TALOCERT/TALO//p/signPri.key");
    addKm(mpki);
    ASSERT_EQ(load(), 0);
    EXPECT_EQ(entry(2)->szKmCertPath, base + "/MPKI/USER//m/kmCert.der");
    EXPECT_EQ(entry(2)->szKmPriKeyPath, base + "/MPKI/USER//m/kmPri.key");
}

TEST_F(Listing, GovernmentCertificatesOfARemovableDisk)
{
    const fs::path folder = disk / "GPKI/Certificate/class1";
    writeFile(folder / "u_sig.cer", fake::certificate({{"subject", "cn=removable"}}));
    writeFile(folder / "u_sig.key", fake::encrypted(fake::key(), goodPassword));
    start();
    ASSERT_EQ(load(2, disk.string()), 0);
    EXPECT_EQ(subjects(), Names{"cn=removable"});
    EXPECT_EQ(entry()->szSignCertPath, (folder / "u_sig.cer").string());
}

TEST_F(Listing, GovernmentNamesMayHoldTheMarkAnywhere)
{
    const fs::path folder = home / "GPKI/Certificate/class1";
    writeFile(folder / "a_sig.cer.old", fake::certificate({{"subject", "cn=old"}}));
    writeFile(folder / "a_sig.cer.key", fake::encrypted(fake::key(), goodPassword));
    writeFile(folder / "b_SIG.CER", fake::certificate());
    writeFile(folder / "c_env.cer", fake::certificate());
    fs::create_directories(folder / "d_sig.cer");
    start();
    ASSERT_EQ(load(), 0);
    EXPECT_EQ(subjects(), Names{"cn=old"});
    EXPECT_EQ(entry()->szKmCertPath, (folder / "a_sig_env.cer").string());
}

TEST_F(Listing, LinksAreNotFollowed)
{
    const fs::path elsewhere = disk / "certificate";
    addPair(elsewhere, {{"subject", "cn=linked"}});
    addNpki("real", {{"subject", "cn=real"}});
    fs::create_directory_symlink(elsewhere, home / "NPKI/yessign/USER/link");
    fs::create_directories(home / "GPKI/Certificate/class1");
    fs::create_symlink(elsewhere / "signCert.der", home / "GPKI/Certificate/class1/l_sig.cer");
    writeFile(home / "NPKI/yessign/USER/file", "not a folder");
    start();
    ASSERT_EQ(load(), 0);
    EXPECT_EQ(subjects(), Names{"cn=real"});
}

TEST_F(Listing, ListingAgainFindsWhatWasAdded)
{
    addNpki("a", {{"subject", "cn=a"}});
    start();
    ASSERT_EQ(load(), 0);
    addNpki("b", {{"subject", "cn=b"}}, "SignKorea");
    ASSERT_EQ(load(), 0);
    EXPECT_EQ(subjects(), (Names{"cn=a", "cn=b"}));
}

TEST_F(Listing, ListingAgainForgetsWhatWasDeleted)
{
    addNpki("a", {{"subject", "cn=a"}});
    const fs::path deleted = addNpki("b", {{"subject", "cn=b"}}, "SignKorea");
    start();
    ASSERT_EQ(load(), 0);
    fs::remove_all(deleted);
    ASSERT_EQ(load(), 0);
    EXPECT_EQ(subjects(), Names{"cn=a"});
    tagCERTINFO info{};
    EXPECT_EQ(CLP_GetCertInfo(clp, 1, &info), 1001);
    EXPECT_STREQ(info.szSubjectDN, "");
}

TEST_F(Listing, FilesThatComeBetweenThePassesAreLeftForTheNextListing)
{
    addNpki("a", {{"subject", "cn=a"}}, "SignKorea");
    start();
    int unloads = 0;
    doubles::answer("HVTK_CERT_Unload", [&](const doubles::Call&) {
        if (++unloads == 1)                                 // the counting pass has judged its only certificate
            addNpki("b", {{"subject", "cn=b"}}, "yessign"); // in a folder that is searched earlier
        return 0;
    });
    ASSERT_EQ(load(), 0);
    EXPECT_EQ(subjects(), Names{"cn=b"});
    ASSERT_EQ(load(), 0);
    EXPECT_EQ(subjects(), (Names{"cn=b", "cn=a"}));
}

TEST_F(Listing, FilesThatVanishBetweenThePassesAreNotCounted)
{
    const fs::path first = addNpki("a", {{"subject", "cn=a"}});
    addNpki("b", {{"subject", "cn=b"}}, "SignKorea");
    start();
    ASSERT_EQ(load(), 0); // nor is anything left of the list of before
    doubles::answer("HVTK_CERT_Unload", [&](const doubles::Call&) { return fs::remove_all(first), 0; });
    ASSERT_EQ(load(), 0);
    EXPECT_EQ(subjects(), Names{"cn=b"});
    doubles::answer("HVTK_CERT_Unload", [&](const doubles::Call&) { return fs::remove_all(home), 0; });
    EXPECT_EQ(load(), 1115);
    EXPECT_EQ(count(), 0);
}

/** As on a disk that is pulled out: reading the folders below @p path fails. */
class BrokenFolder {
public:
    explicit BrokenFolder(const fs::path& path) { brokenFolder = path; }
    ~BrokenFolder() { brokenFolder.clear(); }
    BrokenFolder(const BrokenFolder&) = delete;
    BrokenFolder& operator=(const BrokenFolder&) = delete;
};

constexpr char unreadRecord[] =
    "CLoadDISK::LoadCertList() - ERR_GETDATA >> readdir() : 1123 (Msg : Input/output error)";

TEST_F(Listing, FolderThatCannotBeReadIsNotOneWithoutCertificates)
{
    addNpki("a", {{"subject", "cn=a"}});
    start();
    {
        const BrokenFolder broken(home / "NPKI/yessign/USER");
        EXPECT_EQ(load(), 1123);
        EXPECT_EQ(count(), 0);
        EXPECT_EQ(log(), Names{unreadRecord});
    }
    EXPECT_EQ(load(), 0);
    EXPECT_EQ(subjects(), Names{"cn=a"});
}

TEST_F(Listing, CertificatesBesideAFolderThatCannotBeReadAreListed)
{
    addNpki("a", {{"subject", "cn=a"}});
    addNpki("b", {{"subject", "cn=b"}}, "SignKorea");
    start();
    const BrokenFolder broken(home / "NPKI/yessign/USER");
    EXPECT_EQ(load(), 0);
    EXPECT_EQ(subjects(), Names{"cn=b"});
    EXPECT_EQ(log(), (Names{unreadRecord, unreadRecord})); // both passes
}

TEST_F(Listing, FolderThatBreaksBetweenThePasses)
{
    addNpki("a");
    start();
    std::unique_ptr<BrokenFolder> broken;
    doubles::answer("HVTK_CERT_Unload",
        [&](const doubles::Call&) { return broken = std::make_unique<BrokenFolder>(home / "NPKI"), 0; });
    EXPECT_EQ(load(), 1123);
    EXPECT_EQ(count(), 0);
}

TEST_F(Listing, UnreadableCertificatesAreSkippedAndLogged)
{
    addNpki("good", {{"subject", "cn=good"}});
    fs::create_directories(home / "NPKI/yessign/USER/empty");
    writeFile(home / "NPKI/yessign/USER/nokey/signCert.der", fake::certificate());
    start();
    ASSERT_EQ(load(), 0);
    EXPECT_EQ(subjects(), Names{"cn=good"});
    const Names records = log();
    EXPECT_EQ(std::count(records.begin(), records.end(),
                  "CLoadDISK::ParsingCert() >> MediaDiskReadFil() : 3001 (Msg : words of the toolkit)"),
        2); // both passes
    EXPECT_EQ(std::count(records.begin(), records.end(),
                  "CLoadDISK::ParsingCert() >> MediaDiskReadFile() : 3001 (Msg : words of the toolkit)"),
        2);
    EXPECT_EQ(records.size(), 4u);
}

TEST_F(Listing, OperationsOnTheWholeList)
{
    addNpki("a", {{"subject", "cn=a"}});
    CLoadDISK loader(1, library.c_str());
    tagCERTINFO record{};
    record.nPKIType = 2;
    loader.CopyCertInfo(0, &record); // no list yet: nothing happens
    loader.CopyCertInfo(0, nullptr);
    EXPECT_EQ(loader.count(), 0);
    CLoadDISK::ClearCertInfo(&record);
    EXPECT_EQ(record.nPKIType, 0);
}

TEST_F(Listing, FolderThatMemoryDoesNotSufficeForIsNotOneWithoutCertificates)
{
    addNpki("a", {{"subject", "cn=a"}});
    start();
    lacksMemory = true;
    EXPECT_EQ(load(), 1000);
    lacksMemory = false;
    EXPECT_EQ(load(), 0);
    EXPECT_EQ(count(), 1);
}

} // namespace

extern "C" DIR* __wrap_opendir(const char* path)
{
    if (!lacksMemory)
        return __real_opendir(path);
    errno = ENOMEM;
    return nullptr;
}

extern "C" dirent* __wrap_readdir(DIR* folder)
{
    const std::string opened = "/proc/self/fd/" + std::to_string(dirfd(folder));
    if (brokenFolder.empty() || fs::read_symlink(opened).string().rfind(brokenFolder.string(), 0) != 0)
        return __real_readdir(folder);
    errno = EIO;
    return nullptr;
}
