// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  What a shared object offers to others.
 */
#pragma once

#include <set>
#include <string>

/** The functions that the shared object @p library defines for others, demangled. Instances of the standard library's
 *  templates are weak and do not count. */
std::set<std::string> functionsOf(const std::string& library);
