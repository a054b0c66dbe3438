// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "tests/foundation/support.h"

#include <sigildesk/util.h>

#include <algorithm>
#include <climits>
#include <cstring>
#include <memory>
#include <set>
#include <sys/stat.h>
#include <vector>

namespace {

class Drives : public EnvironmentTest {
protected:
    void mount(const std::string& table) { sigil::environment().mountTable = folder.write("mtab", table); }

    static int count()
    {
        int number = 77;
        EXPECT_EQ(CUtil().GetRemDriveCount(false, &number), 0);
        int again = 77;
        EXPECT_EQ(CUtil().GetRemDriveCount(true, &again), 0);
        EXPECT_EQ(again, number); // the flag is not used
        return number;
    }
    static std::vector<tagDRIVEINFO> drives()
    {
        std::vector<tagDRIVEINFO> list(static_cast<std::size_t>(count()));
        EXPECT_EQ(CUtil().GetRemDriveInfo(false, list.data()), 0);
        return list;
    }
};

} // namespace

TEST_F(Drives, RemovableDisksInTheOrderOfTheTable)
{
    mount("/dev/sda1 / ext4 rw 0 0\n"
          "/dev/sdb1 /media/user/USB vfat rw 0 0\n"
          "proc /proc proc rw 0 0\n"
          "/dev/sdc1 /media/user/BACKUP fuseblk rw 0 0\n"
          "# /dev/sdx /media/comment vfat rw 0 0\n"
          "/dev/sdd1 /mnt/My\\040Stick VFAT rw 0 0\n");
    struct Case {
        const char* path;
        const char* name;
        const char* display;
    };
    const Case expected[] = {
        {"/media/user/USB", "/USB", "/USB (/media/user/USB)"},
        {"/media/user/BACKUP", "/BACKUP", "/BACKUP (/media/user/BACKUP)"},
        {"/mnt/My Stick", "/My Stick", "/My Stick (/mnt/My Stick)"},
    };
    const std::vector<tagDRIVEINFO> list = drives();
    ASSERT_EQ(list.size(), std::size(expected));
    for (std::size_t i = 0; i < list.size(); ++i) {
        EXPECT_EQ(list[i].nIndex, static_cast<int>(i));
        EXPECT_STREQ(list[i].szMountDir, expected[i].path);
        EXPECT_STREQ(list[i].szName, expected[i].name);
        EXPECT_STREQ(list[i].szDisplay, expected[i].display);
    }
}

TEST_F(Drives, NamesOfUnusualMountPoints)
{
    struct Case {
        const char* mountPoint;
        const char* name;
    };
    for (const Case& c : {Case{"/", "/"}, {"/mnt/", "/"}, {"relative", "relative"}, {"/a", "/a"}}) {
        mount(std::string("/dev/sdb1 ") + c.mountPoint + " vfat rw 0 0\n");
        const std::vector<tagDRIVEINFO> list = drives();
        ASSERT_EQ(list.size(), 1u);
        EXPECT_STREQ(list[0].szMountDir, c.mountPoint);
        EXPECT_STREQ(list[0].szName, c.name);
    }
}

TEST_F(Drives, LongMountPointsAreCutToTheirFields)
{
    const std::string path = "/" + std::string(1000, 'p');
    mount("/dev/sdb1 " + path + " vfat rw 0 0\n");
    const std::vector<tagDRIVEINFO> list = drives();
    ASSERT_EQ(list.size(), 1u);
    EXPECT_EQ(list[0].szMountDir, path.substr(0, 259));
    EXPECT_EQ(list[0].szName, path.substr(0, 259));
    EXPECT_EQ(list[0].szDisplay, path.substr(0, 259));
}

TEST_F(Drives, NoneInAnEmptyOrStrangeTable)
{
    for (const char* table : {"", "\n\n", "garbage", "one two", "a b vfatx rw 0 0\n", "a b ntfs rw 0 0\n"}) {
        mount(table);
        EXPECT_EQ(count(), 0) << table;
    }
}

TEST_F(Drives, ATableThatCannotBeReadLeavesTheCount)
{
    sigil::environment().mountTable = folder.path("missing");
    EXPECT_EQ(count(), 77);
    tagDRIVEINFO drive;
    std::memset(&drive, '#', sizeof drive);
    EXPECT_EQ(CUtil().GetRemDriveInfo(false, &drive), 0);
    EXPECT_EQ(drive.szName[0], '#');
}

TEST_F(Drives, TheCountOfAnObjectBoundsItsList)
{
    const std::string one = "/dev/sdb1 /media/one vfat rw 0 0\n";
    const std::string two = one + "/dev/sdc1 /media/two vfat rw 0 0\n";
    const auto listed = [](CUtil& util) {
        tagDRIVEINFO list[3]{};
        EXPECT_EQ(util.GetRemDriveInfo(false, list), 0);
        return std::count_if(std::begin(list), std::end(list), [](const auto& d) { return d.szMountDir[0] != 0; });
    };
    CUtil util;
    int number = 77;
    mount(two);
    EXPECT_EQ(listed(util), 2) << "nothing was promised";
    mount(one);
    util.GetRemDriveCount(false, &number);
    mount(two);
    EXPECT_EQ(listed(util), 1);
    EXPECT_EQ(listed(util), 1);
    CUtil copy(util);
    EXPECT_EQ(listed(copy), 1);
    util.GetRemDriveCount(false, nullptr); // tells nobody
    EXPECT_EQ(listed(util), 1);
    util.GetRemDriveCount(false, &number);
    EXPECT_EQ(listed(util), 2);
    mount("");
    util.GetRemDriveCount(false, &number);
    mount(one);
    EXPECT_EQ(listed(util), 0);
}

TEST_F(Drives, ACountThatCannotBeMadePromisesNothing)
{
    const std::string table = folder.write("table", "/dev/sdb1 /one vfat rw 0 0\n/dev/sdc1 /two vfat rw 0 0\n");
    CUtil util;
    int number = 0;
    for (const char* before : {"at first", "after a good count"}) {
        SCOPED_TRACE(before);
        tagDRIVEINFO list[2]{};
        sigil::environment().mountTable = folder.path("missing");
        util.GetRemDriveCount(false, &number);
        sigil::environment().mountTable = table;
        util.GetRemDriveInfo(false, list);
        EXPECT_STREQ(list[0].szMountDir, "") << "the host's number may be anything";
        util.GetRemDriveCount(false, &number);
        util.GetRemDriveInfo(false, list);
        EXPECT_STREQ(list[1].szMountDir, "/two") << "the next good count counts";
    }
}

TEST_F(Drives, NullOutputsAreLeftOut)
{
    mount("/dev/sdb1 /mnt vfat rw 0 0\n");
    EXPECT_EQ(CUtil().GetRemDriveCount(false, nullptr), 0);
    EXPECT_EQ(CUtil().GetRemDriveInfo(false, nullptr), 0);
}

TEST_F(Drives, TheHardDisk)
{
    folder.write("KOR.ini", "[UserInterface]\nDLG_BUTTONMEDIA_HDD=Hard disk\n");
    CUtil util(1, Arg(folder.path()));
    tagDRIVEINFO drive;
    std::memset(&drive, '#', sizeof drive);
    int number = 77;
    EXPECT_EQ(util.GetDriveInfo(false, false, &number, &drive), 0);
    EXPECT_EQ(number, 77);
    EXPECT_EQ(drive.nIndex, 0);
    EXPECT_STREQ(drive.szMountDir, "/");
    EXPECT_STREQ(drive.szName, "Hard disk");
    EXPECT_STREQ(drive.szDisplay, "Hard disk (/)");

    CUtil english(2, Arg(folder.path())); // without a language file the name is empty
    EXPECT_EQ(english.GetDriveInfo(false, true, nullptr, &drive), 0);
    EXPECT_STREQ(drive.szDisplay, " (/)");
    EXPECT_EQ(util.GetDriveInfo(false, false, nullptr, nullptr), 0);
}

TEST_F(Drives, TheRemovableDiskIsOnlyCounted)
{
    CUtil util;
    tagDRIVEINFO drive;
    std::memset(&drive, '#', sizeof drive);
    int number = 77;
    EXPECT_EQ(util.GetDriveInfo(true, false, &number, &drive), 0);
    EXPECT_EQ(number, 1);
    EXPECT_EQ(drive.szName[0], '#');
    EXPECT_EQ(util.GetDriveInfo(true, false, nullptr, nullptr), 0);
}

TEST_F(Drives, FreeSpaceIsNotReported)
{
    for (int kind : {0, 1, 2}) {
        std::string out(261, '#');
        long long bytes = 77;
        EXPECT_EQ(CUtil().GetFreeDisk(kind, out.data(), &bytes), 0);
        EXPECT_EQ(bytes, 0);
        EXPECT_EQ(out, kind == 1 ? std::string(260, '\0') + "#" : std::string(261, '#'));
    }
    EXPECT_EQ(CUtil().GetFreeDisk(1, nullptr, nullptr), 0);
}

namespace {

class Folders : public testing::Test {
protected:
    struct Content {
        std::multiset<std::string> files;
        std::multiset<std::string> folders;
        bool operator==(const Content&) const = default;
    };
    Content list(const std::string& path, const char* ext) const
    {
        int folderCount = 77;
        int fileCount = 77;
        EXPECT_EQ(
            CUtil().GetFolderFilePath(true, Arg(path), Arg(ext), &folderCount, &fileCount, nullptr, nullptr), 0);
        std::vector<tagEXPFILELIST> files(static_cast<std::size_t>(fileCount));
        std::vector<tagEXPFILELIST> folders(static_cast<std::size_t>(folderCount));
        EXPECT_EQ(CUtil().GetFolderFilePath(
                      false, Arg(path), Arg(ext), &folderCount, &fileCount, files.data(), folders.data()),
            0);
        Content content;
        for (const tagEXPFILELIST& entry : files)
            content.files.insert(entry.szName);
        for (const tagEXPFILELIST& entry : folders)
            content.folders.insert(entry.szName);
        return content;
    }
    void touch(const std::string& name) const { folder.write(name, ""); }

    TemporaryFolder folder;
};

} // namespace

TEST_F(Folders, ListsFoldersAndFilesOfAnExtension)
{
    for (const char* name : {"a.PFX", "b.pfx", "c.pfx.bak", "pfx", "e.p12", ".pfx", "f.pfxx", "g."})
        touch(name);
    std::filesystem::create_directory(folder.path("d.pfx"));
    std::filesystem::create_directory(folder.path("sub"));
    std::filesystem::create_symlink(folder.path("a.PFX"), folder.path("link.pfx"));
    std::filesystem::create_directory_symlink(folder.path("sub"), folder.path("sublink"));
    std::filesystem::create_symlink("nowhere", folder.path("dangling.pfx"));
    ASSERT_EQ(mkfifo(folder.path("pipe.pfx").c_str(), 0600), 0);

    const std::multiset<std::string> folders{"d.pfx", "sub"};
    EXPECT_EQ(list(folder.path(), "pfx"), (Content{{"a.PFX", "b.pfx", ".pfx"}, folders}));
    EXPECT_EQ(list(folder.path(), "P12"), (Content{{"e.p12"}, folders}));
    EXPECT_EQ(list(folder.path(), ""), (Content{{"g."}, folders}));
    EXPECT_EQ(list(folder.path(), nullptr), (Content{{"g."}, folders}));
    EXPECT_EQ(list(folder.path(), "pfx.bak"), (Content{{}, folders}));
    EXPECT_EQ(list(folder.path("sub"), "pfx"), Content{});
}

TEST_F(Folders, NamesAreGivenInCp949)
{
    touch("\xED\x99\x8D.pfx");
    touch("\xC3\xA9.pfx");
    touch("\xFF.pfx");
    std::filesystem::create_directory(folder.path("\xEA\xB0\x80"));
    EXPECT_EQ(list(folder.path(), "pfx"), (Content{{"\xC8\xAB.pfx", "??.pfx", "?.pfx"}, {"\xB0\xA1"}}));
}

TEST_F(Folders, ALongNameFits)
{
    touch(std::string(251, 'n') + ".pfx");
    EXPECT_EQ(list(folder.path(), "pfx"), (Content{{std::string(251, 'n') + ".pfx"}, {}}));
}

TEST_F(Folders, AFolderThatCannotBeOpenedIsEmpty)
{
    touch("file");
    EXPECT_EQ(list(folder.path("missing"), "pfx"), Content{});
    EXPECT_EQ(list(folder.path("file"), "pfx"), Content{});
    int folderCount = 77;
    int fileCount = 77;
    CUtil().GetFolderFilePath(true, nullptr, Arg("pfx"), &folderCount, &fileCount, nullptr, nullptr);
    EXPECT_EQ(folderCount, 0);
    EXPECT_EQ(fileCount, 0);
    folderCount = fileCount = 5; // listing, it leaves the counts alone
    CUtil().GetFolderFilePath(
        false, Arg(folder.path("missing")), Arg("pfx"), &folderCount, &fileCount, nullptr, nullptr);
    EXPECT_EQ(folderCount, 5);
    EXPECT_EQ(fileCount, 5);
}

TEST_F(Folders, EntriesThatCameAfterCountingDoNotOverflowTheArrays)
{
    for (int i = 0; i < 5; ++i) {
        touch(std::to_string(i) + ".pfx");
        std::filesystem::create_directory(folder.path("folder" + std::to_string(i)));
    }
    int room = 2;
    std::vector<tagEXPFILELIST> files(3);
    std::vector<tagEXPFILELIST> folders(3);
    CUtil().GetFolderFilePath(false, Arg(folder.path()), Arg("pfx"), &room, &room, files.data(), folders.data());
    for (const auto& entries : {files, folders}) {
        EXPECT_STRNE(entries[1].szName, "");
        EXPECT_STREQ(entries[2].szName, "");
    }
    EXPECT_EQ(room, 2);
    for (int noBound : {0, -1}) {
        files.assign(5, {});
        folders.assign(5, {});
        int count = noBound;
        CUtil().GetFolderFilePath(
            false, Arg(folder.path()), Arg("pfx"), &count, &count, files.data(), folders.data());
        EXPECT_STRNE(files[4].szName, "") << noBound;
        EXPECT_STRNE(folders[4].szName, "") << noBound;
        EXPECT_EQ(count, noBound);
    }
    CUtil().GetFolderFilePath(false, Arg(folder.path()), Arg("pfx"), nullptr, nullptr, nullptr, nullptr);
    CUtil().GetFolderFilePath(true, Arg(folder.path()), Arg("pfx"), nullptr, nullptr, nullptr, nullptr);
}

TEST(InstallText, IsSplitAtItsBars)
{
    struct Case {
        const char* text;
        int size;
        const char* url;
        int first;
        int second;
    };
    const Case cases[] = {
        {"http://host/x|3|7", 64, "http://host/x", 3, 7},
        {"http://host/x|3|7", 8, "http://", 3, 7},
        {"url|12|34|56", 64, "url", 12, 34},
        {"url|3", 64, "url", 77, 77},
        {"url|", 64, "url", 77, 77},
        {"url||", 64, "url", 0, 0},
        {"|1|2", 64, "", 1, 2},
        {"url| 5x |-6y", 64, "url", 5, -6},
        {"url|99999999999|-99999999999", 64, "url", INT_MAX, INT_MIN},
        // Without a bar only six characters are kept.
        {"0123456789", 64, "012345", 77, 77},
        {"01234", 64, "01234", 77, 77},
        {"0123456789", 4, "012", 77, 77},
        {"", 64, "", 77, 77},
        {nullptr, 64, "", 77, 77},
        {"url|1|2", 0, "old", 1, 2},
        {"0123456789", -1, "old", 77, 77},
    };
    for (const Case& c : cases) {
        char url[64] = "old";
        int first = 77;
        int second = 77;
        EXPECT_EQ(CUtil().USIMInstallURLParsing(Arg(c.text), c.size, url, &first, &second), 0);
        EXPECT_STREQ(url, c.url);
        EXPECT_EQ(first, c.first);
        EXPECT_EQ(second, c.second);
    }
    EXPECT_EQ(CUtil().USIMInstallURLParsing(Arg("url|1|2"), 10, nullptr, nullptr, nullptr), 0);
}
