// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  The PKI families: everything in which one differs from another, a row each. Whoever adds a family adds a row.
 */
#pragma once

#include <sigildesk/codes.h>

#include <span>
#include <string_view>

namespace sigil {

/** Where the certificates of a family lie on one kind of medium. */
struct StoreFolders {
    std::span<const char* const>
        folders; ///< below the medium's base folder, searched in this order; each ends in "/"
    int places;  ///< in the list of folders; 0: the family is not searched there
};

/** Which files belong to one certificate. */
struct CertificateFiles {
    /** Part of the name of a file that is a certificate; each of the texts below then replaces as many letters at the end
     *  of that name. Null for a family with a folder for each certificate: they are then names in that folder. */
    const char* mark;
    const char* separator; ///< between the family's folder and what follows it
    const char* signCert;
    const char* signKey;
    const char* kmCert;
    const char* kmKey;
    bool probesKmCert; ///< key-management paths are kept only where the certificate can be opened
};

/** What a placeholder of a copy's path stands for. */
enum class CopyPart { Organisation, Dn, Cn, ClassFolder };

/** Paths of a copy. "%s" stands for the base folder first, then for the parts in order. */
struct CopyLayout {
    const char* signCert;
    const char* signKey;
    const char* kmCert;
    const char* kmKey;
    std::span<const CopyPart> parts;
};

/** Where copies go; null for none. */
struct CopyLayouts {
    const CopyLayout* hardDisk;
    const CopyLayout* removable;
    const CopyLayout* personOnHardDisk; ///< of a subject whose "ou=" is "people"
    const CopyLayout* personOnRemovable;
};

/** How long before its end a certificate is said to expire soon. */
struct WarningPeriod {
    int days;
    const char* policy; ///< certificates of this policy have a period of their own; null for none
    int daysWithThatPolicy;
};

struct Family {
    SigilFamily code;
    std::span<const char* const> organisations; ///< "o=" of the subjects
    StoreFolders hardDisk;
    StoreFolders removable;
    CertificateFiles files;
    CopyLayouts copies;
    WarningPeriod warning;
};

/** All families, in the order in which they are listed. */
std::span<const Family> families();

/** The family with this code; null for an unknown code. */
const Family* familyWithCode(int code);

/** The family to which certificates of an organisation belong (ignoring case); null for one that no family names. */
const Family* familyOfOrganisation(std::string_view organisation);

/** Days before its end at which a certificate expires soon. An unknown family warns as most do. */
int warningDays(int family, std::string_view policy);

} // namespace sigil
