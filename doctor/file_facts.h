// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  What can be said of a file without reading it.
 */
#pragma once

#include "doctor/rules.h"

#include <sys/stat.h>

#include <string>

namespace sigil {

/** The rule for something that is no regular file, by its kind. */
const Rule& ruleOfKind(mode_t mode);

/** "root, 0600": whose a file is, and its rights. */
std::string ownerAndRights(const struct stat& status);

/** Name of the user that the program runs as. */
std::string currentUser();

/** @p path with "/" for "//". */
std::string plainPath(const std::string& path);

} // namespace sigil
