// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// That a hunt finds what is planted, and that nothing is left to find when traces are cleared.

#include "secrets/traces.h"

#include "tests/support/command.h"
#include "tests/support/files.h"
#include "tests/support/mapped_file.h"
#include "tests/support/secret_hunt.h"
#include "tests/support/traced.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>
#include <string>

#include <sys/ptrace.h>

using testing::HasSubstr;

namespace {

constexpr std::size_t length = 64;

/** Where calls that return leave what they worked on. The whole depth is written, the secret at its far end. */
template <std::size_t depth>
[[gnu::noinline]] void copyToStack(const char* secret)
{
    std::array<char, depth> frame;
    std::fill(frame.begin(), frame.end(), '.');
    std::memcpy(frame.data(), secret, length);
    asm volatile("" : : "r"(frame.data()) : "memory");
}

class Traces : public testing::Test {
protected:
    Traces() { hunt.add("key", secret.bytes()); }

private:
    TemporaryFolder m_folder;
    Outcome m_made = run({"sh", "-c", "head -c 64 /dev/urandom > " + m_folder.path("key")});

protected:
    MappedFile secret{m_folder.path("key")};
    SecretHunt hunt;
};

} // namespace

TEST_F(Traces, OnTheHeapArePlantedAndFound)
{
    auto* const block = static_cast<char*>(std::malloc(200));
    std::copy_n(secret.chars() + 5, 20, block + 100);
    std::reverse_copy(secret.chars() + 40, secret.chars() + 52, block + 60);
    sigil::clearTraces();
    EXPECT_THAT(hunt.found(), HasSubstr("20 bytes of the key from 5 on at 0x"));
    EXPECT_THAT(hunt.found(), HasSubstr("12 bytes of the key backwards from 40 on at 0x"));
    std::free(block);
    EXPECT_THAT(hunt.found(), HasSubstr("[heap]")) << "released and not wiped";
}

TEST_F(Traces, OnTheStackAreFoundAndCleared)
{
    copyToStack<4000>(secret.chars());
    EXPECT_THAT(hunt.found(), HasSubstr("[stack]"));
    sigil::clearTraces();
    EXPECT_EQ(hunt.found(), "");
}

TEST_F(Traces, AreClearedAsDeepAsIsPromised)
{
    constexpr std::size_t ownFrame = 512;
    copyToStack<sigil::clearedStack - ownFrame>(secret.chars());
    EXPECT_THAT(hunt.found(), HasSubstr("[stack]"));
    sigil::clearTraces();
    EXPECT_EQ(hunt.found(), "");
    copyToStack<sigil::clearedStack + ownFrame + length>(secret.chars());
    sigil::clearTraces();
    EXPECT_THAT(hunt.found(), HasSubstr("[stack]")) << "not deeper";
}

TEST_F(Traces, InRegistersAreFoundAndCleared)
{
    asm volatile("movdqu (%0), %%xmm9" : : "r"(secret.chars() + 7) : "xmm9");
    EXPECT_THAT(hunt.found(), HasSubstr("16 bytes of the key from 7 on at 0x130 in vector registers"));
    asm volatile("movdqu (%0), %%xmm9" : : "r"(secret.chars() + 7) : "xmm9");
    sigil::clearRegisters();
    EXPECT_EQ(hunt.found(), "");
}

TEST_F(Traces, InTheWidestRegistersOfTheProcessorAreCleared)
{
    const bool has256 = __builtin_cpu_supports("avx") != 0;
    const bool has512 = __builtin_cpu_supports("avx512f") != 0;
    if (has256)
        asm volatile("vmovdqu (%0), %%ymm3" : : "r"(secret.chars()) : "xmm3");
    if (has512)
        asm volatile("vmovdqu64 (%0), %%zmm21" : : "r"(secret.chars()) : "memory");
    EXPECT_EQ(hunt.found().empty(), !has256);
    if (has256)
        asm volatile("vmovdqu (%0), %%ymm3" : : "r"(secret.chars()) : "xmm3");
    if (has512)
        asm volatile("vmovdqu64 (%0), %%zmm21" : : "r"(secret.chars()) : "memory");
    sigil::clearRegisters();
    EXPECT_EQ(hunt.found(), "");
}

TEST_F(Traces, AreFoundInAnotherProcess)
{
    const auto leave = [&](bool clear) {
        Traced process(
            [&] {
                copyToStack<4000>(secret.chars());
                if (clear)
                    sigil::clearTraces();
            },
            PTRACE_O_TRACEEXIT);
        EXPECT_TRUE(process.goOnTo(PTRACE_EVENT_EXIT));
        const std::string found = hunt.foundIn(process.id());
        process.finish();
        return found;
    };
    EXPECT_THAT(leave(false), HasSubstr("64 bytes of the key from 0 on at 0x"));
    EXPECT_EQ(leave(true), "");
}
