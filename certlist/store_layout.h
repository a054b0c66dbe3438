/** @file
 *  Where certificates lie on a disk: the folders of each PKI family, and the files of one certificate.
 */
#pragma once

#include "certlist/searched_folder.h"

#include <sigildesk/records.h>

#include <span>
#include <string>

namespace sigil {

/** One PKI family. */
struct FamilyLayout {
    std::span<const char* const> hardDiskFolders;  ///< below the home folder, searched in this order
    std::span<const char* const> removableFolders; ///< below the mount folder
    const char* separator;                         ///< between the folder, which ends in "/", and what follows it
    int code;                                      ///< of the family
    int hardDiskSlots;       ///< places in the folder list; more than folders: the rest is empty
    int removableSlots;      ///< 0: the family is not searched there
    bool filePerCertificate; ///< a "_sig.cer" file is a certificate; else a sub-folder is one
    bool probesKmCert;       ///< key-management paths are kept only where kmCert.der opens

    std::span<const char* const> folders(int medium) const;
    int slots(int medium) const;
};

/** The family with this code; null for an unknown code. */
const FamilyLayout* familyLayout(int code);

/** Cuts a path at 259 bytes: what a path field holds. */
std::string cutPath(std::string path);

/** True when the entry @p item of @p folder is a certificate of this family. Links are not followed. */
bool isCandidate(const FamilyLayout& family, const SearchedFolder& folder, const dirent& item);

/** Fills in the four paths of the candidate @p name in @p folder. */
void setPaths(const FamilyLayout& family, const SearchedFolder& folder, const char* name, tagCERTINFO& entry);

} // namespace sigil
