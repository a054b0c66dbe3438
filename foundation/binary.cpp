// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include <sigildesk/binary.h>

#include "foundation/ascii.h"
#include "foundation/hex.h"
#include "foundation/secret.h"

#include <algorithm>
#include <climits>
#include <cstring>
#include <memory>
#include <new>
#include <string_view>

namespace {

using Block = std::unique_ptr<char[]>;

// The wipe value is 0xCD, not zero, so that wiped memory is recognised in a dump.
constexpr unsigned char wipeValue = 0xCD;

std::string_view view(const char* data, long length)
{
    return data && length > 0 ? std::string_view(data, static_cast<std::size_t>(length)) : std::string_view();
}

std::string_view bytesOf(const CBinary& binary) { return view(binary.m_pData, binary.m_nLength); }

/** A block for @p length bytes and the zero byte behind them, all zero. */
Block zeroedBlock(std::size_t length)
{
    if (length > INT_MAX)
        throw std::bad_alloc();
    return std::make_unique<char[]>(length + 1);
}

Block joined(std::string_view left, std::string_view right)
{
    Block block = zeroedBlock(left.size() + right.size());
    left.copy(block.get(), left.size());
    right.copy(block.get() + left.size(), right.size());
    return block;
}

/** A copy of the bytes, null for none. */
Block copyOf(std::string_view bytes) { return bytes.empty() ? nullptr : joined(bytes, {}); }

/** Puts @p fresh in the place of a block whose first @p used bytes hold data. Called when the copy is complete, so
 *  that the old block may have been its source. */
void replace(char*& owned, std::size_t used, Block fresh)
{
    sigil::wipe(owned, used, wipeValue);
    delete[] owned;
    owned = fresh.release();
}

void replaceData(CBinary& binary, Block fresh, std::size_t length)
{
    replace(binary.m_pData, bytesOf(binary).size(), std::move(fresh));
    binary.m_nLength = static_cast<int>(length);
}

void append(CBinary& binary, std::string_view bytes)
{
    const std::string_view old = bytesOf(binary);
    const std::size_t length = old.size() + bytes.size();
    replaceData(binary, joined(old, bytes), length);
}

} // namespace

CBinary::CBinary()
    : m_pData(nullptr)
    , m_nLength(0)
    , m_nStringLength(0)
    , m_pString(nullptr)
    , m_pHexString(nullptr)
{
}

CBinary::CBinary(char* data, int len)
    : CBinary()
{
    set(data, len);
}

CBinary::CBinary(const CBinary& source)
    : CBinary()
{
    const std::string_view bytes = bytesOf(source);
    replaceData(*this, copyOf(bytes), bytes.size());
    if (!source.m_pString)
        return;
    // The text may be older than the data, shorter or longer: it is copied as far as the data and the zero byte behind
    // it reach, and never past its own end.
    const std::string_view text =
        view(source.m_pString, std::min(long{source.m_nStringLength}, source.m_nLength + 1L));
    replace(m_pString, 0, joined(text, {}));
    m_nStringLength = static_cast<int>(text.size());
}

CBinary::~CBinary() { empty(); }

CBinary& CBinary::operator=(CBinary& source)
{
    if (this == &source)
        return *this;
    const std::string_view bytes = bytesOf(source);
    replaceData(*this, copyOf(bytes), bytes.size());
    return *this;
}

CBinary& CBinary::operator=(char* text)
{
    const std::string_view bytes = sigil::textOf(text);
    replaceData(*this, copyOf(bytes), bytes.size());
    return *this;
}

void CBinary::empty()
{
    replaceData(*this, nullptr, 0);
    replace(m_pString, view(m_pString, m_nStringLength).size(), nullptr);
    replace(m_pHexString, sigil::textOf(m_pHexString).size(), nullptr);
    m_nStringLength = 0;
}

bool CBinary::isEmpty() { return !m_pData || m_nLength == 0; }

void CBinary::set(char* data, int len)
{
    const std::string_view bytes = view(data, len);
    Block copy = copyOf(bytes);
    empty();
    replaceData(*this, std::move(copy), bytes.size());
}

// Every release wipes; this name says where a caller depends on it.
void CBinary::zeroEmpty() { empty(); }

CBinary CBinary::getSub(int start, int len)
{
    const bool inside = start >= 0 && len > 0 && static_cast<long>(start) + len <= m_nLength;
    return inside ? CBinary(m_pData + start, len) : CBinary();
}

char* CBinary::toString()
{
    const std::string_view bytes = bytesOf(*this);
    if (bytes.empty())
        return nullptr;
    replace(m_pString, view(m_pString, m_nStringLength).size(), copyOf(bytes));
    m_nStringLength = m_nLength;
    return m_pString;
}

char* CBinary::toHexString()
{
    const std::string_view bytes = bytesOf(*this);
    if (bytes.empty())
        return nullptr;
    Block text = std::make_unique<char[]>(2 * bytes.size() + 1);
    sigil::writeHex(bytes.data(), bytes.size(), text.get());
    replace(m_pHexString, sigil::textOf(m_pHexString).size(), std::move(text));
    return m_pHexString;
}

int CBinary::fromHexString(char* hex)
{
    const std::size_t length = sigil::textOf(hex).size() / 2;
    Block bytes = length > 0 ? zeroedBlock(length) : nullptr;
    const bool valid = hex && sigil::readHex(hex, length, bytes.get());
    empty();
    replaceData(*this, std::move(bytes), length);
    return valid ? 0 : -1;
} // NOLINT(clang-analyzer-cplusplus.NewDeleteLeaks): the block belongs to m_pData now

int CBinary::find(unsigned char* pattern, long len)
{
    if (!pattern || !m_pData || len < 1 || len > m_nLength)
        return -1;
    const void* hit = memmem(m_pData, static_cast<std::size_t>(m_nLength), pattern, static_cast<std::size_t>(len));
    return hit ? static_cast<int>(static_cast<const char*>(hit) - m_pData) : -1;
}

int CBinary::find(char* text)
{
    return text ? find(reinterpret_cast<unsigned char*>(text), static_cast<long>(std::strlen(text))) : -1;
}

CBinary operator+(CBinary& left, CBinary& right)
{
    CBinary sum(left.m_pData, left.m_nLength);
    sum += right;
    return sum;
}

CBinary& operator+=(CBinary& left, CBinary& right)
{
    if (!bytesOf(right).empty())
        append(left, bytesOf(right));
    return left;
}

CBinary& operator+=(CBinary& left, char* right)
{
    if (right)
        append(left, sigil::textOf(right));
    return left;
}

bool operator==(CBinary& left, CBinary& right)
{
    if (left.m_nLength != right.m_nLength)
        return false;
    if (!left.m_pData || !right.m_pData)
        return !left.m_pData && !right.m_pData;
    return bytesOf(left) == bytesOf(right);
}

bool operator!=(CBinary& left, CBinary& right) { return !(left == right); }
