// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "certlist/store_layout.h"

#include "certlist/codes.h"
#include "certlist/entry.h"

#include <algorithm>
#include <cstring>
#include <string_view>

namespace sigil {

namespace {

/** @p path with its last letters replaced by @p ending. */
std::string endingIn(const std::string& path, std::string_view ending)
{
    return path.substr(0, path.size() - ending.size()).append(ending);
}

std::string pathOf(const CertificateFiles& files, const std::string& path, const char* file)
{
    return files.mark ? endingIn(path, file) : path + file;
}

void setFilePaths(const CertificateFiles& files, const std::string& path, tagCERTINFO& entry)
{
    setText(entry, field::signCertPath, endingIn(path, files.signCert));
    setText(entry, field::signKeyPath, endingIn(path, files.signKey));
    setText(entry, field::kmCertPath, endingIn(path, files.kmCert));
    setText(entry, field::kmKeyPath, endingIn(path, files.kmKey));
}

void setFolderPaths(
    const CertificateFiles& files, const SearchedFolder& folder, const std::string& path, tagCERTINFO& entry)
{
    const std::string kmCert = cutPath(path + files.kmCert);
    setText(entry, field::signCertPath, path + files.signCert);
    setText(entry, field::signKeyPath, path + files.signKey);
    // The certificate is probed for its key too, deliberately: a pair without its key file is noticed on reading.
    if (files.probesKmCert && !folder.canBeOpened(kmCert.c_str()))
        return;
    setText(entry, field::kmCertPath, kmCert);
    setText(entry, field::kmKeyPath, path + files.kmKey);
}

} // namespace

const StoreFolders& foldersOf(const Family& family, int medium)
{
    static constexpr StoreFolders nowhere{};
    if (medium == SIGIL_MEDIUM_HARD_DISK)
        return family.hardDisk;
    return medium == SIGIL_MEDIUM_REMOVABLE_DISK ? family.removable : nowhere;
}

std::string cutPath(std::string path)
{
    constexpr std::size_t longest = sizeof(tagCERTINFO::szSignCertPath) - 1;
    path.resize(std::min(path.size(), longest));
    return path;
}

bool isCandidate(const Family& family, const SearchedFolder& folder, const dirent& item)
{
    if (family.files.mark)
        return std::strstr(item.d_name, family.files.mark) && folder.kindOf(item) == S_IFREG;
    const std::string_view name = item.d_name;
    return name != "." && name != ".." && folder.kindOf(item) == S_IFDIR;
}

std::vector<PairPaths> pairsOf(const Family& family, const SearchedFolder& folder, const char* name)
{
    const CertificateFiles& files = family.files;
    const std::string path = folder.path() + files.separator + name;
    return {{pathOf(files, path, files.signCert), pathOf(files, path, files.signKey)},
        {pathOf(files, path, files.kmCert), pathOf(files, path, files.kmKey)}};
}

void setPaths(const Family& family, const SearchedFolder& folder, const char* name, tagCERTINFO& entry)
{
    const std::string path = folder.path() + family.files.separator + name;
    if (family.files.mark)
        setFilePaths(family.files, cutPath(path), entry);
    else
        setFolderPaths(family.files, folder, path, entry);
}

} // namespace sigil
