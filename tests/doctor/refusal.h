// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Calls that fail for one path, as they do for a user without rights or on a broken disk: nothing of the kind can be
 *  made by a test that may run as the administrator.
 */
#pragma once

#include <string>

enum class RefusedCall { None, OpenFolder, Status, Access };

/** While it lives, the program's calls of this kind fail with @p error when they name @p path. */
class Refusal {
public:
    Refusal(RefusedCall call, const std::string& path, int error);
    ~Refusal();
    Refusal(const Refusal&) = delete;
    Refusal& operator=(const Refusal&) = delete;
};
