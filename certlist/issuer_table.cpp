#include "certlist/issuer_table.h"

#include "foundation/ascii.h"

#include <sigildesk/profile.h>

#include <algorithm>
#include <utility>

namespace sigil {

namespace {

std::string lookup(const std::string& section, const char* key, const char* path)
{
    char value[260];
    char noDefault[] = "";
    // The profile reader takes its texts as plain pointers and only reads them.
    FileGetPrivateProfileString(const_cast<char*>(section.c_str()), const_cast<char*>(key), noDefault, value,
        sizeof value, const_cast<char*>(path));
    return value;
}

} // namespace

const char* IssuerTable::read(const char* path)
{
    char section[] = "Info_count";
    char key[] = "Issuer_Info";
    const int count = FileGetPrivateProfileInt(section, key, 0, const_cast<char*>(path));
    m_rows.clear();
    for (int i = 1; i <= count; ++i) {
        const std::string issuer = "Issuer_Info" + std::to_string(i);
        Row row{lookup(issuer, "cn", path), lookup(issuer, "name", path)};
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
