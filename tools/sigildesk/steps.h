// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  A judgement in steps: each on a line, or in {"valid", "steps": [{"step", "ok", "detail"}]}.
 */
#pragma once

#include "session.h"

#include <string>
#include <vector>

namespace host {

class Steps {
public:
    /** @param name  in JSON; @param words  for a person */
    void add(const char* name, const Words& words, bool ok, const std::string& detail);
    /** A step of which a result of the library tells how it went. */
    void addCode(const Session& session, const char* name, const Words& words, int code, const std::string& detail);
    /** Whether all of them went well. */
    bool valid() const;
    Json json() const;
    void print(const Session& session) const;

private:
    struct Step {
        const char* name;
        Words words;
        bool ok;
        std::string detail;
    };
    std::vector<Step> m_steps;
};

/** "what happened (3201: what the toolkit said)". */
std::string codeDetail(const Session& session, int code, const std::string& toolkitText);

} // namespace host
