// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  What the user asks of sample-store.
 */
#pragma once

#include "tools/sample-store/kinds.h"

#include <cstdint>
#include <ctime>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace sample {

enum class State { Valid, Expiring, Expired };
enum class Pairs { SigningOnly, Both };
enum class Format { Table, Tsv, Json };

/** "valid", "expiring", "expired". */
std::string_view stateName(State state);

struct Options {
    std::filesystem::path target;
    std::string password = "sample1234!";
    int count = 12;
    std::vector<Family> families = {Family::Npki};
    std::uint64_t seed = 1;
    std::time_t now = 0; ///< midnight UTC of the day that states refer to
    int keys = 4;        ///< key pairs made for each key length and for the authorities, who share them
    bool pfx = false;
    bool dryRun = false;
    Format format = Format::Table;

    // Empty: a mixture.
    std::optional<State> state;
    std::optional<int> keyBits;
    std::optional<char> variant;
    std::optional<Pairs> pairs;
};

/** Declares the command line; @p options is filled when @p app parses it. */
void declareOptions(CLI::App& app, Options& options);

} // namespace sample
