// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Any text as a time that somebody types.

#include "tools/sigildesk/times.h"
#include "fuzz/target.h"
#include "jobs/certificate.h"
#include "jobs/failure.h"

FUZZ_TARGET(tools_times, input)
{
    const std::string text = fuzz::text(input).c_str();
    host::Arguments arguments;
    arguments.add("--at", {text});
    host::Output output{host::OutputStyle()};
    const host::Session session{{"", SIGIL_TOOLKIT_MAKER, host::Language::English}, arguments, output};
    try {
        const std::time_t time = host::timeArgument(session, "--at");
        require(!host::isoTime(time).empty(), "a time can be printed");
    } catch (const host::Failure& failure) {
        require(failure.exit() == host::wrongUse, "what is no time is wrong use");
    }
}
