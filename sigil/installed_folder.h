// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#pragma once

#include <string>

namespace host {

/** The library folder that is installed beside this library. */
std::string installedFolder();

} // namespace host
