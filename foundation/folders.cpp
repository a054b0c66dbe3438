// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// CUtil: what a folder holds, and where to install from.

#include <sigildesk/convert_utf8.h>
#include <sigildesk/util.h>

#include "foundation/ascii.h"
#include "foundation/text_field.h"

#include <algorithm>
#include <dirent.h>
#include <memory>
#include <string>
#include <sys/stat.h>

namespace {

struct FolderCloser {
    void operator()(DIR* folder) const { closedir(folder); }
};

/** One of the two lists that a listing gives: counted only, or filled as far as there is room. */
struct Listing {
    bool countOnly;
    tagEXPFILELIST* entries;
    int* room;
    int found = 0;

    void add(std::string_view name)
    {
        // More entries may have come since they were counted; the array has no room for them. Hosts need not pass
        // the counts again, though, so that only a positive one counts as a bound.
        const bool bounded = room && *room > 0;
        if (!countOnly && entries && (!bounded || found < *room))
            sigil::copyText(entries[found].szName, name);
        ++found;
    }
    void finish() const
    {
        if (countOnly && room)
            *room = found;
    }
};

std::string toCp949(std::string_view name)
{
    std::string text(name.size(), '\0');
    int length = 0;
    ConvertUTF8().utf82ascii(name.data(), static_cast<int>(name.size()), text.data(), length);
    text.resize(static_cast<std::size_t>(length));
    return text;
}

bool hasExtension(std::string_view name, std::string_view wanted)
{
    const std::size_t dot = name.rfind('.');
    return dot != std::string_view::npos && sigil::equalsIgnoringCase(name.substr(dot), wanted);
}

/** Kind of the file at @p path itself, links not followed; 0 when it is gone. */
mode_t kindOf(const std::string& path)
{
    struct stat status { };
    lstat(path.c_str(), &status); // leaves the status of what is gone alone
    return status.st_mode & S_IFMT;
}

void copyNumber(int* out, std::string_view text)
{
    if (out)
        *out = sigil::toInt(std::string(text).c_str());
}

} // namespace

int CUtil::GetFolderFilePath(bool countOnly, char* folder, char* ext, int* folderCount, int* fileCount,
    tagEXPFILELIST* files, tagEXPFILELIST* folders)
{
    Listing folderList{countOnly, folders, folderCount};
    Listing fileList{countOnly, files, fileCount};
    const std::string wanted = "." + std::string(sigil::textOf(ext));
    const std::unique_ptr<DIR, FolderCloser> open(folder ? opendir(folder) : nullptr);

    while (const dirent* entry = open ? readdir(open.get()) : nullptr) {
        const std::string_view name = entry->d_name;
        const std::string text = toCp949(name);
        const mode_t kind = kindOf(std::string(folder) + "/" + entry->d_name);
        if (S_ISDIR(kind) && name != "." && name != "..")
            folderList.add(text);
        else if (S_ISREG(kind) && hasExtension(text, wanted))
            fileList.add(text);
    }
    folderList.finish();
    fileList.finish();
    return 0;
}

int CUtil::USIMInstallURLParsing(char* text, int urlSize, char* url, int* first, int* second)
{
    constexpr int roomWithoutNumbers = 7; // deliberately shorter than any address
    const std::string_view whole = sigil::textOf(text);
    const std::size_t bar = whole.find('|');
    const int room = bar == std::string_view::npos ? std::min(urlSize, roomWithoutNumbers) : urlSize;
    if (room > 0)
        sigil::copyText(url, static_cast<std::size_t>(room), whole.substr(0, bar));
    if (bar == std::string_view::npos)
        return 0;

    const std::string_view numbers = whole.substr(bar + 1);
    const std::size_t secondBar = numbers.find('|');
    if (secondBar == std::string_view::npos)
        return 0;
    copyNumber(first, numbers.substr(0, secondBar));
    copyNumber(second, numbers.substr(secondBar + 1));
    return 0;
}
