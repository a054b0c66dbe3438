// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Runs a fuzz target once over every file of its folder of seeds, so that past findings are checked without libFuzzer. With the C
// library alone: the memory sanitizer does not see what the C++ library's own code reads.

#include "fuzz/target.h"

#include <dirent.h>

namespace {

std::vector<std::uint8_t> contentOf(const std::string& path)
{
    std::vector<std::uint8_t> content;
    std::FILE* const file = std::fopen(path.c_str(), "rb");
    require(file != nullptr, "a seed can be read");
    std::uint8_t some[4096];
    while (const std::size_t size = std::fread(some, 1, sizeof some, file))
        content.insert(content.end(), some, some + size);
    std::fclose(file);
    return content;
}

/** In the order of their names, so that every run is the same. @return how many */
int replay(fuzz::Run run, const std::string& folder)
{
    dirent** items = nullptr;
    const auto isSeed = [](const dirent* item) { return item->d_name[0] == '.' ? 0 : 1; };
    const int count = scandir(folder.c_str(), &items, isSeed, alphasort);
    for (int i = 0; i < count; ++i) {
        run(contentOf(folder + "/" + items[i]->d_name));
        std::free(items[i]);
    }
    std::free(items);
    return count;
}

} // namespace

int main(int argc, char** argv)
{
    const std::string folder = argc == 2 ? argv[1] : "";
    const fuzz::Run run = fuzz::targetNamed(std::string_view(folder).substr(folder.rfind('/') + 1));
    if (!run) {
        std::fprintf(stderr, "usage: %s FOLDER_OF_SEEDS, named like one of:\n", argv[0]);
        for (const fuzz::Target& target : fuzz::targets())
            std::fprintf(stderr, "%s\n", target.name.c_str());
        return 2;
    }
    const int count = replay(run, folder);
    std::printf("%d inputs replayed\n", count);
    return count > 0 ? 0 : 1;
}
