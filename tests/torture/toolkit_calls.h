// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Stands between the façade and the functions of the toolkits, whatever their arguments are.
 */
#pragma once

#include <string_view>

namespace torture {

/** Whether a function of this name gives something back. It never fails: that would be a leak of the toolkit's own. */
bool givesBack(std::string_view name);
/** For a function of a toolkit, one that can fail in its place; else the function itself. */
void* watchedCall(const char* name, void* function);

} // namespace torture
