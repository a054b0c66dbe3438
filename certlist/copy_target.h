// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  The files to which a copy of a certificate and its keys is written.
 */
#pragma once

#include "foundation/text_field.h"

namespace sigil {

/** A path that does not fit into pathCapacity stays empty. */
struct CertPaths {
    char signCert[pathCapacity] = {};
    char signKey[pathCapacity] = {};
    char kmCert[pathCapacity] = {};
    char kmKey[pathCapacity] = {};
};

/** Parts of a certificate's subject that name its files. */
struct SubjectNames {
    const char* dn;
    const char* cn;
    const char* organisation;
    const char* organisationUnit;
};

/** Forms the files of a copy.
 *
 *  A "/" in a name of the certificate becomes "_", so that no certificate chooses its own folder. Certificates of the
 *  private CA have no files: @p paths stays empty.
 *  @param toHardDisk  the user's home folder is the base; else a removable disk
 *  @param base        folder to copy to */
void formCopyPaths(bool toHardDisk, const char* base, const SubjectNames& subject, CertPaths& paths);

/** Creates the folders above @p path that are missing, for their owner only. Failures show when the file is written. */
void createFoldersOf(const char* path);

} // namespace sigil
