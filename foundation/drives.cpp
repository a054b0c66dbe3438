// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// CUtil: mounted disks.

#include <sigildesk/util.h>

#include "foundation/ascii.h"
#include "foundation/environment.h"
#include "foundation/text_field.h"

#include <algorithm>
#include <cstdio>
#include <memory>
#include <mntent.h>
#include <string>

namespace {

struct MountTableCloser {
    void operator()(std::FILE* table) const { endmntent(table); }
};

bool isRemovable(const mntent& mount)
{
    return sigil::equalsIgnoringCase(mount.mnt_type, "vfat") ||
        sigil::equalsIgnoringCase(mount.mnt_type, "fuseblk");
}

/** Calls @p visit with the mount point of every removable disk, in table order. @return false: no mount table */
template <class Visitor>
bool forEachRemovable(Visitor visit)
{
    const std::unique_ptr<std::FILE, MountTableCloser> table(
        setmntent(sigil::environment().mountTable.c_str(), "r"));
    if (!table)
        return false;
    mntent mount{};
    char texts[8192];
    while (getmntent_r(table.get(), &mount, texts, sizeof texts))
        if (isRemovable(mount))
            visit(std::string_view(mount.mnt_dir));
    return true;
}

void fillDrive(tagDRIVEINFO& drive, int index, std::string_view path, std::string_view name)
{
    drive.nIndex = index;
    sigil::copyText(drive.szMountDir, path);
    sigil::copyText(drive.szName, name);
    sigil::copyText(drive.szDisplay, std::string(name) + " (" + std::string(path) + ")");
}

/** The last part of a mount point with its "/", deliberately so: hosts show it like that. */
std::string_view driveName(std::string_view mountPoint)
{
    const std::size_t slash = mountPoint.rfind('/');
    return slash == std::string_view::npos ? mountPoint : mountPoint.substr(slash);
}

} // namespace

int CUtil::GetRemDriveCount(bool /*unused*/, int* count)
{
    int found = 0;
    const bool readable = forEachRemovable([&](std::string_view) { ++found; });
    if (!count)
        return 0;
    m_nRemDrives = readable ? found : 0; // what the host's number then is, is not known: no room is promised
    if (readable)
        *count = found;
    return 0;
}

int CUtil::GetRemDriveInfo(bool /*unused*/, tagDRIVEINFO* list)
{
    if (!list)
        return 0;
    const bool counted = m_nRemDrives >= 0;
    int index = 0;
    forEachRemovable([&](std::string_view mountPoint) {
        if (counted && index >= m_nRemDrives)
            return;
        fillDrive(list[index], index, mountPoint, driveName(mountPoint));
        ++index;
    });
    return 0;
}

int CUtil::GetDriveInfo(bool removable, bool /*unused*/, int* count, tagDRIVEINFO* info)
{
    if (removable) {
        if (count)
            *count = 1;
        return 0;
    }
    char key[] = "DLG_BUTTONMEDIA_HDD";
    char name[sizeof tagDRIVEINFO::szName];
    GetLanguageUIText(m_szLangFile, key, sizeof name, name);
    if (info)
        fillDrive(*info, 0, "/", name);
    return 0;
}

int CUtil::GetFreeDisk(int kind, char* out, long long* freeBytes)
{
    if (freeBytes)
        *freeBytes = 0;
    if (kind == 1 && out)
        std::fill_n(out, sigil::pathCapacity, '\0');
    return 0;
}
