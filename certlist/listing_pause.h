// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  A listing that hands the time back while it goes on, for a program that has a window to paint.
 */
#pragma once

#include <functional>

namespace sigil {

/** Called between the folders and between the files of a listing. @return false: the listing is given up */
using ListingPause = std::function<bool()>;

/** Has the later listings of an initialised processor call @p pause; an empty one: nothing, as at first. A listing that
 *  is given up ends with -1 and an empty list. Inside the library only: no host can name it. */
void pauseListings(void* processor, ListingPause pause);

} // namespace sigil
