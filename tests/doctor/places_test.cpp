// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Filters, media, paths, and what the list depends on.

#include "doctor/file_facts.h"
#include "doctor/hearing.h"
#include "tests/doctor/refusal.h"
#include "tests/doctor/sick_store.h"

#include <gmock/gmock.h>

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string>

namespace fs = std::filesystem;

namespace {

class Places : public SickStore {
protected:
    const std::string user = "NPKI/yessign/USER/";
};

template <std::size_t N>
void set(char (&field)[N], const char* text)
{
    std::snprintf(field, N, "%s", text);
}

TEST_F(Places, ExpiredOnesAreSaidToBeLeftOut)
{
    pair(user + "old", expired());
    pair(user + "new");
    EXPECT_EQ(said(sigil::examineHome(question), user + "old/signCert.der"), "listed");
    question.wanted.bExcludeExpired = 1;
    const sigil::StoreReport report = sigil::examineHome(question);
    EXPECT_EQ(said(report, user + "old/signCert.der"), "expired_left_out");
    EXPECT_EQ(said(report, user + "new/signCert.der"), "listed");
    EXPECT_EQ(listedBy(report), listed());
}

TEST_F(Places, FiltersOfTheList)
{
    pair(user + "a");
    const auto rule = [&] {
        const sigil::StoreReport report = sigil::examineHome(question);
        EXPECT_EQ(listedBy(report), listed());
        return said(report, user + "a/signCert.der");
    };
    set(question.wanted.szPolicyIDs, "9 9|");
    EXPECT_EQ(rule(), "policy_not_wanted");
    set(question.wanted.szSerialNum, "77");
    EXPECT_EQ(rule(), "serial_not_wanted");
    set(question.wanted.szSubjectDN, "cn=other");
    EXPECT_EQ(rule(), "subject_not_wanted");
    question.wanted.nKeyPairType = SIGIL_KEY_PAIR_BOTH;
    EXPECT_EQ(rule(), "km_pair_missing");
    question.wanted.nPKITypes = SIGIL_FAMILY_GPKI;
    EXPECT_EQ(rule(), "family_not_wanted");
}

TEST_F(Places, AFurtherChoiceAmongWhatIsListed)
{
    pair(user + "a");
    question.leftOut = [](const tagCERTINFO&) { return "not_expired"; };
    const sigil::StoreReport report = sigil::examineHome(question);
    EXPECT_EQ(said(report, user + "a/signCert.der"), "not_expired");
    EXPECT_FALSE(report.findings.at(0).listed);
}

TEST_F(Places, ARemovableDisk)
{
    pair("../disk/NPKI/KICA/USER/a");
    pair("../disk/Halvard/TALOCERT/TALO/b");
    pair("../disk/TALO/User/c");
    const std::string disk = m_folder.path("disk");
    const sigil::StoreReport report = sigil::examineDisk(question, disk);
    EXPECT_EQ(said(report, fs::path(disk) / "NPKI/KICA/USER/a/signCert.der"), "listed");
    EXPECT_EQ(said(report, fs::path(disk) / "Halvard/TALOCERT/TALO/b/signCert.der"), "family_not_on_medium");
    EXPECT_EQ(said(report, fs::path(disk) / "TALO/User/c/signCert.der"), "family_not_on_medium");
    EXPECT_EQ(listedBy(report), listed(disk));
}

TEST_F(Places, SearchedFoldersAreTold)
{
    pair(user + "a");
    pair(user + "b");
    fs::remove(home / user / "b/signPri.key");
    const sigil::StoreReport report = sigil::examineHome(question);
    EXPECT_EQ(report.folders.size(), 12U);
    for (const sigil::SearchedPlace& place : report.folders) {
        const bool there = place.path == (home / user).string();
        EXPECT_EQ(place.error == 0, there) << place.path;
        EXPECT_EQ(place.candidates, there ? 2 : 0);
        EXPECT_EQ(place.listed, there ? 1 : 0);
    }
}

TEST_F(Places, AnEmptyStoreHasNothingAmiss)
{
    const sigil::StoreReport report = sigil::examineHome(question);
    EXPECT_EQ(report.code, SIGIL_NO_CERTIFICATE);
    EXPECT_TRUE(report.findings.empty());
}

TEST_F(Places, APathIsJudgedWithinItsStore)
{
    pair(user + "a");
    pair(user + "b");
    fs::remove(home / user / "b/signPri.key");
    for (const fs::path& asked : {home / user / "b", home / user / "b/signCert.der"}) {
        const sigil::StoreReport report = sigil::examinePath(question, asked.string());
        ASSERT_EQ(report.findings.size(), 1U) << asked;
        EXPECT_EQ(report.findings[0].rule, "key_missing");
    }
    EXPECT_EQ(sigil::examinePath(question, (home / "NPKI").string()).findings.size(), 2U);
    EXPECT_EQ(sigil::examinePath(question, home.string() + "/").findings.size(), 2U);
}

TEST_F(Places, AFileIsJudgedWithTheOthersOfItsPair)
{
    const fs::path folder = shared("GPKI/Certificate/class2", "officer");
    shared("GPKI/Certificate/class2", "other");
    writeFile(folder / "a.cer", good().signCert);
    writeFile(folder / "officer_env.cer", good().kmCert);
    sigil::StoreReport report = sigil::examinePath(question, (folder / "officer_sig.key").string());
    ASSERT_EQ(report.findings.size(), 2U);
    EXPECT_EQ(said(report, folder / "officer_sig.cer"), "listed");
    EXPECT_EQ(said(report, folder / "officer_env.cer"), "km_key_missing, listed");
    report = sigil::examinePath(question, (folder / "a.cer").string());
    ASSERT_EQ(report.findings.size(), 1U);
    EXPECT_EQ(said(report, folder / "a.cer"), "file_name_not_known");
}

TEST_F(Places, APathThatIsNotThere)
{
    const sigil::StoreReport report = sigil::examinePath(question, m_folder.path("gone/away"));
    EXPECT_TRUE(report.findings.empty());
    for (const sigil::SearchedPlace& place : report.folders)
        EXPECT_EQ(place.error, ENOENT) << place.path;
}

TEST_F(Places, AStoreWithTwoWaysIntoItIsListedTwice)
{
    pair(user + "a");
    fs::remove(pair(user + "b") / "signCert.der");
    fs::create_directory_symlink("yessign", home / "NPKI/KICA");
    const sigil::StoreReport report = sigil::examineHome(question);
    EXPECT_EQ(report.findings.size(), 4U);
    EXPECT_EQ(listedBy(report), listed());
    for (const char* authority : {"NPKI/yessign/USER/", "NPKI/KICA/USER/"})
        EXPECT_EQ(said(report, authority + std::string("a/signCert.der")), "listed");
    EXPECT_EQ(said(report, "NPKI/KICA/USER/b/signPri.key"), "certificate_missing");
    EXPECT_EQ(said(report, "NPKI/yessign/USER/b/signCert.der"), "certificate_missing");
}

TEST_F(Places, APairThatCameAfterItsFolderWasSearched)
{
    pair("NPKI/KICA/USER/a");
    question.leftOut = [this](const tagCERTINFO&) -> const char* {
        pair(user + "late");
        return nullptr;
    };
    const sigil::StoreReport report = sigil::examineHome(question);
    EXPECT_EQ(report.code, 0);
    EXPECT_EQ(said(report, user + "late/signCert.der"), "folder_not_searched");
}

TEST_F(Places, APathWithStoresBelowIsADisk)
{
    pair("../disk/NPKI/KICA/USER/a");
    const sigil::StoreReport report = sigil::examinePath(question, m_folder.path("disk"));
    EXPECT_EQ(said(report, m_folder.path("disk/NPKI/KICA/USER/a/signCert.der")), "listed");
}

TEST_F(Places, AHomeNamedLikeAStoreIsNoStore)
{
    pair("../gpki/NPKI/KICA/USER/a");
    const std::string path = m_folder.path("gpki/NPKI/KICA/USER/a");
    EXPECT_EQ(said(sigil::examinePath(question, path), path + "/signCert.der"), "listed");
}

TEST_F(Places, OutsideOfAllStores)
{
    pair("../elsewhere/a");
    pair("../elsewhere/damaged");
    writeFile(m_folder.path("elsewhere/damaged/signCert.der"), good().signCert.substr(0, 100));
    shared("../elsewhere", "c");
    const std::string folder = m_folder.path("elsewhere");
    sigil::StoreReport report = sigil::examinePath(question, folder);
    EXPECT_EQ(said(report, folder + "/a/signCert.der"), "outside_store");
    EXPECT_EQ(said(report, folder + "/damaged/signCert.der"), "certificate_cut_short");
    EXPECT_EQ(said(report, folder + "/c_sig.cer"), "outside_store");
    question.wanted.nPKITypes = SIGIL_FAMILY_MPKI;
    report = sigil::examinePath(question, folder + "/a/signCert.der");
    ASSERT_EQ(report.findings.size(), 1U);
    EXPECT_EQ(report.findings[0].rule, "family_differs");
}

TEST_F(Places, OutsideOfAllStoresWithoutAKey)
{
    fs::remove(pair("../elsewhere/a") / "signPri.key");
    fs::remove(pair("../elsewhere/b") / "signPri.key");
    fs::create_directory(m_folder.path("elsewhere/b/signPri.key"));
    const sigil::StoreReport report = sigil::examinePath(question, m_folder.path("elsewhere"));
    EXPECT_EQ(report.findings.size(), 2U);
    for (const char* pair : {"elsewhere/a/signCert.der", "elsewhere/b/signCert.der"})
        EXPECT_EQ(said(report, m_folder.path(pair)), "outside_store");
}

TEST_F(Places, WithoutAToolkitNothingIsListed)
{
    pair(user + "a");
    shared("GPKI/Certificate/class1", "b");
    pair("../elsewhere/c");
    question.libraryFolder = m_folder.path("library");
    fs::create_directory(question.libraryFolder);
    const sigil::StoreReport report = sigil::examineHome(question);
    EXPECT_EQ(report.code, SIGIL_TOOLKIT_NOT_LOADED);
    EXPECT_EQ(said(report, user + "a/signCert.der"), "list_not_built");
    EXPECT_EQ(said(report, "GPKI/Certificate/class1/b_sig.cer"), "list_not_built");
    EXPECT_THAT(finding(report, "list_not_built").detail, testing::HasSubstr("1010"));
    const std::string outside = m_folder.path("elsewhere/c/signCert.der");
    EXPECT_EQ(said(sigil::examinePath(question, outside), outside), "outside_store");
}

// The administrator may read whatever its rights say.
TEST_F(Places, FilesWithoutRights)
{
    const fs::path folder = pair(user + "a");
    fs::permissions(folder / "signPri.key", fs::perms::none);
    const sigil::StoreReport report = sigil::examineHome(question);
    EXPECT_EQ(said(report, folder / "signCert.der"), geteuid() == 0 ? "listed" : "file_unreadable");
    EXPECT_EQ(listedBy(report), listed());
}

TEST_F(Places, AFolderThatCannotBeRead)
{
    const sigil::StoreReport report = sigil::examineDisk(question, m_folder.path("gone"));
    ASSERT_EQ(report.findings.size(), 1U);
    EXPECT_EQ(report.findings[0].rule, "folder_unreadable");
    EXPECT_THAT(report.findings[0].detail, testing::HasSubstr(sigil::currentUser()));
}

TEST_F(Places, AFileInThePlaceOfAFolder)
{
    const sigil::StoreReport report = sigil::examineDisk(question, m_folder.write("file", "no disk"));
    ASSERT_EQ(report.findings.size(), 1U);
    EXPECT_EQ(report.findings[0].rule, "folder_unreadable");
    EXPECT_THAT(report.findings[0].detail, testing::HasSubstr("Not a directory"));
}

TEST_F(Places, AFolderWithoutRights)
{
    const fs::path folder = pair(user + "a").parent_path();
    fs::permissions(folder, fs::perms::owner_all);
    const Refusal refusal(RefusedCall::OpenFolder, folder.string(), EACCES);
    const sigil::StoreReport report = sigil::examineHome(question);
    EXPECT_EQ(report.code, SIGIL_NO_CERTIFICATE);
    ASSERT_EQ(report.findings.size(), 1U);
    EXPECT_EQ(said(report, folder.string()), "folder_unreadable");
    EXPECT_THAT(report.findings[0].detail, testing::HasSubstr(", 0700"));
}

TEST_F(Places, AnItemThatGoesWhileItsFolderIsLookedAt)
{
    pair(user + "a");
    writeFile(home / user / "b/all.pfx", pfx());
    const Refusal refusal(RefusedCall::Status, (home / user / "b/all.pfx").string(), ENOENT);
    const sigil::StoreReport report = sigil::examineHome(question);
    EXPECT_EQ(report.findings.size(), 1U);
    EXPECT_EQ(said(report, user + "a/signCert.der"), "listed");
}

class Unread : public Places {
protected:
    /** What is said of a pair whose certificate at @p path the toolkit did not read, in these words. */
    static sigil::Diagnosis heard(sigil::Drop drop, const fs::path& path, const char* words = "Input/output error",
        const char* call = nullptr)
    {
        tagCERTINFO entry{};
        set(entry.szSignCertPath, path.c_str());
        sigil::ErrorLog log;
        log.because(drop, call ? call : entry.szSignCertPath, 3301, 1122);
        log.text() = const_cast<char*>(words);
        sigil::Hearing hearing(nullptr);
        hearing.judged(entry, 1122, log);
        return hearing.candidates().at(0).diagnosis;
    }
    static std::string why(const fs::path& path)
    {
        const sigil::Diagnosis diagnosis = heard(sigil::Drop::FileNotRead, path);
        return diagnosis.rule->name + std::string(" ") + diagnosis.values.back();
    }

    const fs::path certificate = pair(user + "a") / "signCert.der";
};

TEST_F(Unread, AFileIsSaidToBeSoInTheToolkitsWords)
{
    EXPECT_EQ(why(certificate), "file_unreadable Input/output error");
    fs::create_symlink(certificate, home / "link");
    EXPECT_EQ(why(home / "link"), "file_unreadable Input/output error");
}

TEST_F(Unread, WordsThatAreNoCp949AreToldAsTheyAre)
{
    EXPECT_EQ(heard(sigil::Drop::FileNotRead, certificate, "\xFF\xFF").values.at(2), "\xFF\xFF");
}

TEST_F(Unread, AFileIsSaidToBeMissingBelowAFile)
{
    const fs::path below = certificate / "signCert.der";
    EXPECT_EQ(why(below), "certificate_missing " + below.string());
    EXPECT_EQ(why(home / "gone"), "certificate_missing " + (home / "gone").string());
}

TEST_F(Unread, AFileWhosePathCannotBeFollowed)
{
    fs::create_symlink("circle", home / "circle");
    EXPECT_EQ(why(home / "circle/signCert.der"), "file_unreadable Too many levels of symbolic links");
}

TEST_F(Unread, AFileWithoutRights)
{
    fs::permissions(certificate, fs::perms::owner_write);
    const Refusal refusal(RefusedCall::Access, certificate.string(), EACCES);
    EXPECT_THAT(why(certificate), testing::MatchesRegex("file_unreadable .*, 0200"));
}

TEST_F(Unread, AField)
{
    const sigil::Diagnosis diagnosis =
        heard(sigil::Drop::FieldNotRead, certificate, "no such field", "CertGetUID()");
    EXPECT_STREQ(diagnosis.rule->name, "field_unreadable");
    EXPECT_EQ(diagnosis.values.at(1), "CertGetUID()");
    EXPECT_EQ(diagnosis.values.at(2), "no such field");
}

TEST(FileFacts, OwnerAndRights)
{
    struct stat status { };
    status.st_uid = 0;
    status.st_mode = S_IFREG | 0640;
    EXPECT_THAT(sigil::ownerAndRights(status), testing::EndsWith(", 0640"));
    status.st_uid = 4294967000; // nobody's
    EXPECT_EQ(sigil::ownerAndRights(status), "4294967000, 0640");
    EXPECT_EQ(sigil::plainPath("//a//b/c"), "/a/b/c");
}

class Surroundings : public SickStore {
protected:
    sigil::Check check(const std::string& name)
    {
        for (const sigil::Check& check : sigil::examineSurroundings(question))
            if (check.name == name)
                return check;
        return {};
    }
};

TEST_F(Surroundings, AreInOrder)
{
    for (const sigil::Check& check : sigil::examineSurroundings(question)) {
        EXPECT_TRUE(check.ok) << check.name << ": " << check.detail;
        EXPECT_EQ(check.mend, "") << check.name;
        EXPECT_NE(check.detail, "") << check.name;
    }
}

TEST_F(Surroundings, WithoutALibraryFolder)
{
    question.libraryFolder = m_folder.path("gone");
    for (const char* name : {"library_folder", "toolkit", "list", "settings"}) {
        EXPECT_FALSE(check(name).ok) << name;
        EXPECT_NE(check(name).mend, "") << name;
    }
    EXPECT_THAT(check("toolkit").detail, testing::HasSubstr("1023"));
}

TEST_F(Surroundings, WithoutAPolicyFile)
{
    question.libraryFolder = m_folder.path("library");
    fs::create_directory(question.libraryFolder);
    for (const auto& file : fs::directory_iterator(SIGILDESK_LIBRARY_FOLDER))
        if (file.path().filename() != "Policy_ENG.conf" && file.is_regular_file())
            fs::create_symlink(file.path(), fs::path(question.libraryFolder) / file.path().filename());
    EXPECT_TRUE(check("toolkit").ok);
    EXPECT_FALSE(check("list").ok);
    EXPECT_THAT(check("list").detail, testing::HasSubstr("1100"));
    EXPECT_THAT(check("settings").detail, testing::HasSubstr("Policy_ENG.conf"));
}

TEST_F(Surroundings, HomeFolder)
{
    EXPECT_EQ(check("home_folder").path, home.string());
    fs::remove(home);
    EXPECT_FALSE(check("home_folder").ok);
    EXPECT_NE(check("home_folder").mend, "");
    sigil::environment().homeFolder = [] { return std::string(); };
    EXPECT_FALSE(check("home_folder").ok);
}

/** HOME of the program, which gets its own value back. */
class Home {
public:
    Home()
        : m_old(std::getenv("HOME") ? std::optional<std::string>(std::getenv("HOME")) : std::nullopt)
    {
    }
    ~Home() { set(m_old ? m_old->c_str() : nullptr); }
    Home(const Home&) = delete;
    Home& operator=(const Home&) = delete;

    static void set(const char* value) { value ? setenv("HOME", value, 1) : unsetenv("HOME"); }

private:
    std::optional<std::string> m_old;
};

TEST_F(Surroundings, HomeFolderThatDiffersFromTheEnvironments)
{
    const Home kept;
    for (const char* value : {static_cast<const char*>(nullptr), "", home.c_str()}) {
        Home::set(value);
        EXPECT_EQ(check("home_folder").detail, "Certificates are looked for below " + home.string() + ".");
    }
    Home::set("/elsewhere");
    EXPECT_THAT(check("home_folder").detail, testing::HasSubstr("not below HOME, which is /elsewhere"));
}

TEST_F(Surroundings, ToolkitOfEachKind)
{
    const auto file = [this](int toolkit) {
        question.toolkit = toolkit;
        EXPECT_TRUE(check("toolkit").ok);
        return fs::path(check("toolkit").path).filename();
    };
    EXPECT_EQ(file(SIGIL_TOOLKIT_MAKER), "libHVCToolkitV30.so");
    EXPECT_EQ(file(SIGIL_TOOLKIT_GPKI), "libgpkiapi_v15.so");
}

TEST_F(Surroundings, RemovableDisks)
{
    EXPECT_EQ(check("removable_disk").path, "");
    const std::string disk = m_folder.path("disk");
    fs::create_directory(disk);
    m_folder.write("mtab", "/dev/sdb1 " + disk + " vfat rw 0 0\n");
    EXPECT_EQ(check("removable_disk").path, disk);
    EXPECT_TRUE(check("removable_disk").ok);
    fs::remove(disk);
    EXPECT_FALSE(check("removable_disk").ok);
}

} // namespace
