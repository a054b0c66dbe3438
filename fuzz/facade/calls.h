// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  The façade's members over an open toolkit, called in any order with what earlier calls left and with what the input brings.
 */
#pragma once

#include "fuzz/target.h"

namespace fuzz {

/** @param type  enum SigilToolkit */
void callMembers(int type, Input input);

} // namespace fuzz
