// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "jobs/steps.h"

#include "jobs/failure.h"

#include <algorithm>

namespace host {

void Steps::add(const char* name, const Words& words, int code, const std::string& detail)
{
    m_steps.push_back({name, words, code, detail});
}

void Steps::addCode(
    const Setting& setting, const char* name, const Words& words, int code, const std::string& detail)
{
    add(name, words, code, code == SIGIL_SUCCESS ? detail : codeDetail(setting, code, detail));
}

bool Steps::valid() const { return !failed(); }

const Step* Steps::failed() const
{
    const auto step = std::find_if(m_steps.begin(), m_steps.end(), [](const Step& each) { return !each.ok(); });
    return step == m_steps.end() ? nullptr : &*step;
}

std::string codeDetail(const Setting& setting, int code, const std::string& toolkitText)
{
    return Failure::ofCode(code, toolkitText).message(setting.language());
}

} // namespace host
