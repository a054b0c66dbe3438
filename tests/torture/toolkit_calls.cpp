// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "tests/torture/toolkit_calls.h"

#include "tests/torture/events.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>

// Five hundred ways in, ten bytes each: push the number of the function, then go on together. All registers that may hold
// arguments are as they were when the function is reached, or the one that fails in its place.
__asm__(R"(
    .text
torture_ways_in:
    .set number, 0
    .rept 500
    .byte 0x68
    .long number
    .byte 0xe9
    .long torture_go_on - . - 4
    .set number, number + 1
    .endr
torture_go_on:
    push %rdi
    push %rsi
    push %rdx
    push %rcx
    push %r8
    push %r9
    push %rax
    sub $8, %rsp
    mov 64(%rsp), %rdi
    call torture_way_out
    mov %rax, %r11
    add $8, %rsp
    pop %rax
    pop %r9
    pop %r8
    pop %rcx
    pop %rdx
    pop %rsi
    pop %rdi
    add $8, %rsp
    jmp *%r11
    .globl torture_first_way_in
    .hidden torture_first_way_in
    .set torture_first_way_in, torture_ways_in
)");

extern "C" char torture_first_way_in[];
extern "C" __attribute__((visibility("hidden"))) void* torture_way_out(std::size_t number);

namespace {

constexpr std::size_t lengthOfAWayIn = 10;
std::array<void*, 500> functions{};

int failing() { return torture::toolkitFailure; }

bool isToolkits(std::string_view name) { return name.starts_with("HVTK_") || name.starts_with("GPKI_"); }

} // namespace

bool torture::givesBack(std::string_view name)
{
    return name.ends_with("BINSTR_Delete") || name.ends_with("API_Finish");
}

void* torture_way_out(std::size_t number)
{
    return torture::fails(torture::Kind::Toolkit, nullptr) ? reinterpret_cast<void*>(&failing) : functions[number];
}

void* torture::watchedCall(const char* name, void* function)
{
    if (!function || !isToolkits(name) || givesBack(name))
        return function;
    const auto place =
        std::find_if(functions.begin(), functions.end(), [&](void* known) { return !known || known == function; });
    if (place == functions.end())
        return function;
    *place = function;
    return torture_first_way_in + static_cast<std::size_t>(place - functions.begin()) * lengthOfAWayIn;
}
