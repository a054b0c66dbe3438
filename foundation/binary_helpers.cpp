// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// CUtil: cutting, searching and replacing on byte buffers and texts.

#include <sigildesk/util.h>

#include "foundation/ascii.h"

#include <algorithm>
#include <climits>
#include <cstring>
#include <new>
#include <string>
#include <string_view>

namespace {

constexpr int notFound = -1;

/** Sets @p out to the bytes of [start, start + n) that @p source has. */
int cut(CBinary& source, CBinary* out, long start, long n)
{
    if (!out)
        return -1;
    const long from = std::clamp<long>(start, 0, source.m_nLength);
    const long to = std::clamp<long>(start + n, from, source.m_nLength);
    out->set(source.m_pData + from, static_cast<int>(to - from));
    return 0;
}

/** BinaryFind2 without its copy of the source: what walks over many fields would otherwise copy it for each. */
int findFrom(CBinary& source, char* text, int start)
{
    if (start == 0)
        return source.find(text);
    if (sigil::textOf(text).empty() || start < 0 || start >= source.m_nLength)
        return notFound;
    const char* hit = std::strstr(source.m_pData + start, text);
    return hit ? static_cast<int>(hit - source.m_pData) : notFound;
}

std::string replaced(std::string_view text, std::string_view from, std::string_view to)
{
    std::size_t hits = 0;
    for (std::size_t at = text.find(from); at != std::string_view::npos; at = text.find(from, at + from.size()))
        ++hits;
    if (hits > 0 && to.size() > INT_MAX / hits)
        throw std::bad_alloc();

    std::string result;
    result.reserve(text.size() + hits * to.size() - hits * from.size());
    std::size_t done = 0;
    for (std::size_t at = text.find(from); at != std::string_view::npos; at = text.find(from, done)) {
        result.append(text, done, at - done).append(to);
        done = at + from.size();
    }
    return result.append(text, done);
}

} // namespace

int CUtil::BinaryLeft(CBinary src, CBinary* out, int n) { return cut(src, out, 0, n); }

int CUtil::BinaryMid(CBinary src, CBinary* out, int start, int n) { return cut(src, out, start, n); }

int CUtil::BinaryRight(CBinary src, CBinary* out, int n)
{
    const int kept = std::clamp(n, 0, src.m_nLength);
    return cut(src, out, src.m_nLength - kept, kept);
}

int CUtil::BinaryFind2(CBinary src, char* text, int start) { return findFrom(src, text, start); }

int CUtil::BinaryFindCount(CBinary src, char* text, int& pos)
{
    pos = -1;
    int count = 0;
    const std::string_view bytes =
        src.isEmpty() ? std::string_view() : std::string_view(src.m_pData, static_cast<std::size_t>(src.m_nLength));
    const std::string_view wanted = sigil::textOf(text);
    if (wanted.empty())
        return 0;
    for (std::size_t at = bytes.find(wanted); at != std::string_view::npos; at = bytes.find(wanted, at + 1)) {
        pos = static_cast<int>(at);
        ++count;
    }
    // A single hit is reported one further than where it is; callers count on it.
    if (count == 1)
        ++pos;
    return count;
}

int CUtil::ParingFindCnt(CBinary src, char* sep, int* count)
{
    if (!count)
        return -1;
    *count = 0;
    // One byte behind the start of each hit, however long the separator is.
    for (int hit = findFrom(src, sep, 0); hit != notFound; hit = findFrom(src, sep, hit + 1))
        ++*count;
    return 0;
}

int CUtil::ReplaceAll(char* src, const char* from, const char* to, CBinary* out)
{
    if (sigil::textOf(from).empty() || !out)
        return -1;
    try {
        std::string result = replaced(sigil::textOf(src), from, sigil::textOf(to));
        if (result.size() <= INT_MAX)
            out->set(result.data(), static_cast<int>(result.size()));
    } catch (const std::bad_alloc&) {
        // The result stays what it was; callers do not tell this case apart.
    }
    return 0;
}
