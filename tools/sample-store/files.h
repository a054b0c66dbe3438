// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Writing the files of a store.
 */
#pragma once

#include "toolkit/engine/base/bytes.h"

#include <filesystem>

namespace sample {

/** Writes a new file that only its owner may read (0600). Throws std::system_error, also when the file exists. */
void writeNewFile(const std::filesystem::path& file, toolkit::View content);

} // namespace sample
