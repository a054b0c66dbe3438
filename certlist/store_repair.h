/** @file
 *  Stores in which an operation was killed: what it left half changed is put back before anybody reads it.
 */
#pragma once

#include "foundation/families.h"

#include <string>

namespace sigil {

/** Repairs the pairs in one folder of a family's store.
 *  @param folder  ends in "/" */
void repairStore(const Family& family, const std::string& folder);

/** Repairs the pair that has this folder for itself, or those that share it, of whichever family they are. */
void repairPairsIn(const std::string& folder);

} // namespace sigil
