// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "tests/support/failing_allocator.h"

#include <link.h>
#include <unwind.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <new>

Allocations allocations;

namespace {

bool insideDoubles(std::uintptr_t address)
{
    struct Search {
        std::uintptr_t address;
        bool found;
    } search{address, false};
    dl_iterate_phdr(
        [](dl_phdr_info* module, std::size_t, void* data) {
            auto* s = static_cast<Search*>(data);
            for (int i = 0; i < module->dlpi_phnum; ++i) {
                const auto& segment = module->dlpi_phdr[i];
                const std::uintptr_t start = module->dlpi_addr + segment.p_vaddr;
                if (segment.p_type == PT_LOAD && s->address >= start && s->address < start + segment.p_memsz)
                    s->found = std::strstr(module->dlpi_name, "libdoubles_record") ||
                        std::strstr(module->dlpi_name, "libHVCToolkitV30");
            }
            return 0;
        },
        &search);
    return search.found;
}

/** True when a frame of the recording toolkits is on the stack: toolkits are not written in C++ that may run dry. */
bool calledByDoubles()
{
    bool found = false;
    _Unwind_Backtrace(
        [](_Unwind_Context* context, void* data) {
            auto* result = static_cast<bool*>(data);
            *result = *result || insideDoubles(_Unwind_GetIP(context));
            return *result ? _URC_END_OF_STACK : _URC_NO_REASON;
        },
        &found);
    return found;
}

bool refuse()
{
    if (!allocations.counting)
        return false;
    allocations.counting = false; // what is done here allocates too
    // The doubles allocate a little differently from session to session, so the number alone could hit one of theirs:
    // the first allocation of the library from there on is refused.
    const bool due = allocations.refused >= 0 && allocations.made >= allocations.refused;
    const bool refused = due && !calledByDoubles();
    if (refused)
        allocations.refused = -1;
    if (allocations.ofLibrary)
        allocations.ofLibrary->push_back(!calledByDoubles());
    ++allocations.made;
    allocations.counting = true;
    return refused;
}

} // namespace

// All forms, because a checking runtime has forms of its own that would not mix with these.
void* operator new(std::size_t size, const std::nothrow_t&) noexcept
{
    return refuse() ? nullptr : std::malloc(size ? size : 1);
}
void* operator new(std::size_t size)
{
    void* memory = operator new(size, std::nothrow);
    if (!memory)
        throw std::bad_alloc();
    return memory;
}
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept { return operator new(size, std::nothrow); }
void* operator new[](std::size_t size) { return operator new(size); }
void operator delete(void* memory) noexcept
{
    if (allocations.released)
        allocations.released(memory);
    std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept { operator delete(memory); }
void operator delete[](void* memory) noexcept { operator delete(memory); }
void operator delete[](void* memory, std::size_t) noexcept { operator delete(memory); }
