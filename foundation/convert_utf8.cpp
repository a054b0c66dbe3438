// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include <sigildesk/convert_utf8.h>

#include "foundation/cp949_tables.h"

#include <algorithm>
#include <bit>
#include <climits>
#include <cstdint>
#include <cstring>
#include <functional>
#include <memory>
#include <new>

namespace {

using Byte = unsigned char;
using Bytes = std::unique_ptr<Byte[]>;

constexpr int ok = 0;
constexpr int failed = -1;
constexpr int letterDoesNotFit = 3;
constexpr int noUnit = -1;

constexpr bool isSyllable(unsigned unit) { return unit - sigil::firstSyllable < std::size(sigil::uni2ksc); }

constexpr bool isLetter(unsigned unit) { return unit >= 0x3131 && unit <= 0x318F; }

// Three bytes of UTF-8 are read and written as one number.
static_assert(std::endian::native == std::endian::little);

// One character each: the readers move `in` behind what they took, the writers return the place behind what they put.

/** The fixed bits of a three-byte UTF-8 sequence, as they add up when its bytes are taken for a code point. */
constexpr unsigned sequenceBits = (0xE0 << 12) + (0x80 << 6) + 0x80;

/** Number (from U+AC00) of the Hangul syllable that the four bytes at @p in begin with; beyond the table for anything
 *  else. Four bytes are looked at because one comparison then tells whether two continuation bytes are among them. */
inline unsigned syllableAt(const Byte* in)
{
    std::uint32_t bytes;
    std::memcpy(&bytes, in, sizeof bytes);
    const unsigned codePoint = (in[0] << 12) + (in[1] << 6) + in[2] - sequenceBits;
    return (bytes & 0xC0C000) == 0x808000 ? codePoint - sigil::firstSyllable : UINT_MAX;
}

/** Reads a CP949 character that is none of ASCII: 0 for an unassigned code, noUnit for one outside the table. */
inline int takeKsc(const Byte*& in, const Byte* end)
{
    const Byte lead = *in++;
    if (in == end)
        return noUnit;
    const int index = (lead << 8 | *in++) - sigil::firstKscCode;
    return index >= 0 && index < sigil::kscCodes ? sigil::ksc2uni[index] : noUnit;
}

inline unsigned takeUnit(const Byte*& in)
{
    const unsigned unit = in[0] | static_cast<unsigned>(in[1]) << 8;
    in += 2;
    return unit;
}

inline Byte* putUnit(unsigned unit, Byte* out)
{
    out[0] = static_cast<Byte>(unit);
    out[1] = static_cast<Byte>(unit >> 8);
    return out + 2;
}

inline Byte* putByte(Byte byte, Byte* out)
{
    *out = byte;
    return out + 1;
}

/** Writes up to three bytes; room for four is needed. */
inline Byte* putUtf8(unsigned unit, Byte* out)
{
    if (unit >= 0x800) { // Hangul first
        const std::uint32_t bytes = 0x8080E0 | unit >> 12 | (unit << 2 & 0x3F00) | (unit << 16 & 0x3F0000);
        std::memcpy(out, &bytes, sizeof bytes);
        return out + 3;
    }
    if (unit < 0x80)
        return putByte(static_cast<Byte>(unit), out);
    out[0] = static_cast<Byte>(0xC0 | unit >> 6);
    out[1] = static_cast<Byte>(0x80 | (unit & 0x3F));
    return out + 2;
}

inline Byte* putCode(unsigned code, Byte* out)
{
    out[0] = static_cast<Byte>(code >> 8);
    out[1] = static_cast<Byte>(code);
    return out + 2;
}

/** Writes ASCII and syllables; "?" for anything else. */
inline Byte* putKsc(unsigned unit, Byte* out)
{
    if (isSyllable(unit))
        return putCode(sigil::uni2ksc[unit - sigil::firstSyllable], out);
    return putByte(unit < 0x80 ? static_cast<Byte>(unit) : '?', out);
}

constexpr std::ptrdiff_t blockSize = 16;

inline bool isAsciiBlock(const Byte* in)
{
    std::uint64_t halves[2];
    static_assert(sizeof halves == blockSize);
    std::memcpy(halves, in, sizeof halves);
    return ((halves[0] | halves[1]) & 0x8080808080808080) == 0;
}

// How a text of ASCII and syllables is written: a syllable by its number (from U+AC00), a byte, a block of ASCII.

struct Cp949Writer {
    static Byte* syllable(unsigned number, Byte* out) { return putCode(sigil::uni2ksc[number], out); }
    static Byte* byte(Byte byte, Byte* out) { return putByte(byte, out); }
    static Byte* block(const Byte* in, Byte* out)
    {
        std::memmove(out, in, blockSize); // the output may be the input
        return out + blockSize;
    }
};

struct UnitWriter {
    static Byte* syllable(unsigned number, Byte* out) { return putUnit(sigil::firstSyllable + number, out); }
    static Byte* byte(Byte byte, Byte* out) { return putUnit(byte, out); }
    static Byte* block(const Byte* in, Byte* out)
    {
        std::uint16_t units[blockSize];
        std::copy_n(in, blockSize, units);
        std::memcpy(out, units, sizeof units);
        return out + sizeof units;
    }
};

/** Writes the ASCII that @p in begins with, in blocks as far as they go. Moves @p in behind it. */
template <class Writer>
inline Byte* takeAscii(const Byte*& in, const Byte* end, Byte* out)
{
    for (; end - in >= blockSize && isAsciiBlock(in); in += blockSize)
        out = Writer::block(in, out);
    for (; in < end && *in < 0x80; ++in)
        out = Writer::byte(*in, out);
    return out;
}

/** Converts what begins before @p last; three bytes behind it must be readable. Moves @p in behind what it took. */
template <class Writer>
inline Byte* convertUtf8Part(const Byte*& in, const Byte* last, const Byte* end, Byte* out)
{
    while (in < last) {
        const unsigned syllable = syllableAt(in);
        if (syllable < std::size(sigil::uni2ksc)) {
            out = Writer::syllable(syllable, out);
            in += 3;
        } else if ((*in | in[1]) < 0x80) { // a blank between syllables is no run
            out = takeAscii<Writer>(in, end, out);
        } else {
            out = Writer::byte(*in < 0x80 ? *in : Byte{'?'}, out);
            ++in;
        }
    }
    return out;
}

/** Writes a text: its ASCII and its Hangul syllables, and a "?" for each byte of anything else, deliberately.
 *  @return the place behind what was written */
template <class Writer>
inline Byte* convertUtf8(const Byte* in, std::size_t size, Byte* out)
{
    const Byte* const end = in + size;
    if (size > 3)
        out = convertUtf8Part<Writer>(in, end - 3, end, out);
    // The last bytes are read from a copy with zeros behind them.
    Byte rest[6] = {};
    const Byte* const restEnd = std::copy(in, end, rest);
    const Byte* from = rest;
    return convertUtf8Part<Writer>(from, restEnd, restEnd, out);
}

std::size_t size(const void* in, int len) { return in && len > 0 ? static_cast<std::size_t>(len) : 0; }

Bytes room(std::size_t bytes) { return std::make_unique_for_overwrite<Byte[]>(bytes); }

/** Room for a text in the making: that of a name or a short text is taken from the stack. */
class WorkRoom {
public:
    explicit WorkRoom(std::size_t size)
        : m_large(size > sizeof m_small ? room(size) : nullptr)
    {
    }
    Byte* begin() { return m_large ? m_large.get() : m_small; }

private:
    Bytes m_large;
    Byte m_small[1024];
};

int lengthOf(const Byte* begin, const Byte* end)
{
    if (end - begin > INT_MAX)
        throw std::bad_alloc();
    return static_cast<int>(end - begin);
}

/** Gives the bytes from @p begin to @p end to the caller, in an array of exactly their number. */
int handOut(const Byte* begin, const Byte* end, Byte** out, int& outLen)
{
    const int length = lengthOf(begin, end);
    Bytes exact = room(static_cast<std::size_t>(length));
    std::copy(begin, end, exact.get());
    *out = exact.release();
    outLen = length;
    return ok;
}

/** Number of bytes of ASCII that a text begins with. */
std::size_t asciiAtStart(const Byte* in, std::size_t size)
{
    const Byte* at = in;
    const Byte* const end = in + size;
    while (end - at >= blockSize && isAsciiBlock(at))
        at += blockSize;
    return static_cast<std::size_t>(std::find_if(at, end, [](Byte byte) { return byte >= 0x80; }) - in);
}

/** Converts all of @p in to UTF-8; null when it has a code outside the table. */
Byte* kscToUtf8(const Byte* in, const Byte* end, Byte* out)
{
    while (in < end) {
        if (*in < 0x80) {
            out = takeAscii<Cp949Writer>(in, end, out); // ASCII is the same in all of them
            continue;
        }
        const int unit = takeKsc(in, end);
        if (unit == noUnit)
            return nullptr;
        out = putUtf8(static_cast<unsigned>(unit), out);
    }
    return out;
}

/** True when a text that is written to @p out from its start on overwrites what it has not read yet. */
bool overtakes(const Byte* out, const Byte* in, std::size_t size)
{
    return std::less<>()(in, out) && std::less<>()(out, in + size);
}

} // namespace

int ConvertUTF8::utf82unicode(const unsigned char* in, int len, unsigned char** out, int& outLen)
{
    if (!out)
        return failed;
    WorkRoom work(2 * size(in, len));
    return handOut(work.begin(), convertUtf8<UnitWriter>(in, size(in, len), work.begin()), out, outLen);
}

int ConvertUTF8::unicode2utf8(const unsigned char* in, int len, unsigned char** out, int& outLen)
{
    if (!out)
        return failed;
    *out = nullptr;
    const std::size_t bytes = size(in, len);
    if (bytes % 2 != 0)
        return failed;
    WorkRoom work(bytes / 2 * 3 + 1);
    Byte* at = work.begin();
    for (const Byte* end = in + bytes; in < end;)
        at = putUtf8(takeUnit(in), at);
    return handOut(work.begin(), at, out, outLen);
}

int ConvertUTF8::unicode2ascii(const unsigned char* in, int len, unsigned char** out, int& outLen)
{
    if (!out)
        return failed;
    *out = nullptr;
    const std::size_t bytes = size(in, len) / 2 * 2;
    const long capacity = outLen;
    WorkRoom work(bytes);
    Byte* at = work.begin();
    for (const Byte* end = in + bytes; in < end;) {
        const unsigned unit = takeUnit(in);
        if (!isLetter(unit)) {
            at = putKsc(unit, at);
            continue;
        }
        // Only letters are held against the capacity; everything else fits by the size of the input.
        if (capacity - 1 <= at - work.begin())
            return letterDoesNotFit;
        at = putCode(sigil::uni2ksc_consonant[unit - 0x3130], at);
    }
    return handOut(work.begin(), at, out, outLen);
}

int ConvertUTF8::utf82ascii(const char* in, int len, char* out, int& outLen)
{
    if (!out)
        return failed;
    // UTF-8 gives no Hangul letters, so unlike that of unicode2ascii this conversion needs no capacity. The result is
    // nowhere longer than what was read for it, so that it can be written at once, also over the input.
    const std::size_t bytes = size(in, len);
    const Byte* from = reinterpret_cast<const Byte*>(in);
    Byte* const to = reinterpret_cast<Byte*>(out);
    Bytes copy;
    if (overtakes(to, from, bytes)) {
        copy = room(bytes);
        std::memcpy(copy.get(), from, bytes);
        from = copy.get();
    }
    outLen = lengthOf(to, convertUtf8<Cp949Writer>(from, bytes, to));
    return ok;
}

int ConvertUTF8::ascii2unicode(const unsigned char* in, int len, unsigned char** out, int& outLen)
{
    if (!out)
        return failed;
    *out = nullptr;
    WorkRoom work(2 * size(in, len));
    Byte* at = work.begin();
    for (const Byte* end = in + size(in, len); in < end;) {
        if (*in < 0x80) {
            at = takeAscii<UnitWriter>(in, end, at);
            continue;
        }
        const int unit = takeKsc(in, end);
        if (unit == noUnit)
            return failed;
        at = putUnit(static_cast<unsigned>(unit), at);
    }
    return handOut(work.begin(), at, out, outLen);
}

int ConvertUTF8::ascii2utf8(const char* in, int len, char* out, int& outLen)
{
    if (!out)
        return failed;
    // Nothing is written before the whole text is known to be good. ASCII at its start always is, and needs no room.
    const std::size_t bytes = size(in, len);
    const Byte* const from = reinterpret_cast<const Byte*>(in);
    const std::size_t ascii = asciiAtStart(from, bytes);
    WorkRoom work((bytes - ascii) / 2 * 3 + 2);
    const Byte* const end = kscToUtf8(from + ascii, from + bytes, work.begin());
    if (!end)
        return failed;
    const int rest = lengthOf(work.begin(), end);
    // The rule of the system, kept as it stands: a result shorter than the input is refused. It comes about only
    // through unassigned codes, which give one byte for two.
    if (ascii + static_cast<std::size_t>(rest) < bytes)
        return failed;
    if (ascii + static_cast<std::size_t>(rest) > INT_MAX)
        throw std::bad_alloc();
    if (ascii > 0)
        std::memmove(out, in, ascii);
    std::copy(static_cast<const Byte*>(work.begin()), end, reinterpret_cast<Byte*>(out) + ascii);
    outLen = static_cast<int>(ascii) + rest;
    return ok;
}
