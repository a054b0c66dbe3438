// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Reading and writing DER elements (X.690) for the few structures that OpenSSL does not know: identity data, the
 *  parameters of Korean key files, lists of objects.
 */
#pragma once

#include "toolkit/engine/base/bytes.h"

#include <cstdint>
#include <initializer_list>
#include <optional>
#include <string>

namespace toolkit::der {

/** Identifier octets of the elements that the engine meets. */
enum Tag : unsigned char {
    Boolean = 0x01,
    Integer = 0x02,
    BitString = 0x03,
    OctetString = 0x04,
    Null = 0x05,
    Oid = 0x06,
    Utf8String = 0x0C,
    PrintableString = 0x13,
    T61String = 0x14,
    Ia5String = 0x16,
    UtcTime = 0x17,
    GeneralizedTime = 0x18,
    VisibleString = 0x1A,
    BmpString = 0x1E,
    Sequence = 0x30,
    Set = 0x31,
    ConstructedOctetString = 0x24,
    Implicit0OctetString = 0x80,
    Implicit1OctetString = 0x81,
    Implicit3Boolean = 0x83,
    Explicit0 = 0xA0,
    Implicit0 = 0xA0, ///< in place of the tag of a SEQUENCE
};

/** Context-specific tags. */
constexpr Tag primitive(int number) { return static_cast<Tag>(0x80 | number); }
constexpr Tag constructed(int number) { return static_cast<Tag>(0xA0 | number); }

/** One element of definite length. */
struct Element {
    unsigned char tag;
    View content;
    View whole; ///< identifier and length octets too
};

/** Reads elements one after another. */
class Reader {
public:
    explicit Reader(View bytes)
        : m_rest(bytes)
    {
    }
    bool atEnd() const { return m_rest.empty(); }
    /** The next element; nothing at the end or when the bytes are not DER. */
    std::optional<Element> next();
    /** The content of the next element, when it has this tag; else nothing, and the reader stays. */
    std::optional<View> take(Tag tag);

private:
    View m_rest;
};

/** The first element of @p bytes, whatever follows it. */
std::optional<Element> first(View bytes);
/** The same, only when its header is as short as DER wants it and has one identifier octet. */
std::optional<Element> shortest(View bytes);
/** Whether this is the content of an OBJECT IDENTIFIER of a usual length, X.690 8.19. */
bool isOid(View content);
/** OpenSSL's number of an OID; NID_undef when it has none. */
int nidOf(View content);
/** The content of the OID that OpenSSL numbers so. */
View oidContent(int nid);
/** Dotted text of an OID's content; empty when it is not one. */
std::string oidText(View content);
/** Value of a non-negative INTEGER of at most four bytes. */
std::optional<unsigned long> smallInteger(View content);
/** Octets of an INTEGER without the zeros in front. */
View withoutZeros(View content);
/** Octets of a BIT STRING without its count of unused bits. */
std::optional<View> bitOctets(View content);

/** Identifier and length octets of an element. */
template <class Container = Bytes>
Container header(Tag tag, std::uint64_t length)
{
    Container out{static_cast<unsigned char>(tag)};
    if (length < 0x80) {
        out.push_back(static_cast<unsigned char>(length));
        return out;
    }
    int octets = 1;
    while (octets < 8 && (length >> (8 * octets)) != 0)
        ++octets;
    out.push_back(static_cast<unsigned char>(0x80 | octets));
    while (octets-- > 0)
        out.push_back(static_cast<unsigned char>(length >> (8 * octets)));
    return out;
}

/** An element around the given contents, one after another. The container decides whether the result is wiped. */
template <class Container = Bytes>
Container element(Tag tag, std::initializer_list<View> contents)
{
    std::size_t length = 0;
    for (const View content : contents)
        length += content.size();
    Container out = header<Container>(tag, length);
    for (const View content : contents)
        out.insert(out.end(), content.begin(), content.end());
    return out;
}

/** OID element of a dotted text. */
Bytes oid(const char* dotted);

} // namespace toolkit::der
