// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Says why certificates are listed or not, by the very decisions of the list.
 */
#pragma once

#include "doctor/report.h"

#include <sigildesk/codes.h>
#include <sigildesk/records.h>

#include <functional>
#include <string>
#include <vector>

namespace sigil {

struct DoctorQuestion {
    std::string libraryFolder;
    int toolkit = SIGIL_TOOLKIT_MAKER;
    int language = SIGIL_LANGUAGE_ENGLISH;
    tagLOADCERTOPT wanted{}; ///< what the list is asked for
    /** A further choice among what the list holds: the name of the rule that leaves an entry out, null for none. */
    std::function<const char*(const tagCERTINFO&)> leftOut;
};

/** The stores below the user's home folder. */
StoreReport examineHome(const DoctorQuestion& question);
/** The stores below a mounted disk or any folder. */
StoreReport examineDisk(const DoctorQuestion& question, const std::string& folder);
/** What lies at @p path, a file or a folder: in a store, with a store below it, or outside of all. */
StoreReport examinePath(const DoctorQuestion& question, const std::string& path);

/** Library folder, toolkit, settings files, home folder, removable disks. */
std::vector<Check> examineSurroundings(const DoctorQuestion& question);

} // namespace sigil
