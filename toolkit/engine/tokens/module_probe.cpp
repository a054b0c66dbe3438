// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "toolkit/engine/tokens/module_probe.h"

#include "toolkit/engine/base/helper_program.h"

namespace toolkit {
namespace {

constexpr std::chrono::seconds longestProbe{10};
constexpr char started = '+';

} // namespace

std::string probeModule(const std::string& file, const char* reserved)
{
    std::vector<std::string> arguments{file};
    if (reserved)
        arguments.emplace_back(reserved);
    const HelperAnswer answer = askHelper("token-probe", arguments, {}, longestProbe);
    switch (answer.end) {
    case HelperEnd::Absent:
        return "cannot be tried out: token-probe does not run";
    case HelperEnd::Silent:
        return "hangs while it starts";
    case HelperEnd::Crashed:
        return "crashes while it starts";
    default:
        return !answer.bytes.empty() && answer.bytes.back() == started ? "" : "does not start";
    }
}

} // namespace toolkit
