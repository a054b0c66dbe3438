// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// A row takes the arguments that the toolkit's function is declared with, and no others.

#include "facade/row.h"

#include <gtest/gtest.h>

using sigil::Needs;

namespace {

template <class... A>
concept MakerTakes = requires(A... arguments)
{
    sigil::maker(SYMBOL(HVTK_CERT_GetUID), arguments...);
};
template <class... A>
concept GpkiTakes = requires(A... arguments)
{
    sigil::gpki(SYMBOL(GPKI_CERT_SetVerifyEnv), arguments...);
};

static_assert(MakerTakes<int, char*>);
static_assert(MakerTakes<Needs, int, char*>, "requirements beyond the member's may come first");
static_assert(!MakerTakes<char*, int>, "another order");
static_assert(!MakerTakes<int, BINSTR*>, "another pointer");
static_assert(!MakerTakes<int, const char*>, "a text that the toolkit may not write");
static_assert(!MakerTakes<long, char*>, "another width");
static_assert(!MakerTakes<bool, char*>, "a flag for a number");
static_assert(!MakerTakes<int> && !MakerTakes<int, char*, int>, "another count");

static_assert(GpkiTakes<int, int, bool, char*, char*>);
static_assert(!GpkiTakes<int, int, int, char*, char*>, "a number for a flag");

} // namespace

TEST(Row, NamesTheFunctionWithoutLinkingIt)
{
    EXPECT_STREQ(SYMBOL(HVTK_CERT_GetUID).name, "HVTK_CERT_GetUID"); // this program links no toolkit
}
