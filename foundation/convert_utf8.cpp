#include <sigildesk/convert_utf8.h>

#include "foundation/cp949_tables.h"

#include <algorithm>
#include <bit>
#include <climits>
#include <cstdint>
#include <cstring>
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

/** Converts what begins before @p end; three bytes behind it must be readable. Moves @p in behind what it took. */
template <class PutSyllable, class PutByte>
inline Byte* convertUtf8Part(const Byte*& in, const Byte* end, Byte* out, PutSyllable putSyllable, PutByte putOther)
{
    while (in < end) {
        const unsigned syllable = syllableAt(in);
        if (syllable < std::size(sigil::uni2ksc)) {
            out = putSyllable(syllable, out);
            in += 3;
        } else {
            out = putOther(*in < 0x80 ? *in : Byte{'?'}, out);
            ++in;
        }
    }
    return out;
}

/** Writes a text with @p putSyllable, given the number (from U+AC00) of each Hangul syllable, and @p putOther, given
 *  every other byte: itself for ASCII, else a "?". So other characters give a "?" for each byte, deliberately.
 *  @return the place behind what was written */
template <class PutSyllable, class PutByte>
inline Byte* convertUtf8(const Byte* in, std::size_t size, Byte* out, PutSyllable putSyllable, PutByte putOther)
{
    const Byte* const end = in + size;
    if (size > 3)
        out = convertUtf8Part(in, end - 3, out, putSyllable, putOther);
    // The last bytes are read from a copy with zeros behind them.
    Byte rest[6] = {};
    std::copy(in, end, rest);
    const Byte* from = rest;
    return convertUtf8Part(from, rest + (end - in), out, putSyllable, putOther);
}

/** Reads a CP949 character: 0 for an unassigned code, noUnit for one outside the table. */
inline int takeKsc(const Byte*& in, const Byte* end)
{
    const Byte lead = *in++;
    if (lead < 0x80)
        return lead;
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

std::size_t size(const void* in, int len) { return in && len > 0 ? static_cast<std::size_t>(len) : 0; }

Bytes room(std::size_t bytes) { return std::make_unique_for_overwrite<Byte[]>(bytes); }

int lengthOf(const Bytes& buffer, const Byte* end)
{
    if (end - buffer.get() > INT_MAX)
        throw std::bad_alloc();
    return static_cast<int>(end - buffer.get());
}

/** Gives the bytes of @p buffer up to @p end to the caller, in an array of exactly their number. */
int handOut(const Bytes& buffer, const Byte* end, Byte** out, int& outLen)
{
    const int length = lengthOf(buffer, end);
    Bytes exact = room(static_cast<std::size_t>(length));
    std::memcpy(exact.get(), buffer.get(), static_cast<std::size_t>(length));
    *out = exact.release();
    outLen = length;
    return ok;
}

int copyOut(const Bytes& buffer, int length, char* out, int& outLen)
{
    std::copy_n(buffer.get(), length, reinterpret_cast<Byte*>(out));
    outLen = length;
    return ok;
}

/** Converts all of @p in to UTF-8; null when it has a code outside the table. */
Byte* kscToUtf8(const Byte* in, const Byte* end, Byte* out)
{
    while (in < end) {
        const int unit = takeKsc(in, end);
        if (unit == noUnit)
            return nullptr;
        out = putUtf8(static_cast<unsigned>(unit), out);
    }
    return out;
}

} // namespace

int ConvertUTF8::utf82unicode(const unsigned char* in, int len, unsigned char** out, int& outLen)
{
    if (!out)
        return failed;
    const Bytes buffer = room(2 * size(in, len) + 2);
    const Byte* end = convertUtf8(
        in, size(in, len), buffer.get(),
        [](unsigned syllable, Byte* at) { return putUnit(sigil::firstSyllable + syllable, at); }, putUnit);
    return handOut(buffer, end, out, outLen);
}

int ConvertUTF8::unicode2utf8(const unsigned char* in, int len, unsigned char** out, int& outLen)
{
    if (!out)
        return failed;
    *out = nullptr;
    const std::size_t bytes = size(in, len);
    if (bytes % 2 != 0)
        return failed;
    const Bytes buffer = room(bytes / 2 * 3 + 1);
    Byte* at = buffer.get();
    for (const Byte* end = in + bytes; in < end;)
        at = putUtf8(takeUnit(in), at);
    return handOut(buffer, at, out, outLen);
}

int ConvertUTF8::unicode2ascii(const unsigned char* in, int len, unsigned char** out, int& outLen)
{
    if (!out)
        return failed;
    *out = nullptr;
    const std::size_t bytes = size(in, len) / 2 * 2;
    const long capacity = outLen;
    const Bytes buffer = room(bytes);
    Byte* at = buffer.get();
    for (const Byte* end = in + bytes; in < end;) {
        const unsigned unit = takeUnit(in);
        if (!isLetter(unit)) {
            at = putKsc(unit, at);
            continue;
        }
        // Only letters are held against the capacity; everything else fits by the size of the input.
        if (capacity - 1 <= at - buffer.get())
            return letterDoesNotFit;
        at = putCode(sigil::uni2ksc_consonant[unit - 0x3130], at);
    }
    return handOut(buffer, at, out, outLen);
}

int ConvertUTF8::utf82ascii(const char* in, int len, char* out, int& outLen)
{
    if (!out)
        return failed;
    // UTF-8 gives no Hangul letters, so unlike that of unicode2ascii this conversion needs no capacity. The text is
    // put together aside, because the output may be the input.
    const Bytes buffer = room(size(in, len));
    const Byte* from = reinterpret_cast<const Byte*>(in);
    const Byte* end = convertUtf8(
        from, size(in, len), buffer.get(),
        [](unsigned syllable, Byte* at) { return putCode(sigil::uni2ksc[syllable], at); }, putByte);
    return copyOut(buffer, lengthOf(buffer, end), out, outLen);
}

int ConvertUTF8::ascii2unicode(const unsigned char* in, int len, unsigned char** out, int& outLen)
{
    if (!out)
        return failed;
    *out = nullptr;
    const Bytes buffer = room(2 * size(in, len));
    Byte* at = buffer.get();
    for (const Byte* end = in + size(in, len); in < end;) {
        const int unit = takeKsc(in, end);
        if (unit == noUnit)
            return failed;
        at = putUnit(static_cast<unsigned>(unit), at);
    }
    return handOut(buffer, at, out, outLen);
}

int ConvertUTF8::ascii2utf8(const char* in, int len, char* out, int& outLen)
{
    if (!out)
        return failed;
    const std::size_t bytes = size(in, len);
    const Bytes buffer = room(bytes / 2 * 3 + 2);
    const Byte* from = reinterpret_cast<const Byte*>(in);
    const Byte* end = kscToUtf8(from, from + bytes, buffer.get());
    if (!end)
        return failed;
    const int length = lengthOf(buffer, end);
    // The rule of the system, kept as it stands: a result shorter than the input is refused. It comes about only
    // through unassigned codes, which give one byte for two.
    if (static_cast<std::size_t>(length) < bytes)
        return failed;
    return copyOut(buffer, length, out, outLen);
}
