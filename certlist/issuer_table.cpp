// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "certlist/issuer_table.h"

#include "foundation/ascii.h"
#include "foundation/profile_file.h"

#include <algorithm>
#include <utility>

namespace sigil {

namespace {

constexpr std::size_t longestText = 259;

std::string shortText(std::string_view text) { return std::string(text.substr(0, longestText)); }

} // namespace

const char* IssuerTable::read(const char* path)
{
    const ProfileFile file(path);
    const int count = toInt(std::string(file.value("Info_count", "Issuer_Info")).c_str());
    m_rows.clear();
    for (int i = 1; i <= count; ++i) {
        const std::string issuer = "Issuer_Info" + std::to_string(i);
        Row row{shortText(file.value(issuer, "cn")), shortText(file.value(issuer, "name"))};
        // The misspelt words are those that readers of the log look for.
        if (row.cn.empty())
            return "read fail( Isser_info,cn info)";
        if (row.name.empty())
            return "read fail( Isser_info,name info)";
        m_rows.push_back(std::move(row));
    }
    return nullptr;
}

const std::string* IssuerTable::nameOf(std::string_view cn) const
{
    const auto row =
        std::find_if(m_rows.rbegin(), m_rows.rend(), [&](const Row& r) { return equalsIgnoringCase(r.cn, cn); });
    return row == m_rows.rend() ? nullptr : &row->name;
}

} // namespace sigil
