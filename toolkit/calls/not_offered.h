// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Functions whose formats have no public definition: they say so instead of being absent.
 */
#pragma once

#include "toolkit/engine/base/face.h"

namespace toolkit::calls {

constexpr const char* wireless = "the wireless message formats have no public definition";

inline void notOffered(Context&, const char* why) { fail(SIGIL_TK_NOT_OFFERED, why); }

} // namespace toolkit::calls
