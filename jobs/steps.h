// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  A judgement in steps.
 */
#pragma once

#include "jobs/setting.h"

#include <sigildesk/codes.h>

#include <string>
#include <vector>

namespace host {

struct Step {
    const char* name; ///< for a program
    Words words;      ///< for a person
    int code;         ///< how it went, a result of the library
    std::string detail;

    bool ok() const { return code == SIGIL_SUCCESS; }
};

class Steps {
public:
    /** A step of which a result of the library tells how it went. @p detail is what the toolkit said about another one than 0. */
    void addCode(const Setting& setting, const char* name, const Words& words, int code, const std::string& detail);
    /** A step with its detail in full. */
    void add(const char* name, const Words& words, int code, const std::string& detail);
    /** Whether all of them went well. */
    bool valid() const;
    /** The first that did not; null when all did. */
    const Step* failed() const;
    const std::vector<Step>& all() const { return m_steps; }

private:
    std::vector<Step> m_steps;
};

/** "what happened (3201: what the toolkit said)". */
std::string codeDetail(const Setting& setting, int code, const std::string& toolkitText);

} // namespace host
