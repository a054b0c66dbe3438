// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Display names of certificate policies, and the caller's choice of policies to list.
 */
#pragma once

#include "foundation/ascii.h"

#include <sigildesk/binary.h>
#include <sigildesk/util.h>

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace sigil {

/** What reading the policy settings file ran into: the C function that failed, null when it went well, and the code. */
struct PolicyFileResult {
    int code;
    const char* failedCall;
};

/** Reads the whole file at @p path into @p content.
 *  @return 1100 "fopen": path empty or does not open; 1102 "fseek": empty, or no regular file; 1102 "fread": not
 *          readable */
PolicyFileResult readPolicyFile(const char* path, CBinary& content);

/** Display names by policy OID.
 *
 *  Format of the file: one policy per line, "OID=name", the OID with dots. The OID is kept with blanks instead (at most
 *  29 bytes), as the toolkits print it; the name (at most 59 bytes) is all that follows the first "=". Nothing is
 *  trimmed. Each line ends with a line feed: a last line without one does not count. */
class PolicyTable {
public:
    /** Replaces the table by what @p content holds. Lines without "=" name nothing and are left out. */
    void build(std::string_view content);

    /** Display name of @p oid, which is compared ignoring case; null when it is not listed. The last of equal OIDs wins. */
    const std::string* nameOf(std::string_view oid) const;

private:
    std::map<std::string, std::string, LessIgnoringCase> m_names;
};

/** The policies that a caller wants listed: blank-separated OIDs (at most 39 bytes), each followed by "|". */
class PolicyFilter {
public:
    /** Takes the OIDs of @p list. The table is filled by the first list that holds any and stays so: later lists only
     *  change how many of its rows count, deliberately. */
    void choose(std::string_view list);

    /** Reads the items of @p list; an item without a "|" after it does not count, and a "|" at the very start ends
     *  the list behind its empty item.
     *  @param bStore  keep them
     *  @return their number */
    int ParsingPolicyIDS(std::string_view list, bool bStore);

    /** True when every policy is welcome, or @p oid is one of the chosen. */
    bool accepts(char* oid);

private:
    std::vector<tagSETOID> m_rows;
    int m_count = 0;
    CUtil m_util{0, nullptr}; ///< without a language file
};

} // namespace sigil
