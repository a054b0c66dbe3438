// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  ConvertUTF8: Korean text between UTF-8, UCS-2 and CP949.
 *
 *  Rules that hold for every operation:
 *  - "unicode" is UCS-2: 16-bit units, little-endian, no byte-order mark. "ascii" is CP949 (the Unified Hangul Code),
 *    the Korean multibyte code page. UTF-8 is that of RFC 3629.
 *  - Only ASCII, the 11,172 Hangul syllables and the Hangul compatibility letters are converted to CP949; other
 *    characters become "?". That is all that certificate names need.
 *  - Lengths are byte counts, also those of UCS-2 texts. A length below 1 and a null input count as an empty text.
 *  - No output is zero-terminated.
 *  - An `unsigned char**` output is allocated with `new[]`; the caller releases it with `delete[]`. It is null when
 *    the operation fails. A `char*` output is the caller's buffer; nothing is written when the operation fails.
 *  - A null output pointer is refused: every operation returns -1.
 *  - Running out of memory throws std::bad_alloc.
 *  - The class has no state: one object may serve several threads.
 */
#ifndef SIGILDESK_CONVERT_UTF8_H
#define SIGILDESK_CONVERT_UTF8_H

#include <sigildesk/export.h>

/** See the top of this file. */
class SIGIL_EXPORT ConvertUTF8 {
public:
    /** UTF-8 to UCS-2. ASCII and Hangul syllables are kept; every byte of anything else becomes a "?" of its own, so
     *  a Hanja character gives three.
     *  @return 0 for every text */
    int utf82unicode(const unsigned char* in, int len, unsigned char** out, int& outLen);

    /** UCS-2 to UTF-8. Every unit is encoded by itself, surrogates too.
     *  @return 0; -1 when @p len is odd */
    int unicode2utf8(const unsigned char* in, int len, unsigned char** out, int& outLen);

    /** UCS-2 to CP949; an odd last byte is ignored.
     *  @param in, len, out  the text, its bytes, and where the new array goes
     *  @param outLen  on entry the room that Hangul letters (U+3131 to U+318F) must fit into, in bytes; ASCII and
     *                 syllables are not counted against it. On return the length of the output
     *  @return 0; 3 when a Hangul letter does not end before the room's last byte */
    int unicode2ascii(const unsigned char* in, int len, unsigned char** out, int& outLen);

    /** UTF-8 to CP949, by way of utf82unicode.
     *  @param in, len  the text and its bytes
     *  @param out      receives at most @p len bytes; may be @p in
     *  @param outLen   receives how many
     *  @return 0; -1 when a step fails */
    int utf82ascii(const char* in, int len, char* out, int& outLen);

    /** CP949 to UCS-2. A code that is not assigned gives a unit of 0; so do A2 E6 and A2 E7.
     *  @return 0; -1 for a code outside 8141 to C8FE and for a lead byte at the end of the text */
    int ascii2unicode(const unsigned char* in, int len, unsigned char** out, int& outLen);

    /** CP949 to UTF-8, by way of ascii2unicode.
     *  @param in, len  the text and its bytes
     *  @param out      receives at most 3/2 times @p len bytes; may be @p in
     *  @param outLen   receives how many
     *  @return 0; -1 when a step fails, or when the result is shorter than @p len: an unassigned code gives one zero
     *          byte for its two, which only syllables elsewhere in the text can make up for */
    int ascii2utf8(const char* in, int len, char* out, int& outLen);
};

#endif
