#include <sigildesk/convert_utf8.h>

#include "foundation/cp949_tables.h"

#include <climits>
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

constexpr bool isContinuation(Byte byte) { return (byte & 0xC0) == 0x80; }

// One character each: the readers move `in` behind what they took, the writers return the place behind what they put.

/** Reads ASCII and Hangul syllables; the first byte of anything else counts as a "?" by itself, deliberately. */
inline unsigned takeUtf8(const Byte*& in, const Byte* end)
{
    const Byte first = *in++;
    if (first < 0x80)
        return first;
    if ((first & 0xF0) != 0xE0 || end - in < 2 || !isContinuation(in[0]) || !isContinuation(in[1]))
        return '?';
    const unsigned unit = (first & 0x0Fu) << 12 | (in[0] & 0x3Fu) << 6 | (in[1] & 0x3Fu);
    if (!isSyllable(unit))
        return '?';
    in += 2;
    return unit;
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

inline Byte* putUtf8(unsigned unit, Byte* out)
{
    if (unit < 0x80) {
        *out = static_cast<Byte>(unit);
        return out + 1;
    }
    if (unit < 0x800) {
        out[0] = static_cast<Byte>(0xC0 | unit >> 6);
        out[1] = static_cast<Byte>(0x80 | (unit & 0x3F));
        return out + 2;
    }
    out[0] = static_cast<Byte>(0xE0 | unit >> 12);
    out[1] = static_cast<Byte>(0x80 | (unit >> 6 & 0x3F));
    out[2] = static_cast<Byte>(0x80 | (unit & 0x3F));
    return out + 3;
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
    *out = unit < 0x80 ? static_cast<Byte>(unit) : '?';
    return out + 1;
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
    std::memcpy(out, buffer.get(), static_cast<std::size_t>(length));
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
    const Bytes buffer = room(2 * size(in, len) + 2);
    Byte* at = buffer.get();
    for (const Byte* end = in + size(in, len); in < end;)
        at = putUnit(takeUtf8(in, end), at);
    return handOut(buffer, at, out, outLen);
}

int ConvertUTF8::unicode2utf8(const unsigned char* in, int len, unsigned char** out, int& outLen)
{
    *out = nullptr;
    const std::size_t bytes = size(in, len);
    if (bytes % 2 != 0)
        return failed;
    const Bytes buffer = room(bytes / 2 * 3);
    Byte* at = buffer.get();
    for (const Byte* end = in + bytes; in < end;)
        at = putUtf8(takeUnit(in), at);
    return handOut(buffer, at, out, outLen);
}

int ConvertUTF8::unicode2ascii(const unsigned char* in, int len, unsigned char** out, int& outLen)
{
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
    // UTF-8 gives no Hangul letters, so unlike that of unicode2ascii this conversion needs no capacity. The text is
    // put together aside, because the output may be the input.
    const Bytes buffer = room(size(in, len));
    Byte* at = buffer.get();
    const Byte* from = reinterpret_cast<const Byte*>(in);
    for (const Byte* end = from + size(in, len); from < end;)
        at = putKsc(takeUtf8(from, end), at);
    return copyOut(buffer, lengthOf(buffer, at), out, outLen);
}

int ConvertUTF8::ascii2unicode(const unsigned char* in, int len, unsigned char** out, int& outLen)
{
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
    const std::size_t bytes = size(in, len);
    const Bytes buffer = room(bytes / 2 * 3 + 1);
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
