// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Where the pairs of a certificate go, and what stays when they cannot.

#include "jobs/pairs.h"

#include "jobs/failure.h"
#include "tests/support/files.h"

#include <sigildesk/codes.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <string>

namespace fs = std::filesystem;

namespace {

std::string nameOfFailure(const std::function<void()>& work)
{
    try {
        work();
        return {};
    } catch (const host::Failure& failure) {
        return failure.name();
    }
}

host::Certificate holder(const std::string& subject)
{
    host::Certificate certificate;
    certificate.family = SIGIL_FAMILY_NPKI;
    certificate.subject = subject;
    return certificate;
}

} // namespace

TEST(AKeyManagementCertificate, IsKnownByItsName)
{
    for (const char* name : {"kmCert.der", "/a/folder/KMCERT.DER", "holder_env.cer"})
        EXPECT_TRUE(host::isKeyManagement(name)) << name;
    for (const char* name : {"signCert.der", "xkmCert.der", "holder_sig.cer", "cer", ""})
        EXPECT_FALSE(host::isKeyManagement(name)) << name;
}

TEST(ADisk, IsTheHomeFolderOrOneThatIsThere)
{
    const TemporaryFolder folder;
    EXPECT_EQ(host::diskAt("").medium, SIGIL_MEDIUM_HARD_DISK);
    EXPECT_EQ(host::diskAt(folder.path()).base, folder.path());
    EXPECT_EQ(nameOfFailure([&] { host::diskAt(folder.path("none")); }), "not_found");
}

TEST(APlace, IsThatOfTheFamilyAndNoLongerThanAListReads)
{
    const host::Disk disk{"/mnt", SIGIL_MEDIUM_REMOVABLE_DISK};
    const host::PairFiles files = host::placeFor(holder("cn=a/b,o=yessign,c=kr"), disk);
    EXPECT_EQ(fs::path(files.certificate).filename(), "signCert.der");
    EXPECT_EQ(fs::path(files.certificate).parent_path().filename(), "cn=a_b,o=yessign,c=kr");
    EXPECT_EQ(fs::path(files.kmKey).filename(), "kmPri.key");
    EXPECT_EQ(nameOfFailure([&] { host::placeFor(holder("cn=" + std::string(300, 'a')), disk); }), "path_too_long");
    host::Certificate stranger = holder("cn=a");
    stranger.family = 0;
    EXPECT_EQ(nameOfFailure([&] { host::placeFor(stranger, disk); }), "no_place");
}

class ChangedPairs : public testing::Test {
protected:
    ChangedPairs()
    {
        writeFile(files.certificate, "old certificate");
        writeFile(files.key, "old key");
    }
    std::string change(const host::PairFiles& to) const
    {
        return nameOfFailure([&] { host::changePairs(to, fresh); });
    }
    void expectOld() const
    {
        EXPECT_EQ(readFile(files.certificate), "old certificate");
        EXPECT_EQ(readFile(files.key), "old key");
        EXPECT_EQ(std::distance(fs::directory_iterator(fs::path(files.key).parent_path()), {}), 2)
            << "and nothing else";
    }

    const TemporaryFolder folder;
    const host::PairFiles files{folder.path("pair/signCert.der"), folder.path("pair/signPri.key"),
        folder.path("pair/kmCert.der"), folder.path("pair/kmPri.key")};
    const host::PairContents fresh{"new certificate", "new key", "new km certificate", "new km key"};
};

TEST_F(ChangedPairs, AreAllNew)
{
    EXPECT_EQ(change(files), "");
    EXPECT_EQ(readFile(files.certificate) + readFile(files.key), "new certificatenew key");
    EXPECT_EQ(readFile(files.kmCertificate) + readFile(files.kmKey), "new km certificatenew km key");
}

TEST_F(ChangedPairs, StayWhenOneOfThemHasNoFolder)
{
    host::PairFiles apart = files;
    apart.kmCertificate = folder.path("none/kmCert.der");
    EXPECT_EQ(change(apart), "pair_not_changed");
    expectOld();
    apart = files;
    apart.kmKey = folder.path("none/kmPri.key");
    EXPECT_EQ(change(apart), "pair_not_changed");
    expectOld();
}

TEST_F(ChangedPairs, StayWhenAFolderIsInTheWay)
{
    host::PairFiles blocked = files;
    blocked.kmCertificate = folder.path();
    EXPECT_EQ(change(blocked), "pair_not_changed");
    expectOld();
}

TEST_F(ChangedPairs, AreNotFiledOverOthersUnlessAsked)
{
    EXPECT_EQ(nameOfFailure([&] { host::filePairs(files, fresh, false); }), "file_exists");
    expectOld();
    EXPECT_EQ(host::filePairs(files, {"new certificate", "new key", {}, {}}, true).kmKey, "");
    EXPECT_EQ(readFile(files.key), "new key");
}

TEST_F(ChangedPairs, AreNotFiledBelowAFile)
{
    const host::PairFiles below{files.key + "/a/signCert.der", files.key + "/a/signPri.key",
        files.key + "/a/kmCert.der", files.key + "/a/kmPri.key"};
    EXPECT_EQ(nameOfFailure([&] { host::filePairs(below, fresh, false); }), "pair_not_changed");
    expectOld();
}

TEST_F(ChangedPairs, LeaveTheirFolderWhenTheyGo)
{
    EXPECT_EQ(nameOfFailure([&] { host::changePairs(files, {}); }), "");
    EXPECT_FALSE(fs::exists(folder.path("pair")));
}
