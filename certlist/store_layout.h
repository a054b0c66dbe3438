// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Where certificates lie on a disk: the folders of each PKI family, and the files of one certificate.
 */
#pragma once

#include "certlist/searched_folder.h"
#include "certlist/undoable_files.h"
#include "foundation/families.h"

#include <sigildesk/records.h>

#include <string>
#include <vector>

namespace sigil {

/** Where a family lies on a medium; nowhere on one that is no disk. */
const StoreFolders& foldersOf(const Family& family, int medium);

/** Cuts a path to what a path field of an entry holds. */
std::string cutPath(std::string path);

/** True when the entry @p item of @p folder is a certificate of this family. Links are not followed. */
bool isCandidate(const Family& family, const SearchedFolder& folder, const dirent& item);

/** All files that the candidate @p name in @p folder may have: the signing pair and the key-management pair. */
std::vector<PairPaths> pairsOf(const Family& family, const SearchedFolder& folder, const char* name);

/** Fills in the four paths of the candidate @p name in @p folder. */
void setPaths(const Family& family, const SearchedFolder& folder, const char* name, tagCERTINFO& entry);

} // namespace sigil
