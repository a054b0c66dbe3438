// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// What is left in memory when a buffer is released. The operators below look at every block before it goes.

#include <sigildesk/binary.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>
#include <malloc.h>
#include <new>

namespace {

constexpr std::size_t watchedBytes = 6;
const char* watchedBlock = nullptr;
std::array<unsigned char, watchedBytes> atRelease;
bool released = false;
bool secretLeft = false;

void look(void* block)
{
    if (!block)
        return;
    if (block == watchedBlock) {
        std::memcpy(atRelease.data(), block, watchedBytes);
        released = true;
    }
    if (memmem(block, malloc_usable_size(block), "s3cr3t", watchedBytes))
        secretLeft = true;
}

/** Watches the block behind @p data until it is released. */
void watch(const char* data)
{
    watchedBlock = data;
    released = false;
    secretLeft = false;
    atRelease.fill(0);
}

bool isWiped()
{
    watchedBlock = nullptr;
    return released && !secretLeft &&
        std::all_of(atRelease.begin(), atRelease.end(), [](auto b) { return b == 0xCD; });
}

char secret[] = "s3cr3t";

class Wiping : public testing::Test {
protected:
    CBinary key{secret, watchedBytes};
};

} // namespace

void* operator new[](std::size_t size)
{
    if (void* block = std::malloc(size))
        return block;
    throw std::bad_alloc();
}

void operator delete[](void* block) noexcept
{
    look(block);
    std::free(block);
}

void operator delete[](void* block, std::size_t) noexcept
{
    look(block);
    std::free(block);
}

TEST_F(Wiping, ZeroEmptyOverwritesWithCD)
{
    watch(key.m_pData);
    key.zeroEmpty();
    EXPECT_TRUE(isWiped());
}

TEST_F(Wiping, EmptyLeavesNothingBehind)
{
    watch(key.m_pData);
    key.empty();
    EXPECT_TRUE(isWiped());
}

TEST_F(Wiping, TheTextsOfAKeyGoTheSameWay)
{
    watch(key.toString());
    key.zeroEmpty();
    EXPECT_TRUE(isWiped());

    key.set(secret, watchedBytes);
    watch(key.toHexString());
    key.zeroEmpty();
    EXPECT_TRUE(isWiped());

    key.set(secret, watchedBytes);
    watch(key.toString());
    key.toString();
    EXPECT_TRUE(isWiped());
}

TEST_F(Wiping, GrowingLeavesNothingBehind)
{
    watch(key.m_pData);
    key += secret;
    EXPECT_TRUE(isWiped());
    watch(key.m_pData);
    key += key;
    EXPECT_TRUE(isWiped());
}

TEST_F(Wiping, ReplacingLeavesNothingBehind)
{
    char other[] = "other";
    CBinary source(other, 5);
    watch(key.m_pData);
    key = source;
    EXPECT_TRUE(isWiped());

    key.set(secret, watchedBytes);
    watch(key.m_pData);
    key = other;
    EXPECT_TRUE(isWiped());

    key.set(secret, watchedBytes);
    watch(key.m_pData);
    key.fromHexString(other);
    EXPECT_TRUE(isWiped());
}

TEST_F(Wiping, TheEndOfTheObjectLeavesNothingBehind)
{
    {
        CBinary copy(key);
        watch(copy.m_pData);
    }
    EXPECT_TRUE(isWiped());
}
