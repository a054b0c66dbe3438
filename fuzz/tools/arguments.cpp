// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Any words, a line each, as a command line: it is taken apart, or refused as wrong use.

#include "fuzz/target.h"
#include "jobs/failure.h"
#include "tools/sigildesk/options.h"

#include <sstream>
#include <vector>

FUZZ_TARGET(tools_arguments, input)
{
    std::istringstream lines(fuzz::text(input));
    std::vector<std::string> words{"sigildesk"};
    for (std::string line; std::getline(lines, line);)
        words.push_back(line.c_str());
    std::vector<char*> pointers;
    for (std::string& word : words)
        pointers.push_back(word.data());
    pointers.push_back(nullptr);
    try {
        const host::Arguments arguments = host::parse(static_cast<int>(words.size()), pointers.data());
        require(arguments.command || arguments.helpWanted || arguments.versionWanted, "something is wanted");
        for (const host::Option& option : host::globalOptions())
            require(
                arguments.has(option.name) || arguments.text(option.name).empty(), "what was not given is empty");
        require(!host::helpText(arguments.command, host::Language::Korean, "/folder").empty(), "there is help");
    } catch (const host::Failure& failure) {
        require(failure.exit() == host::wrongUse, "a line that cannot be parsed is wrong use");
        require(!failure.message(host::Language::English).empty(), "what is wrong is told");
    }
}
