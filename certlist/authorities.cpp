// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "certlist/authorities.h"

#include "foundation/ascii.h"

#include <sigildesk/profile.h>

#include <algorithm>
#include <string>

namespace sigil {

namespace {

/** More authorities than any list of trust holds: a damaged number must not keep the caller waiting. */
constexpr int mostAuthorities = 4096;

/** The root that is never fetched. */
constexpr char militaryRoot[] = "cn=Root CA,ou=MPKI,o=Ministry of National Defense,c=KR";

int authorityCount(char* file)
{
    char section[] = "VALIDATOIN_OPTION"; // spelt so in the toolkit's settings
    char key[] = "CA_INFO_COUNT";
    return std::clamp(FileGetPrivateProfileInt(section, key, 0, file), 0, mostAuthorities);
}

Authority readAuthority(char* file, int number)
{
    Authority authority{};
    std::string section = "CA_INFO" + std::to_string(number);
    char dnKey[] = "CA_DN";
    char urlKey[] = "DIR_URL";
    char none[] = "";
    FileGetPrivateProfileString(section.data(), dnKey, none, authority.dn, sizeof authority.dn, file);
    FileGetPrivateProfileString(section.data(), urlKey, none, authority.url, sizeof authority.url, file);
    return authority;
}

} // namespace

bool mayBeFetched(const char* dn) { return !equalsIgnoringCase(dn, militaryRoot); }

std::vector<Authority> readAuthorities(const char* confFile)
{
    auto* file = const_cast<char*>(confFile); // only read
    std::vector<Authority> authorities;
    const int count = authorityCount(file);
    for (int i = 1; i <= count; ++i)
        authorities.push_back(readAuthority(file, i));
    return authorities;
}

} // namespace sigil
