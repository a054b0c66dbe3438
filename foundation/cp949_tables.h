// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  The published CP949 mapping, as far as the library converts it. Written by scripts/generate-cp949-tables.
 */
#pragma once

// Declarations are not hidden by the compiler's default as definitions are; the conversions would look the tables'
// addresses up again and again.
#pragma GCC visibility push(hidden)

namespace sigil {

constexpr int firstSyllable = 0xAC00;
constexpr int firstKscCode = 0x8141;
constexpr int kscCodes = 18366;

/** CP949 code of every Hangul syllable, by code point - U+AC00; lead byte in the high byte. */
extern const unsigned short uni2ksc[11172];

/** CP949 code of the Hangul compatibility letters, by code point - U+3130. The last one, U+318F, is assigned to no
 *  character; it follows the rule of the others. */
extern const unsigned short uni2ksc_consonant[96];

/** Code point of the codes 0x8141 to 0xC8FE, by code - 0x8141; 0 where none is assigned. */
extern const unsigned short ksc2uni[kscCodes];

} // namespace sigil

#pragma GCC visibility pop
