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
        const std::size_t at = static_cast<std::size_t>(free - m_used.begin()) * unit;
        lockUpTo(at + count * unit);
        return m_pages + at;
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

    /** Gives the pages back, unless somebody still uses one of them. */
    void end()
    {
        if (!m_pages || std::find(m_used.begin(), m_used.end(), true) != m_used.end())
            return;
        munmap(m_pages, length);
        m_pages = nullptr;
        m_locked = 0;
    }

    static constexpr std::size_t largest = 128 << 10;

private:
    static constexpr std::size_t unit = 64;
    static constexpr std::size_t units = 8192;
    static constexpr std::size_t length = unit * units;

    static std::size_t unitsOf(std::size_t size) { return std::max<std::size_t>(1, (size + unit - 1) / unit); }

    bool map()
    {
        const int before = errno;
        void* const pages = mmap(nullptr, length, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        if (pages != MAP_FAILED) {
            m_pages = static_cast<char*>(pages);
            madvise(pages, length, MADV_DONTDUMP);
        }
        errno = before;
        return m_pages != nullptr;
    }

    /** As far as it was never used before: locking takes a page whether it is used or not. What the system does not allow is not
     *  promised. */
    void lockUpTo(std::size_t end)
    {
        constexpr std::size_t step = 64 << 10;
        const int before = errno;
        for (; m_locked < end; m_locked += step)
            static_cast<void>(mlock(m_pages + m_locked, step));
        errno = before;
    }

    std::mutex m_mutex;
    char* m_pages = nullptr;
    std::size_t m_locked = 0;
    std::array<bool, units> m_used{};
};

Arena arena;

/** When the library goes: after everything that was made since it came. */
struct End {
    ~End() { arena.end(); }
} const end;

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
