// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  What the doctor finds.
 */
#pragma once

#include <string>
#include <vector>

namespace sigil {

/** One candidate file or pair, or a folder that hides some. */
struct Finding {
    std::string path;
    bool listed;
    std::string rule;   ///< of the table in doctor/rules.h
    std::string detail; ///< UTF-8, in the language asked for
    std::string mend;   ///< the same; empty when there is nothing to mend

    bool amiss() const { return rule != "listed"; }
};

/** One folder that the list searches. */
struct SearchedPlace {
    std::string path;
    std::string family; ///< "npki"
    int error;          ///< 0; why it cannot be opened, as errno has it
    int candidates = 0;
    int listed = 0;
};

struct StoreReport {
    int code = 0; ///< result of building the list
    std::vector<Finding> findings;
    std::vector<SearchedPlace> folders;
};

/** One part that the list depends on. */
struct Check {
    std::string name; ///< "library_folder", "toolkit", "settings", "home_folder", "removable_disk"
    std::string path;
    bool ok;
    std::string detail;
    std::string mend;
};

} // namespace sigil
