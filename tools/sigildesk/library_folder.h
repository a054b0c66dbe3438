// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Where the parts are that the command uses while it runs.
 */
#pragma once

#include <string>

namespace host {

/** The library folder that is installed with the command, found the way in which the loader finds its library. */
std::string installedFolder();

} // namespace host
