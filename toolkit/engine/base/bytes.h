// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Byte containers of the engine.
 */
#pragma once

#include "secrets/arena.h"

#include <openssl/crypto.h>

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace toolkit {

using Bytes = std::vector<unsigned char>;

/** Bytes that are read and never kept. */
using View = std::span<const unsigned char>;

/** Allocator for secrets: memory that no core holds, wiped before it is freed, so that a growing buffer leaves no copy behind. */
template <class T>
struct SecretAllocator {
    using value_type = T;

    SecretAllocator() = default;
    template <class U>
    SecretAllocator(const SecretAllocator<U>&) noexcept
    {
    }
    T* allocate(std::size_t n) { return static_cast<T*>(sigil::takeSecretMemory(n * sizeof(T))); }
    void deallocate(T* p, std::size_t n) noexcept { sigil::releaseSecretMemory(p, n * sizeof(T)); }
    friend bool operator==(const SecretAllocator&, const SecretAllocator&) { return true; }
};

/** Bytes of a key, or of anything that a password protects; wiped on release. */
using Secret = std::vector<unsigned char, SecretAllocator<unsigned char>>;

inline View view(std::string_view text)
{
    return {reinterpret_cast<const unsigned char*>(text.data()), text.size()};
}

inline Bytes toBytes(View bytes) { return {bytes.begin(), bytes.end()}; }
inline Secret toSecret(View bytes) { return {bytes.begin(), bytes.end()}; }

/** The bytes as OpenSSL's password arguments want them. */
inline const char* chars(View bytes) { return reinterpret_cast<const char*>(bytes.data()); }

} // namespace toolkit
