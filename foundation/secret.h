// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Memory that holds passwords and private keys.
 */
#pragma once

#include <cstddef>
#include <vector>

namespace sigil {

/** Overwrites @p size bytes with @p value in a way that the optimiser cannot remove. A null @p data is ignored. */
void wipe(void* data, std::size_t size, unsigned char value = 0);

/** Allocator that wipes every block before it is freed, so that a growing buffer leaves no copy behind. */
template <class T>
struct WipingAllocator {
    using value_type = T;

    WipingAllocator() = default;
    template <class U>
    WipingAllocator(const WipingAllocator<U>&) noexcept
    {
    }

    T* allocate(std::size_t n) { return static_cast<T*>(::operator new(n * sizeof(T))); }
    void deallocate(T* p, std::size_t n) noexcept
    {
        wipe(p, n * sizeof(T));
        ::operator delete(p);
    }
    friend bool operator==(const WipingAllocator&, const WipingAllocator&) { return true; }
};

/** Bytes of a key or a password; wiped on destruction and on every reallocation. */
using SecretBytes = std::vector<char, WipingAllocator<char>>;

} // namespace sigil
