// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Which media may be chosen, what is listed of them, and the removable disks of the machine.

#include "tests/certlist/scripted.h"

namespace fs = std::filesystem;

namespace {

using Media = Scripted;

TEST_F(Media, MediaTable)
{
    addNpki("a");
    start();
    struct Row {
        int medium, set, load;
    };
    const Row rows[] = {{0, 0, 1001}, {1, 0, 0}, {2, 0, 1115}, {6, 0, 0}, {7, 0, 0}, {8, 0, 1001}, {-1, 0, 1001}};
    for (const Row& row : rows) {
        EXPECT_EQ(CLP_SetMediaType(clp, row.medium, Text(disk.string()), 0), row.set) << row.medium;
        EXPECT_EQ(CLP_LoadCertList(clp), row.load) << row.medium;
    }
}

TEST_F(Media, RefusedMediaLeaveTheMediumUnchanged)
{
    addNpki("a");
    start();
    for (int medium : {3, 4, 5}) {
        EXPECT_EQ(CLP_SetMediaType(clp, medium, nullptr, 0), 1001);
        EXPECT_EQ(CLP_LoadCertList(clp), 0);
        EXPECT_EQ(entry()->nMediaType, 1);
    }
}

TEST_F(Media, LoadBeforeAnyMediumIsRefused)
{
    ASSERT_EQ(CLP_Initalize(&clp, nullptr, 0, 1, Text(library.string())), 0);
    EXPECT_EQ(CLP_LoadCertList(clp), 1001);
    EXPECT_EQ(count(), 0);
}

TEST_F(Media, MediaWithoutAListCountTheDiskAndCopyNothing)
{
    addNpki("a");
    start();
    ASSERT_EQ(load(), 0);
    for (int medium : {0, 7, 9}) {
        ASSERT_EQ(CLP_SetMediaType(clp, medium, nullptr, 0), 0);
        EXPECT_EQ(count(), 1);
        EXPECT_EQ(entry()->nPKIType, 0);
    }
    ASSERT_EQ(CLP_SetMediaType(clp, 6, nullptr, 0), 0);
    EXPECT_EQ(count(), 0);
    tagCERTINFO record{};
    EXPECT_EQ(CLP_GetCertInfo(clp, 0, &record), 1001); // nothing was handed over
}

TEST_F(Media, RemovableDiskKeepsItsFolderWhenGivenNone)
{
    addPair(disk / "NPKI/yessign/USER/r", {{"subject", "cn=removable"}});
    start();
    EXPECT_EQ(load(2), 1111); // no folder was ever set
    ASSERT_EQ(load(2, disk.string()), 0);
    EXPECT_EQ(subjects(), std::vector<std::string>{"cn=removable"});
    EXPECT_EQ(entry()->nMediaType, 2);
    ASSERT_EQ(load(2, ""), 0);
    EXPECT_EQ(subjects(), std::vector<std::string>{"cn=removable"});
}

TEST_F(Media, RemovableDrivesComeFromTheMountTable)
{
    const fs::path table = library / "mtab";
    writeFile(
        table, "/dev/sda1 / ext4 rw 0 0\n/dev/sdb1 /media/USB vfat rw 0 0\n/dev/sdc1 /media/ntfs FUSEBLK rw 0 0\n");
    sigil::environment().mountTable = table.string();
    start();
    int found = -1;
    ASSERT_EQ(CLP_GetRemDriveCount(clp, &found), 0);
    ASSERT_EQ(found, 2);
    tagDRIVEINFO list[2]{};
    ASSERT_EQ(CLP_GetRemDrive(clp, list), 0);
    EXPECT_EQ(list[1].nIndex, 1);
    EXPECT_STREQ(list[0].szMountDir, "/media/USB");
    EXPECT_STREQ(list[0].szDisplay, "/USB (/media/USB)");
}

TEST_F(Media, RemovableDrivesThatCameAfterTheCountHaveNoRoom)
{
    const fs::path table = library / "mtab";
    writeFile(table, "/dev/sdb1 /media/one vfat rw 0 0\n");
    sigil::environment().mountTable = table.string();
    start();
    int found = -1;
    ASSERT_EQ(CLP_GetRemDriveCount(clp, &found), 0);
    writeFile(table, "/dev/sdb1 /media/one vfat rw 0 0\n/dev/sdc1 /media/two vfat rw 0 0\n");
    tagDRIVEINFO list[2]{};
    ASSERT_EQ(CLP_GetRemDrive(clp, list), 0);
    EXPECT_STREQ(list[0].szMountDir, "/media/one");
    EXPECT_STREQ(list[1].szMountDir, "");
}

TEST_F(Media, RemovableDrivesWithoutACount)
{
    const fs::path table = library / "mtab";
    writeFile(table, "/dev/sdb1 /media/one vfat rw 0 0\n");
    sigil::environment().mountTable = table.string();
    start();
    tagDRIVEINFO list[1]{};
    ASSERT_EQ(CLP_GetRemDrive(clp, list), 0);
    EXPECT_STREQ(list[0].szMountDir, "/media/one") << "counted on another processor, perhaps";

    sigil::environment().mountTable = (library / "missing").string();
    int found = 77;
    ASSERT_EQ(CLP_GetRemDriveCount(clp, &found), 0);
    EXPECT_EQ(found, 77);
    sigil::environment().mountTable = table.string();
    list[0] = {};
    ASSERT_EQ(CLP_GetRemDrive(clp, list), 0);
    EXPECT_STREQ(list[0].szMountDir, "") << "a count that failed made no room";
}

} // namespace
