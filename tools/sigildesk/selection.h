// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Which certificate is meant: CERT and the options that every command takes which lists or looks up.
 */
#pragma once

#include "certificate.h"

#include <string>
#include <vector>

namespace host {

/** The certificates of the medium that the options name, of which the options take some. Indices are those of the
 *  whole list, so that a certificate keeps its index whatever else is asked for. */
std::vector<Certificate> listed(const Session& session);

/** The doctor's rule by which an option leaves a certificate out; null when the options take it. */
const char* ruleAgainst(const Session& session, const Certificate& certificate);

/** The folder that --media names; empty for the home folder. Throws Failure when it is not there. */
std::string mediumFolder(const Session& session);

/** Where listed() looks. */
std::vector<std::string> searchedFolders(const Session& session);

/** The one certificate that a CERT names. Throws Failure (no) when none does, or several do. */
Certificate chosen(const Session& session, const std::string& cert);

} // namespace host
