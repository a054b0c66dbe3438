// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  CBinary: the owning byte buffer in which certificates, keys, file contents and texts are kept.
 *
 *  Rules that hold for every operation:
 *  - An empty buffer has a null m_pData and length 0. Storing zero bytes leaves the object empty; the one exception
 *    is appending an empty C string.
 *  - The bytes are always followed by one zero byte that is not counted, so text contents can be read as a C string.
 *  - Memory is taken and released by the object. A negative length and a null pointer with a length count as zero
 *    bytes. Running out of memory (also: more bytes than an int can count) throws std::bad_alloc and leaves the
 *    object as it was.
 *  - Every block is overwritten with 0xCD before it is released, because it may have held a key or a password.
 *  - The arguments may point into the object itself.
 *  - An object is used from one thread at a time.
 */
#ifndef SIGILDESK_BINARY_H
#define SIGILDESK_BINARY_H

#include <sigildesk/export.h>

/** See the top of this file. An object takes 40 bytes: hosts hold it by value. */
class SIGIL_EXPORT CBinary {
public:
    /** An empty buffer. */
    CBinary();
    /** A copy of the @p len bytes at @p data; empty when @p len is 0. */
    CBinary(char* data, int len);
    /** A copy of the bytes and, when the source has one, of the text that toString() made. That text may be older than
     *  the bytes: of a longer one, one byte more than there are bytes is kept. */
    CBinary(const CBinary& source);
    virtual ~CBinary();

    /** Replaces the bytes by a copy of the source's. Texts returned by toString() and toHexString() stay valid. */
    CBinary& operator=(CBinary& source);
    /** Replaces the bytes by those of the zero-terminated @p text, without its terminator; null empties the data.
     *  Texts returned by toString() and toHexString() stay valid. */
    CBinary& operator=(char* text);

    /** Releases the bytes and the texts of toString() and toHexString(). */
    void empty();
    /** True when there are no bytes. */
    bool isEmpty();
    /** empty(), then a copy of the @p len bytes at @p data. */
    void set(char* data, int len);
    /** empty(), after the bytes and the texts made from them were overwritten with 0xCD: for keys and passwords. */
    void zeroEmpty();

    /** The @p len bytes from @p start on as a new buffer; empty when the range does not lie within the bytes. */
    CBinary getSub(int start, int len);

    /** The bytes as a zero-terminated text, null when there are none. The text belongs to the object and stays valid
     *  until the next toString(), empty(), set(), zeroEmpty(), fromHexString() or the end of the object. */
    char* toString();
    /** Two lower-case hexadecimal digits for each byte, high nibble first; null when there are no bytes. The text
     *  belongs to the object and stays valid as that of toString() does. */
    char* toHexString();
    /** Replaces the contents by the bytes that the hexadecimal digits (of either case) of @p hex stand for. An odd
     *  last digit is ignored.
     *  @return 0; -1 when @p hex is null (the object is empty then), or at the first character that is no digit:
     *          the length is then that of the whole text, with zeros from the failed byte on */
    int fromHexString(char* hex);

    /** Index of the first occurrence of the @p len bytes at @p pattern; -1 when there is none, or @p len is below 1
     *  or greater than the length. */
    int find(unsigned char* pattern, long len);
    /** As above with the characters of a zero-terminated @p text; -1 for null and for an empty text. */
    int find(char* text);

    char* m_pData; /**< the bytes, null when empty; owned */
    int m_nLength; /**< number of bytes */

private:
    int m_nStringLength; // bytes in m_pString, which may outlive the bytes it was made from; takes no room of its own

public:
    char* m_pString;    /**< text last made by toString(), or null; owned */
    char* m_pHexString; /**< text last made by toHexString(), or null; owned */
};

static_assert(sizeof(CBinary) == 40, "layout of CBinary");

/** Left followed by right, as a new buffer; empty when both are. */
SIGIL_EXPORT CBinary operator+(CBinary& left, CBinary& right);
/** Appends the bytes of @p right, which may be @p left itself. */
SIGIL_EXPORT CBinary& operator+=(CBinary& left, CBinary& right);
/** Appends the characters of a zero-terminated text; nothing for null. An empty text still gives an empty buffer a
 *  block of its own: m_pData is then an empty C string instead of null. */
SIGIL_EXPORT CBinary& operator+=(CBinary& left, char* right);
/** True when both hold the same bytes. A buffer without data equals only a buffer without data. */
SIGIL_EXPORT bool operator==(CBinary& left, CBinary& right);
/** The negation of ==. */
SIGIL_EXPORT bool operator!=(CBinary& left, CBinary& right);

#endif
