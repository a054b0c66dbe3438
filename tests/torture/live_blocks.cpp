// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "tests/torture/live_blocks.h"

#include <link.h>
#include <pthread.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>

namespace torture {
namespace {

struct Range {
    std::uintptr_t start;
    std::uintptr_t end;
};

std::array<Range, 8> ownCode;
std::size_t ownRanges = 0;

/** The program itself, the standard library, whose code works for it, and the toolkits. */
bool isOwn(const dl_phdr_info& module)
{
    constexpr std::array names{"libstdc++", "libHVCToolkitV30", "libgpkiapi_v15"};
    return !*module.dlpi_name || std::any_of(names.begin(), names.end(), [&](const char* name) {
        return std::strstr(module.dlpi_name, name) != nullptr;
    });
}

int noteModule(dl_phdr_info* module, std::size_t, void*)
{
    for (int i = 0; isOwn(*module) && i < module->dlpi_phnum; ++i) {
        const auto& segment = module->dlpi_phdr[i];
        const std::uintptr_t start = module->dlpi_addr + segment.p_vaddr;
        if (segment.p_type == PT_LOAD && (segment.p_flags & PF_X) != 0 && ownRanges < ownCode.size())
            ownCode[ownRanges++] = {start, start + segment.p_memsz};
    }
    return 0;
}

bool inOwnCode(const void* site)
{
    const auto address = reinterpret_cast<std::uintptr_t>(site);
    return std::any_of(ownCode.begin(), ownCode.begin() + ownRanges,
        [=](const Range& range) { return address >= range.start && address < range.end; });
}

/** A table of fixed size, as it must not allocate: the search goes on from place to place, and a place that was used stays
 *  marked. */
std::array<const void*, 1U << 16> blocks;
long live = 0;
const void* const used = &live; // no block lies there
pthread_mutex_t mutex = PTHREAD_MUTEX_INITIALIZER;

/** The place of @p block; of null, the first that is free from where @p block would be on. */
const void** find(const void* block, bool isNew)
{
    constexpr std::uint64_t spread = 0x9E3779B97F4A7C15;
    std::size_t place = reinterpret_cast<std::uintptr_t>(block) * spread >> 48;
    for (std::size_t i = 0; i < blocks.size(); ++i, place = (place + 1) % blocks.size()) {
        const void*& found = blocks[place];
        if (isNew ? !found || found == used : found == block)
            return &found;
        if (!found)
            return nullptr;
    }
    return nullptr;
}

void change(const void* block, bool isNew) noexcept
{
    pthread_mutex_lock(&mutex);
    if (const void** const place = find(block, isNew)) {
        *place = isNew ? block : used;
        live += isNew ? 1 : -1;
    }
    pthread_mutex_unlock(&mutex);
}

} // namespace

void* noted(void* block, const void* site) noexcept
{
    if (block && inOwnCode(site))
        change(block, true);
    return block;
}

void forget(const void* block) noexcept
{
    if (block && ownRanges > 0)
        change(block, false);
}

void findOwnCode() noexcept
{
    ownRanges = 0;
    dl_iterate_phdr(noteModule, nullptr);
}

long liveBlocks() noexcept { return live; }

} // namespace torture
