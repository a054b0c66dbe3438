// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Any bytes as the system's table of mounted disks.

#include "foundation/environment.h"
#include "fuzz/memory_file.h"

#include <sigildesk/util.h>

#include <cstring>
#include <vector>

FUZZ_TARGET(foundation_drives, input)
{
    const fuzz::MemoryFile table(fuzz::text(input));
    sigil::environment().mountTable = table.path();
    CUtil util(0, nullptr);
    int count = -1;
    util.GetRemDriveCount(false, &count);
    require(count >= 0, "a table that is there can be counted");
    std::vector<tagDRIVEINFO> drives(static_cast<std::size_t>(count) + 1);
    drives.back().nIndex = -1;
    util.GetRemDriveInfo(false, drives.data());
    require(drives.back().nIndex == -1, "there are as many disks as were counted");
    for (int i = 0; i < count; ++i) {
        const tagDRIVEINFO& drive = drives[static_cast<std::size_t>(i)];
        require(drive.nIndex == i, "disks are numbered in their order");
        require(std::memchr(drive.szMountDir, '\0', sizeof drive.szMountDir), "a folder is terminated");
        require(std::memchr(drive.szDisplay, '\0', sizeof drive.szDisplay), "what is shown is terminated");
    }
}
