// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  The files of a certificate in a store, changed as one: the signing pair and the key-management pair together.
 */
#pragma once

#include "certificate.h"

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

/** The one that --to names, or the first of @p otherwise that is not empty: "disk" or a folder. Throws Failure. */
Disk diskOf(const Session& session, const std::string& otherwise = {});

/** Where `list` finds a certificate on @p disk, all four files. Throws Failure when it has no place there. */
PairFiles placeFor(const Certificate& certificate, const Disk& disk);

/** The certificate that CERT names, which must be one whose pairs can be changed or copied: no key-management
 *  certificate. Throws Failure. */
Certificate chosenWithPairs(const Session& session);

/** What the files of a certificate hold now. Throws Failure, also when there is no key. */
PairContents contentsOf(const Certificate& certificate);

/** Brings new pairs to the disk. Throws Failure when there is something in their place and --force is not given.
 *  @return the files that are there */
PairFiles filePairs(const Session& session, const PairFiles& files, const PairContents& contents);

/** Makes the files hold @p contents, all of them or none. Throws Failure; the files are as they were then. */
void changePairs(const PairFiles& files, const PairContents& contents);

} // namespace host
