// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Memory that holds passwords and private keys.
 */
#pragma once

#include "secrets/arena.h"
#include "secrets/traces.h"

#include <cstddef>
#include <new>
#include <vector>

namespace sigil {

/** Allocator for what may be a secret: it wipes every block before it is freed, so that a growing buffer leaves no copy
 *  behind. */
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

/** Allocator for secrets: the same, in memory that no core holds. */
template <class T>
struct SecretAllocator {
    using value_type = T;

    SecretAllocator() = default;
    template <class U>
    SecretAllocator(const SecretAllocator<U>&) noexcept
    {
    }

    T* allocate(std::size_t n) { return static_cast<T*>(takeSecretMemory(n * sizeof(T))); }
    void deallocate(T* p, std::size_t n) noexcept { releaseSecretMemory(p, n * sizeof(T)); }
    friend bool operator==(const SecretAllocator&, const SecretAllocator&) { return true; }
};

/** Bytes of a key or a password; wiped on destruction and on every reallocation. */
using SecretBytes = std::vector<char, SecretAllocator<char>>;

} // namespace sigil
