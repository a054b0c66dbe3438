// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// The memory of secrets: blocks taken and released in any order keep what they hold.

#include "secrets/arena.h"
#include "fuzz/script.h"

#include <algorithm>
#include <vector>

namespace {

struct Block {
    unsigned char* bytes;
    std::size_t size;
    unsigned char filling;

    bool isWhole() const
    {
        return std::all_of(bytes, bytes + size, [this](unsigned char byte) { return byte == filling; });
    }
};

} // namespace

FUZZ_TARGET(foundation_arena, input)
{
    fuzz::Script script(input);
    std::vector<Block> blocks;
    while (!script.atEnd()) {
        if (script.number(2) == 0 && !blocks.empty()) {
            const auto block = blocks.begin() + static_cast<std::ptrdiff_t>(script.number(blocks.size()));
            require(block->isWhole(), "a block keeps what it holds");
            sigil::releaseSecretMemory(block->bytes, block->size);
            blocks.erase(block);
            continue;
        }
        const std::size_t size = (script.number() << 6U) + script.number() + 1;
        auto* const bytes = static_cast<unsigned char*>(sigil::takeSecretMemory(size));
        blocks.push_back({bytes, size, static_cast<unsigned char>(blocks.size() + 1)});
        std::fill_n(bytes, size, blocks.back().filling);
    }
    for (const Block& block : blocks) {
        require(block.isWhole(), "a block keeps what it holds");
        sigil::releaseSecretMemory(block.bytes, block.size);
    }
}
