// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "secrets/arena.h"

#include <sys/mman.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <mutex>
#include <new>

namespace sigil {

namespace {

// A sanitizer has to see each block by itself.
#if defined(__SANITIZE_ADDRESS__)
constexpr bool usesArena = false;
#else
constexpr bool usesArena = true;
#endif

/** Pages of the library's own, given out in units. Mapped when a secret needs it first. */
class Arena {
public:
    /** Null when there is no room. */
    void* take(std::size_t size)
    {
        const std::lock_guard lock(m_mutex);
        if (!m_pages && !map())
            return nullptr;
        const std::size_t count = unitsOf(size);
        auto* const free = std::search_n(m_used.begin(), m_used.end(), static_cast<long>(count), false);
        if (free == m_used.end())
            return nullptr;
        std::fill_n(free, count, true);
        return m_pages + (free - m_used.begin()) * static_cast<long>(unit);
    }

    /** @return false for a block that is not of here */
    bool release(void* memory, std::size_t size)
    {
        const std::lock_guard lock(m_mutex);
        auto* const at = static_cast<char*>(memory);
        if (!m_pages || at < m_pages || at >= m_pages + length)
            return false;
        wipe(at, unitsOf(size) * unit);
        std::fill_n(m_used.begin() + (at - m_pages) / static_cast<long>(unit), unitsOf(size), false);
        return true;
    }

    /** What is still used then belongs to objects that end later. */
    ~Arena()
    {
        if (m_pages && std::find(m_used.begin(), m_used.end(), true) == m_used.end())
            munmap(m_pages, length);
    }

    static constexpr std::size_t largest = 128 << 10;

private:
    static constexpr std::size_t unit = 64;
    static constexpr std::size_t units = 8192;
    static constexpr std::size_t length = unit * units;

    static std::size_t unitsOf(std::size_t size) { return std::max<std::size_t>(1, (size + unit - 1) / unit); }

    /** Failures but the first are taken as they are: what the system does not allow is not promised. */
    bool map()
    {
        const int before = errno;
        void* const pages = mmap(nullptr, length, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        if (pages != MAP_FAILED) {
            m_pages = static_cast<char*>(pages);
            madvise(pages, length, MADV_DONTDUMP);
            constexpr std::size_t step = 64 << 10;
            for (std::size_t at = 0; at < length && mlock2(m_pages + at, step, MLOCK_ONFAULT) == 0; at += step)
                ;
        }
        errno = before;
        return m_pages != nullptr;
    }

    std::mutex m_mutex;
    char* m_pages = nullptr;
    std::array<bool, units> m_used{};
};

Arena arena; // ends after everything that is made when it is first used

} // namespace

void wipe(void* data, std::size_t size, unsigned char value)
{
    if (!data)
        return;
    std::memset(data, value, size);
    // The compiler must assume that the bytes are read here, so it cannot drop the writes above.
    asm volatile("" : : "r"(data) : "memory");
}

void* takeSecretMemory(std::size_t size)
{
    void* const own = usesArena && size <= Arena::largest ? arena.take(size) : nullptr;
    return own ? own : ::operator new(size);
}

void releaseSecretMemory(void* memory, std::size_t size) noexcept
{
    if (arena.release(memory, size))
        return;
    wipe(memory, size);
    ::operator delete(memory);
}

} // namespace sigil
