// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  The files of a certificate in a store, changed as one: the signing pair and the key-management pair together.
 */
#pragma once

#include "jobs/certificate.h"
#include "jobs/secret_text.h"

#include <optional>
#include <string>

namespace host {

/** What the files of a certificate hold; nothing for one that is not to be there. Keys are encrypted. */
struct PairContents {
    std::optional<std::string> certificate, key, kmCertificate, kmKey;
};

/** A disk that `list` reads: the home folder, or a mounted disk. */
struct Disk {
    std::string base;
    int medium; ///< enum SigilMedium
};

/** Whether a file has the name of a key-management certificate. */
bool isKeyManagement(const std::string& path);

/** The mounted disk at @p folder; the home folder when it is empty. Throws Failure. */
Disk diskAt(const std::string& folder);

/** Where `list` finds a certificate on @p disk, all four files. Throws Failure when it has no place there. */
PairFiles placeFor(const Certificate& certificate, const Disk& disk);

/** What the files of a certificate hold now. Throws Failure, also when there is no key. */
PairContents contentsOf(const Certificate& certificate);

/** Brings new pairs to the disk. Throws Failure when there is something in their place that is not to be replaced.
 *  @return the files that are there */
PairFiles filePairs(const PairFiles& files, const PairContents& contents, bool replace);

/** Makes the files hold @p contents, all of them or none. Throws Failure; the files are as they were then. */
void changePairs(const PairFiles& files, const PairContents& contents);

/** Whether a password opens every key of the contents. @return a result of the library */
int opensAll(const Crypto& crypto, const PairContents& contents, Secret& password);

/** Puts every key of the contents under a new password. Throws Failure. */
void changePassword(const Crypto& crypto, PairContents& contents, Secret& from, Secret& to);

} // namespace host
