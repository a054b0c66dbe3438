// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Tries a module out in a process of its own, so that one which crashes or hangs while it starts does not take the host
 *  along.
 */
#pragma once

#include <string>

namespace toolkit {

/** @param reserved what the module is to be initialised with; may be null
 *  @return what went wrong, in words; empty when the module starts */
std::string probeModule(const std::string& file, const char* reserved);

} // namespace toolkit
