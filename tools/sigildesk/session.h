// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  What every command needs to know.
 */
#pragma once

#include "jobs/setting.h"
#include "options.h"
#include "output.h"

namespace host {

struct Session : Setting {
    const Arguments& arguments;
    Output& output;
};

} // namespace host
