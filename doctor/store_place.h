// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Why the list does not look at a place: told from the store layout's own table.
 */
#pragma once

#include "doctor/hearing.h"
#include "foundation/families.h"

#include <string>
#include <vector>

namespace sigil {

/** Names of folders on the way from the base folder of a medium. */
using Steps = std::vector<std::string>;

/** The names in "/NPKI/yessign/USER/". */
Steps stepsOf(std::string_view folder);

/** What is asked about a place. */
struct StorePlace {
    int medium;
    int wantedFamilies; ///< bits, as the list is asked for them
};

/** Why a pair of files is not looked at.
 *  @param steps      to the folder that the files lie in
 *  @param fileStyle  the files are named in the way of families whose certificates share a folder */
Diagnosis whyNotSearched(const StorePlace& place, const Steps& steps, bool fileStyle);

/** True for a folder on the way to one that is searched, which is entered through links too. */
bool isOnTheWay(const Steps& steps);
/** True for a folder whose files (@p fileStyle) or whose own folders are certificates; in any letter case. */
bool holdsCertificates(const Steps& steps, bool fileStyle);
/** True when a store of some family begins with a folder of this name, in any letter case. */
bool beginsAStore(std::string_view name);

/** Names of the files in a certificate's own folder. */
struct OwnFolderNames {
    const char* signCert;
    const char* signKey;
    const char* kmCert;
    const char* kmKey;

    /** The proper spelling of @p name, which may be in any letter case; null for other names. */
    const char* proper(std::string_view name) const;
};
OwnFolderNames ownFolderNames();

/** Endings of the files of certificates that share a folder. */
struct SharedFolderEndings {
    std::string signCert;
    std::string signKey;
    std::string kmCert;
    std::string kmKey;
};
SharedFolderEndings sharedFolderEndings();

/** Where a copy may have been written that no list reads: a folder and the beginning of its files' names. */
struct CopyPlace {
    std::string folder;
    std::string prefix;
    std::string ending;
};
std::vector<CopyPlace> copyPlaces(const std::string& base);

} // namespace sigil
