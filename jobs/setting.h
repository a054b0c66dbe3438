// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  What every job needs to know.
 */
#pragma once

#include "jobs/words.h"

#include <string>
#include <vector>

namespace host {

struct Setting {
    std::string folder; ///< library folder: toolkits, settings files and language files
    int toolkit;        ///< enum SigilToolkit
    Language tongue;

    Language language() const { return tongue; }
    /** @p words in the language of this run. */
    std::string say(const Words& words, const std::vector<std::string>& values = {}) const
    {
        return filled(words.in(tongue), values);
    }
};

} // namespace host
