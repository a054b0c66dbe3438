// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Stores in which an operation was killed: what it left half changed is put back before anybody reads it.
 */
#pragma once

#include "certlist/listing_pause.h"
#include "foundation/families.h"

#include <string>

namespace sigil {

/** Repairs the pairs in one folder of a family's store.
 *  @param folder  ends in "/"
 *  @param pause   called before each of them; those that follow one that gave up are left for the next listing */
void repairStore(const Family& family, const std::string& folder, const ListingPause& pause = {});

/** Repairs the pair that has this folder for itself, or those that share it, of whichever family they are. */
void repairPairsIn(const std::string& folder);

} // namespace sigil
