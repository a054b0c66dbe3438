// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Where the pairs of a certificate go, and what stays when they cannot.

#include "jobs/pairs.h"

#include "jobs/failure.h"
#include "jobs/read_file.h"
#include "tests/jobs/failing_calls.h"
#include "tests/support/files.h"

#include <sigildesk/codes.h>

#include <gtest/gtest.h>

#include <sys/resource.h>

#include <cerrno>
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

/** The last part of what the failure says. */
std::string reasonOf(const std::function<void()>& work)
{
    try {
        work();
        return {};
    } catch (const host::Failure& failure) {
        const std::string message = failure.message(host::Language::English);
        return message.substr(message.rfind(": ") + 2);
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
    EXPECT_EQ(reasonOf([&] { host::changePairs(blocked, fresh); }), host::reason(EBUSY))
        << "not that there are no notes of an interrupted change";
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

class FiledPairs : public ChangedPairs {
protected:
    static host::PairFiles in(const std::string& place)
    {
        return {place + "/signCert.der", place + "/signPri.key", place + "/kmCert.der", place + "/kmPri.key"};
    }
    std::string file(const std::string& place) const
    {
        return reasonOf([&] { host::filePairs(in(place), fresh, false); });
    }
};

TEST_F(FiledPairs, MakeTheirFoldersAlsoOnADiskThatFlushesNone)
{
    const FailingCall call("fsync", EINVAL, 1);
    EXPECT_EQ(file(folder.path("new/inner")), "");
    EXPECT_TRUE(call.haveFailed());
    EXPECT_EQ(readFile(folder.path("new/inner/kmPri.key")), "new km key");
}

TEST_F(FiledPairs, LeaveNoFolderWhereTheDiskFails)
{
    const FailingCall call("fsync", EIO, 1);
    EXPECT_EQ(file(folder.path("new")), host::reason(EIO));
    EXPECT_FALSE(fs::exists(folder.path("new")));
}

TEST_F(FiledPairs, LeaveNoFolderWhereNoFileCanBeOpened)
{
    rlimit before{};
    ASSERT_EQ(getrlimit(RLIMIT_NOFILE, &before), 0);
    rlimit none = before;
    none.rlim_cur = 0;
    ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &none), 0);
    const std::string told = file(folder.path("new"));
    setrlimit(RLIMIT_NOFILE, &before);
    EXPECT_EQ(told, host::reason(EMFILE));
    EXPECT_FALSE(fs::exists(folder.path("new")));
}

TEST_F(FiledPairs, GoNowhereByALinkThatLeadsNowhere)
{
    fs::create_symlink("none", folder.path("link"));
    EXPECT_EQ(file(folder.path("link")), host::reason(ENOENT));
    EXPECT_TRUE(fs::is_symlink(folder.path("link")));
    EXPECT_FALSE(fs::exists(folder.path("none")));
}

TEST_F(FiledPairs, MayBeNamedFromTheWorkingFolder)
{
    const fs::path before = fs::current_path();
    fs::current_path(folder.path());
    const std::string told = file("new/inner");
    fs::current_path(before);
    EXPECT_EQ(told, "");
    EXPECT_EQ(readFile(folder.path("new/inner/signPri.key")), "new key");
}

TEST_F(ChangedPairs, LeaveTheirFolderWhenTheyGo)
{
    EXPECT_EQ(nameOfFailure([&] { host::changePairs(files, {}); }), "");
    EXPECT_FALSE(fs::exists(folder.path("pair")));
}
