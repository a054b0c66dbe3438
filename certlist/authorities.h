// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  The certification authorities that the toolkit settings file names.
 */
#pragma once

#include <string_view>
#include <vector>

namespace sigil {

struct Authority {
    char dn[100];  ///< distinguished name, most specific part first
    char url[100]; ///< address of its directory; empty when it has none

    /** A trust anchor, by its name. */
    bool isRoot() const { return std::string_view(dn).find("Root") != std::string_view::npos; }
};

/** Whether the certificate of this authority may be fetched: that of the defence root never is. */
bool mayBeFetched(const char* dn);

/** All of them, in the order of the file; empty when it names none or cannot be read.
 *  @param confFile  path of "HVCToolkitV30.conf" */
std::vector<Authority> readAuthorities(const char* confFile);

} // namespace sigil
