// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "tests/support/secret_hunt.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <stdexcept>

namespace {

constexpr char mask = 0x5a;

/** The list of mappings. Asks for no memory, which would overwrite what was released. */
std::string_view mappings()
{
    static std::array<char, 1 << 20> text;
    const int file = open("/proc/self/maps", O_RDONLY | O_CLOEXEC);
    std::size_t length = 0;
    for (ssize_t got = 0; (got = read(file, &text[length], text.size() - 1 - length)) > 0;)
        length += static_cast<std::size_t>(got);
    close(file);
    if (length == 0 || length == text.size() - 1)
        throw std::runtime_error("the list of mappings cannot be read");
    text[length] = '\0';
    return {text.data(), length};
}

std::string place(const char* copy, const char* mapping)
{
    std::array<char, 512> text{};
    std::snprintf(text.data(), text.size(), "%p in %s", static_cast<const void*>(copy), mapping);
    return text.data();
}

} // namespace

SecretHunt::SecretHunt(std::string_view secret, Order order)
{
    if (secret.empty())
        throw std::invalid_argument("nothing to hunt for");
    for (const char c : secret)
        m_disguised += static_cast<char>(c ^ mask);
    if (order == Order::Backwards)
        std::reverse(m_disguised.begin(), m_disguised.end());
}

std::vector<std::string> SecretHunt::places() const
{
    std::vector<std::string> found;
    for (std::string_view rest = mappings(); !rest.empty(); rest.remove_prefix(rest.find('\n') + 1)) {
        std::uintptr_t start = 0;
        std::uintptr_t end = 0;
        std::array<char, 5> mode{};
        std::array<char, 256> name{"memory without a name"};
        const int fields = std::sscanf(
            rest.data(), "%lx-%lx %4s %*s %*s %*s%*[ ]%255[^\n]", &start, &end, mode.data(), name.data());
        if (fields < 3 || std::string_view(mode.data()) != "rw-p")
            continue;
        // NOLINTBEGIN(performance-no-int-to-ptr): addresses that the kernel wrote down
        const char* at = reinterpret_cast<const char*>(start);
        const char* const behind = reinterpret_cast<const char*>(end);
        // NOLINTEND(performance-no-int-to-ptr)
        for (; (at = next(at, behind)) != behind; ++at)
            found.push_back(place(at, name.data()));
    }
    return found;
}

/** The first copy from @p start on; @p end without one. */
const char* SecretHunt::next(const char* start, const char* end) const
{
    const auto same = [](char disguised, char plain) { return static_cast<char>(plain ^ mask) == disguised; };
    while (static_cast<std::size_t>(end - start) >= m_disguised.size()) {
        const std::size_t starts = static_cast<std::size_t>(end - start) - m_disguised.size() + 1;
        start = static_cast<const char*>(std::memchr(start, m_disguised[0] ^ mask, starts));
        if (!start)
            break;
        if (std::equal(m_disguised.begin(), m_disguised.end(), start, same))
            return start;
        ++start;
    }
    return end;
}
