// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  All certificates of a medium.
 */
#pragma once

#include "jobs/certificate.h"

#include <string>
#include <vector>

namespace host {

/** What the list is asked for: all families. Who wants fewer chooses among what it has. */
tagLOADCERTOPT everything();

/** Throws Failure when a folder is not there, or its name is too long for the list. */
void mustBeMedium(const std::string& folder);

/** The certificates that the list finds, each with its index.
 *  @param folder  of a disk; empty for the home folder. Throws Failure */
std::vector<Certificate> storeList(const Setting& setting, std::string folder);

} // namespace host
