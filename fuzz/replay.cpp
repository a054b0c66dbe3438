// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Runs a fuzz target once over every file of its folder of seeds, so that past findings are checked without libFuzzer.

#include "fuzz/target.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <vector>

namespace fs = std::filesystem;

namespace {

std::vector<std::uint8_t> contentOf(const fs::path& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

/** In the order of their names, so that every run is the same. */
std::vector<fs::path> seedsIn(const fs::path& folder)
{
    std::vector<fs::path> seeds;
    for (const auto& entry : fs::directory_iterator(folder))
        seeds.push_back(entry.path());
    std::sort(seeds.begin(), seeds.end());
    return seeds;
}

} // namespace

int main(int argc, char** argv)
{
    const fs::path folder = argc == 2 ? argv[1] : "";
    const auto target = fuzz::targets().find(folder.filename().string());
    if (target == fuzz::targets().end()) {
        std::cerr << "usage: " << argv[0] << " FOLDER_OF_SEEDS, named like one of:\n";
        for (const auto& [name, run] : fuzz::targets())
            std::cerr << name << '\n';
        return 2;
    }
    const std::vector<fs::path> seeds = seedsIn(folder);
    for (const fs::path& seed : seeds)
        target->second(contentOf(seed));
    std::cout << seeds.size() << " inputs replayed\n";
    return seeds.empty() ? 1 : 0;
}
