// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  What every command needs to know.
 */
#pragma once

#include "options.h"
#include "output.h"

namespace host {

struct Session {
    const Arguments& arguments;
    Output& output;
    std::string folder; ///< library folder: toolkits, settings files and language files
    int toolkit;        ///< enum SigilToolkit

    Language language() const { return output.language(); }
    /** @p words in the language of this run. */
    std::string say(const Words& words, const std::vector<std::string>& values = {}) const
    {
        return filled(words.in(language()), values);
    }
};

} // namespace host
