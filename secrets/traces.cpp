// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "secrets/traces.h"

#include "secrets/arena.h"

#include <array>

namespace sigil {

namespace {

#ifdef __x86_64__

const bool hasAvx = __builtin_cpu_supports("avx") != 0;
const bool hasAvx512 = __builtin_cpu_supports("avx512f") != 0;

#define SIGIL_CLOBBERS                                                                                             \
    "xmm0", "xmm1", "xmm2", "xmm3", "xmm4", "xmm5", "xmm6", "xmm7", "xmm8", "xmm9", "xmm10", "xmm11", "xmm12",     \
        "xmm13", "xmm14", "xmm15"

void clearVectors()
{
    asm volatile(".irp n,0,1,2,3,4,5,6,7,8,9,10,11,12,13,14,15\n\t"
                 "pxor %%xmm\\n, %%xmm\\n\n\t"
                 ".endr"
                 :
                 :
                 : SIGIL_CLOBBERS);
    if (hasAvx)
        asm volatile("vzeroall" : : : SIGIL_CLOBBERS);
    if (hasAvx512) // the second half, which the compiler does not use
        asm volatile(".irp n,16,17,18,19,20,21,22,23,24,25,26,27,28,29,30,31\n\t"
                     "vpxord %%zmm\\n, %%zmm\\n, %%zmm\\n\n\t"
                     ".endr"
                     :
                     :
                     : "memory");
}

#undef SIGIL_CLOBBERS

void clearGeneral()
{
    asm volatile(".irp n,ax,cx,dx,si,di\n\t"
                 "xor %%e\\n, %%e\\n\n\t"
                 ".endr\n\t"
                 ".irp n,8,9,10,11\n\t"
                 "xor %%r\\n\\()d, %%r\\n\\()d\n\t"
                 ".endr"
                 :
                 :
                 : "rax", "rcx", "rdx", "rsi", "rdi", "r8", "r9", "r10", "r11", "cc");
}

#else
void clearVectors() { }
void clearGeneral() { }
#endif

[[gnu::noinline]] void clearStackBelow()
{
    std::array<char, clearedStack> frames; // NOLINT(cppcoreguidelines-pro-type-member-init): written below
    wipe(frames.data(), frames.size());
}

} // namespace

void clearRegisters()
{
    clearVectors();
    clearGeneral();
}

void clearTraces()
{
    clearVectors(); // first: what is called to overwrite the stack saves nothing there
    clearStackBelow();
    clearRegisters();
}

} // namespace sigil
