// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  What every fuzz target is made of: a name, and a function that takes any bytes and must keep its promises.
 */
#pragma once

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace fuzz {

using Input = std::span<const std::uint8_t>;
using Run = void (*)(Input input);

struct Target {
    std::string name;
    Run run;
};

/** The targets of this program. */
inline std::vector<Target>& targets()
{
    static std::vector<Target> all;
    return all;
}

/** Null for a name that none has. */
inline Run targetNamed(std::string_view name)
{
    for (const Target& target : targets())
        if (target.name == name)
            return target.run;
    return nullptr;
}

struct Addition {
    Addition(const char* name, Run run) { targets().push_back({name, run}); }
};

inline std::string text(Input input) { return {input.begin(), input.end()}; }

/** Fills a record with the input, again and again up to its end. */
template <class Record>
void fill(Record& record, Input input)
{
    auto* const bytes = reinterpret_cast<std::uint8_t*>(&record);
    for (std::size_t i = 0; i < sizeof record && !input.empty(); ++i)
        bytes[i] = input[i % input.size()];
}

} // namespace fuzz

/** A target: its name is that of its folder of seeds below fuzz/corpus, and the body that follows runs with each input. */
#define FUZZ_TARGET(name, input)                                                                                   \
    static void name(fuzz::Input input);                                                                           \
    static const fuzz::Addition name##Target(#name, name);                                                         \
    static void name(fuzz::Input input)

/** A broken promise ends the program, so that the fuzzer keeps the input. */
inline void require(bool promise, const char* text)
{
    if (promise)
        return;
    std::fprintf(stderr, "broken promise: %s\n", text);
    std::abort();
}
