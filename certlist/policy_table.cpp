// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "certlist/policy_table.h"

#include "certlist/codes.h"
#include "foundation/file.h"
#include "foundation/text_field.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <climits>
#include <cstdio>
#include <utility>

namespace sigil {

namespace {

long sizeOf(std::FILE* file)
{
    static_cast<void>(std::fseek(file, 0, SEEK_END)); // possible in whatever has a size
    const long size = std::ftell(file);
    std::rewind(file);
    return size;
}

} // namespace

PolicyFileResult readPolicyFile(const char* path, CBinary& content)
{
    const File file = openForReading(path);
    // What is there and is no file (a folder, a pipe, a device) opens, but has no size.
    if (!file && faccessat(AT_FDCWD, path, R_OK, AT_EACCESS) != 0)
        return {SIGIL_SETTINGS_INCOMPLETE, "fopen"};
    const long size = file ? sizeOf(file.get()) : 0;
    if (size < 1 || size >= INT_MAX)
        return {SIGIL_SETTINGS_UNREADABLE, "fseek"};
    std::string bytes(static_cast<std::size_t>(size), '\0');
    bytes.resize(std::fread(bytes.data(), 1, bytes.size(), file.get()));
    if (bytes.empty())
        return {SIGIL_SETTINGS_UNREADABLE, "fread"};
    content.set(bytes.data(), static_cast<int>(bytes.size()));
    return {SIGIL_SUCCESS, nullptr};
}

void PolicyTable::build(std::string_view content)
{
    constexpr std::size_t longestOid = sizeof(tagPOLICYID::szOID) - 1;
    constexpr std::size_t longestName = sizeof(tagPOLICYID::szName) - 1;
    m_names.clear();
    for (std::size_t start = 0, end; (end = content.find('\n', start)) != content.npos; start = end + 1) {
        const std::string_view line = content.substr(start, end - start);
        const std::size_t equals = line.find('=');
        if (equals == line.npos)
            continue;
        std::string oid(line.substr(0, std::min(equals, longestOid)));
        std::replace(oid.begin(), oid.end(), '.', ' ');
        m_names.insert_or_assign(std::move(oid), line.substr(equals + 1, longestName));
    }
}

const std::string* PolicyTable::nameOf(std::string_view oid) const
{
    const auto row = m_names.find(oid);
    return row == m_names.end() ? nullptr : &row->second;
}

void PolicyFilter::choose(std::string_view list)
{
    const int count = ParsingPolicyIDS(list, false);
    if (m_rows.empty() && count > 0) {
        // All room first: when memory runs out, nothing is stored and the filter stays as it was.
        m_rows.reserve(static_cast<std::size_t>(count));
        ParsingPolicyIDS(list, true);
    }
    m_count = std::min(count, static_cast<int>(m_rows.size()));
}

int PolicyFilter::ParsingPolicyIDS(std::string_view list, bool bStore)
{
    int count = 0;
    for (std::size_t start = 0, bar; (bar = list.find('|', start)) != list.npos; start = bar + 1) {
        if (bStore) {
            m_rows.push_back({});
            copyText(m_rows.back().szOID, list.substr(start, bar - start));
        }
        ++count;
        if (bar == 0)
            break;
    }
    return count;
}

bool PolicyFilter::accepts(char* oid)
{
    return m_count == 0 || m_util.CheckPolicyID(oid, m_rows.data(), m_count) == 1;
}

} // namespace sigil
