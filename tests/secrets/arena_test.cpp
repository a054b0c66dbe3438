// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// The memory that secrets lie in.

#include "secrets/arena.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sys/mman.h>
#include <sys/resource.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

using testing::HasSubstr;
using testing::Not;

namespace {

/** What the system has noted of the mapping that holds the block, in words of two letters. */
std::string flagsOf(const void* block)
{
    std::ifstream mappings("/proc/self/smaps");
    bool here = false;
    for (std::string line; std::getline(mappings, line);) {
        std::uintptr_t start = 0;
        std::uintptr_t end = 0;
        if (std::sscanf(line.c_str(), "%lx-%lx ", &start, &end) == 2)
            here =
                reinterpret_cast<std::uintptr_t>(block) >= start && reinterpret_cast<std::uintptr_t>(block) < end;
        else if (here && line.starts_with("VmFlags:"))
            return line;
    }
    return {};
}

/** Whether this process may lock a page at all. */
bool mayLock()
{
    constexpr std::size_t size = 4096;
    void* const page = mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    const bool locked = mlock(page, size) == 0;
    munmap(page, size);
    return locked;
}

struct Block {
    explicit Block(std::size_t wanted)
        : size(wanted)
        , memory(static_cast<char*>(sigil::takeSecretMemory(wanted)))
    {
    }
    ~Block() { sigil::releaseSecretMemory(memory, size); }
    Block(const Block&) = delete;
    Block& operator=(const Block&) = delete;

    std::size_t size;
    char* memory;
};

char* held = nullptr;

/** Made before all others, so it goes after them. */
[[gnu::init_priority(101)]] const struct LastWriter {
    ~LastWriter()
    {
        if (held)
            *held = 'x';
    }
} lastWriter;

/** Ends with errno, which nothing here changes. */
[[noreturn]] void holdASecretWithoutRoom()
{
    const rlimit none{0, 0};
    setrlimit(RLIMIT_AS, &none);
    errno = 7;
    {
        const Block secret(100);
        std::memset(secret.memory, 'x', secret.size);
    }
    std::_Exit(errno);
}

[[noreturn]] void endWithASecret()
{
    {
        const Block large(4 << 20); // mapped before what secrets lie in
        held = static_cast<char*>(sigil::takeSecretMemory(100));
    }
    std::exit(7);
}

} // namespace

TEST(SecretMemory, IsLeftOutOfCoresAndOfTheSwap)
{
    const bool locks = mayLock();
    const Block secret(1200);
    EXPECT_THAT(flagsOf(secret.memory), HasSubstr(" dd"));
    EXPECT_EQ(flagsOf(secret.memory).find(" lo") != std::string::npos, locks);
    const std::vector<char> ordinary(1200);
    EXPECT_THAT(flagsOf(ordinary.data()), Not(HasSubstr(" dd")));
}

TEST(SecretMemory, IsWipedWhenItIsReleased)
{
    const char* at = nullptr;
    {
        const Block secret(100);
        at = secret.memory;
        std::memset(secret.memory, 'x', secret.size);
    }
    EXPECT_TRUE(std::all_of(at, at + 128, [](char c) { return c == 0; })) << "to the end of its units";
}

TEST(SecretMemory, BlocksDoNotOverlapAndAreUsedAgain)
{
    const Block first(65);
    char* between = nullptr;
    {
        const Block second(1);
        between = second.memory;
        EXPECT_GE(second.memory, first.memory + first.size);
        const Block none(0);
        EXPECT_NE(none.memory, second.memory);
    }
    const Block third(64);
    EXPECT_EQ(third.memory, between);
}

TEST(SecretMemory, IsOrdinaryMemoryForLargeBlocksAndWhenItIsFull)
{
    const Block large(1 << 20);
    EXPECT_THAT(flagsOf(large.memory), Not(HasSubstr(" dd")));
    std::vector<std::unique_ptr<Block>> blocks;
    int kept = 0;
    for (int i = 0; i < 20; ++i) {
        blocks.push_back(std::make_unique<Block>(60000));
        std::memset(blocks.back()->memory, 'x', blocks.back()->size);
        kept += flagsOf(blocks.back()->memory).find(" dd") != std::string::npos ? 1 : 0;
    }
    EXPECT_GE(kept, 4);
    EXPECT_LT(kept, 20);
}

// Each in a process of its own, in which no secret was held yet.

TEST(SecretMemoryDeathTest, IsOrdinaryMemoryWhereNoMoreMayBeMapped)
{
    testing::GTEST_FLAG(death_test_style) = "threadsafe";
    EXPECT_EXIT(holdASecretWithoutRoom(), testing::ExitedWithCode(7), "");
}

TEST(SecretMemoryDeathTest, StaysForWhoStillHoldsABlockAtTheEnd)
{
    testing::GTEST_FLAG(death_test_style) = "threadsafe";
    EXPECT_EXIT(endWithASecret(), testing::ExitedWithCode(7), "");
}
