// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "tests/torture/live_blocks.h"

#include "tests/torture/own_code.h"

#include <pthread.h>

#include <array>
#include <cstddef>
#include <cstdint>

namespace torture {
namespace {

/** A table of fixed size, as it must not allocate: the search goes on from place to place, and a place that was used stays
 *  marked. Neighbours in memory are neighbours here, so that a process that was forked copies few pages of it. */
std::array<const void*, 1U << 16> blocks;
long live = 0;
const void* const used = &live; // no block lies there
pthread_mutex_t mutex = PTHREAD_MUTEX_INITIALIZER;

/** The place of @p block; of null, the first that is free from where @p block would be on. */
const void** find(const void* block, bool isNew)
{
    constexpr std::uintptr_t apart = 16;
    std::size_t place = reinterpret_cast<std::uintptr_t>(block) / apart % blocks.size();
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
    if (block)
        change(block, false);
}

long liveBlocks() noexcept { return live; }

} // namespace torture
