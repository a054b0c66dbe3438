// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "certlist/public_part.h"

#include <algorithm>
#include <cstddef>
#include <initializer_list>

namespace sigil {

namespace {

constexpr unsigned char integer = 0x02;
constexpr unsigned char bitString = 0x03;
constexpr unsigned char octetString = 0x04;
constexpr unsigned char sequence = 0x30;
constexpr unsigned char explicitField0 = 0xA0;
constexpr unsigned char explicitField1 = 0xA1;

/** Walks over DER elements. An element that does not fit into the bytes ends the walk. */
class Elements {
public:
    explicit Elements(std::string_view bytes)
        : m_rest(bytes)
    {
    }

    /** True when the next element has this tag. */
    bool isNext(unsigned char tag) const { return !m_rest.empty() && static_cast<unsigned char>(m_rest[0]) == tag; }

    /** Content of the next element, which is taken when it has this tag; else empty, and the walk is over. */
    std::string_view take(unsigned char tag)
    {
        const std::size_t head = headLength();
        const std::size_t length = head ? contentLength(head) : 0;
        if (!isNext(tag) || head == 0 || length > m_rest.size() - head) {
            m_rest = {};
            return {};
        }
        const std::string_view content = m_rest.substr(head, length);
        m_rest.remove_prefix(head + length);
        return content;
    }

    void skip(std::initializer_list<unsigned char> tags)
    {
        for (unsigned char tag : tags)
            take(tag);
    }

private:
    static constexpr std::size_t longestLength = 4;

    std::size_t byteAt(std::size_t i) const { return static_cast<unsigned char>(m_rest[i]); }

    /** Bytes of tag and length; 0 when they are not whole. */
    std::size_t headLength() const
    {
        if (m_rest.size() < 2)
            return 0;
        const std::size_t more = byteAt(1) < 0x80 ? 0 : byteAt(1) - 0x80;
        return more <= longestLength && m_rest.size() >= 2 + more ? 2 + more : 0;
    }

    std::size_t contentLength(std::size_t head) const
    {
        if (head == 2)
            return byteAt(1);
        std::size_t length = 0;
        for (std::size_t i = 2; i < head; ++i)
            length = length << 8 | byteAt(i);
        return length;
    }

    std::string_view m_rest;
};

/** A modulus without the zero byte in front of it that some encoders leave out. */
std::string_view number(std::string_view bytes)
{
    return bytes.substr(std::min(bytes.find_first_not_of('\0'), bytes.size()));
}

/** The x coordinate of a point, which both ways to write a point begin with. */
std::string_view abscissa(std::string_view point)
{
    constexpr char evenCompressed = 2;
    constexpr char oddCompressed = 3;
    if (point.empty())
        return {};
    const bool compressed = point[0] == evenCompressed || point[0] == oddCompressed;
    return point.substr(1, compressed ? point.npos : (point.size() - 1) / 2);
}

/** Content of a BIT STRING without its count of unused bits. */
std::string_view bits(std::string_view content) { return content.substr(std::min<std::size_t>(1, content.size())); }

} // namespace

std::string_view publicPartOfCertificate(std::string_view certificate)
{
    Elements fields(Elements(Elements(certificate).take(sequence)).take(sequence));
    if (fields.isNext(explicitField0)) // the version, which the oldest leave out
        fields.take(explicitField0);
    fields.skip({integer, sequence, sequence, sequence, sequence}); // number, algorithm, issuer, validity, subject
    Elements keyFields(fields.take(sequence));
    keyFields.take(sequence);
    const std::string_view key = bits(keyFields.take(bitString));
    Elements inside(key);
    return inside.isNext(sequence) ? number(Elements(inside.take(sequence)).take(integer)) : abscissa(key);
}

std::string_view publicPartOfKey(std::string_view keyInfo)
{
    Elements fields(Elements(keyInfo).take(sequence));
    fields.skip({integer, sequence});
    Elements key(Elements(fields.take(octetString)).take(sequence));
    key.take(integer); // the version of either kind
    if (key.isNext(integer))
        return number(key.take(integer));
    key.take(octetString);
    if (key.isNext(explicitField0)) // the curve
        key.take(explicitField0);
    return abscissa(bits(Elements(key.take(explicitField1)).take(bitString)));
}

} // namespace sigil
