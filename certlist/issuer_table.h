// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Display names of certificate issuers.
 */
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace sigil {

/** Display names by the issuer's "cn=" value.
 *
 *  Format of the file (a profile file, see <sigildesk/profile.h>): key "Issuer_Info" of section "Info_count" is the
 *  number of issuers; each has a section "Issuer_Info1", "Issuer_Info2" ... with the keys "cn" and "name" (at most 259
 *  bytes each). A missing file counts as one without issuers. */
class IssuerTable {
public:
    /** Reads the table from @p path. The issuers before one that lacks a key are kept.
     *  @return null; or what is wrong with the file, in the words of the log, when an issuer lacks a key */
    const char* read(const char* path);

    /** Display name for @p cn (ignoring case): that of the last issuer with this name; null when there is none. */
    const std::string* nameOf(std::string_view cn) const;

private:
    struct Row {
        std::string cn;
        std::string name;
    };
    std::vector<Row> m_rows;
};

} // namespace sigil
