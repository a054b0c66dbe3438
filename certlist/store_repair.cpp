// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "certlist/store_repair.h"

#include "certlist/store_layout.h"

#include <unistd.h>

#include <cstring>
#include <filesystem>
#include <string_view>
#include <vector>

namespace sigil {

namespace {

namespace fs = std::filesystem;

/** Names first: what is put back would change the folder that is looked through. Links are not followed. */
std::vector<std::string> namesIn(const std::string& path)
{
    std::vector<std::string> names;
    SearchedFolder folder(path);
    while (const dirent* item = folder.next())
        if (!S_ISLNK(folder.kindOf(*item)))
            names.emplace_back(item->d_name);
    return names;
}

/** The certificate of a shared folder whose pair the file @p name has notes of; empty for any other file. */
std::string certificateNotedBy(const CertificateFiles& files, std::string_view name)
{
    const std::string ending = std::string(files.signKey) + UndoableFiles::notesEnding;
    const std::string_view mark = files.mark;
    const std::string_view certificateEnding = mark.substr(mark.size() - std::strlen(files.signKey));
    if (!name.ends_with(ending))
        return {};
    std::string certificate = std::string(name.substr(0, name.size() - ending.size())).append(certificateEnding);
    return certificate.ends_with(mark) ? certificate : std::string();
}

/** A folder in which there was no pair before goes too. */
void repairOwnFolder(const Family& family, const SearchedFolder& store, const std::string& name)
{
    if (UndoableFiles::undoInterrupted(pairsOf(family, store, name.c_str())))
        rmdir((store.path() + name).c_str());
}

void repairSharedFolder(const Family& family, const SearchedFolder& store, const std::string& name)
{
    const std::string certificate = certificateNotedBy(family.files, name);
    if (!certificate.empty())
        UndoableFiles::undoInterrupted(pairsOf(family, store, certificate.c_str()));
}

} // namespace

void repairStore(const Family& family, const std::string& folder, const ListingPause& pause)
{
    const SearchedFolder store(folder);
    for (const std::string& name : namesIn(folder)) {
        if (pause && !pause())
            return;
        family.files.mark ? repairSharedFolder(family, store, name) : repairOwnFolder(family, store, name);
    }
}

void repairPairsIn(const std::string& folder)
{
    const fs::path path = (fs::absolute(folder.empty() ? "." : folder) / "").lexically_normal().parent_path();
    for (const Family& family : families()) {
        if (family.files.mark)
            repairStore(family, path.string() + "/");
        else
            repairOwnFolder(family, SearchedFolder(path.parent_path().string() + "/"), path.filename().string());
    }
}

} // namespace sigil
