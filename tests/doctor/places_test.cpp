// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Filters, media, paths, and what the list depends on.

#include "doctor/file_facts.h"
#include "doctor/hearing.h"
#include "tests/doctor/sick_store.h"

#include <gmock/gmock.h>

#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
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

TEST_F(Places, WithoutAToolkitNothingIsListed)
{
    pair(user + "a");
    question.libraryFolder = m_folder.path("library");
    fs::create_directory(question.libraryFolder);
    const sigil::StoreReport report = sigil::examineHome(question);
    EXPECT_EQ(report.code, SIGIL_TOOLKIT_NOT_LOADED);
    EXPECT_EQ(said(report, user + "a/signCert.der"), "list_not_built");
    EXPECT_THAT(finding(report, "list_not_built").detail, testing::HasSubstr("1010"));
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
    sigil::environment().homeFolder = [] { return std::string(); };
    EXPECT_FALSE(check("home_folder").ok);
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
