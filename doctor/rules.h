// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  The rules by which certificates are listed or left out, a row each: the name that scripts compare, what a finding says,
 *  and how to mend it. Whoever adds a rule adds a row, and its line in docs/command-line.md.
 */
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace sigil {

/** A text in both languages, UTF-8. "{0}", "{1}" ... stand for the values of a finding. */
struct BothLanguages {
    const char* english;
    const char* korean;

    /** The text of enum SigilLanguage, with its values. */
    std::string in(int language, const std::vector<std::string>& values = {}) const;
};

struct Rule {
    const char* name; ///< snake_case
    BothLanguages detail;
    BothLanguages mend;
};

std::span<const Rule> rules();

/** The rule of this name, which exists. */
const Rule& ruleNamed(std::string_view name);

} // namespace sigil
