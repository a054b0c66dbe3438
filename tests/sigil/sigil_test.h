// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  A session of the C library with a sample store in front of it.
 */
#pragma once

#include "tests/sigil/owners.h"
#include "tests/support/sample_store.h"

#include <gtest/gtest.h>

#include <string>

namespace sigil_test {

constexpr char password[] = "sample1234!";

/** A session over the library folder of the build. */
Session open(int toolkit = SIGIL_TOOLKIT_MAKER, int language = SIGIL_LANGUAGE_ENGLISH);

/** Lists everything that lies on @p disk. @return the number of entries */
int list(SigilSession* session, const std::string& disk);

SigilFields fieldsOf(SigilSession* session, int entry);

/** The first entry whose key-management pair is there, or is not. */
int entryWithKm(SigilSession* session, bool wanted);

} // namespace sigil_test
