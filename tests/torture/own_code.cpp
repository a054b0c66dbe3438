// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "tests/torture/own_code.h"

#include <execinfo.h>
#include <link.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace torture {
namespace {

enum class Owner { Project, StandardLibrary, CLibrary, Engine, Other };

struct Library {
    const char* name;
    Owner owner;
};
constexpr std::array libraries{Library{"libstdc++", Owner::StandardLibrary},
    Library{"libHVCToolkitV30", Owner::Project}, Library{"libgpkiapi_v15", Owner::Project},
    Library{"libcrypto", Owner::Engine}, Library{"libssl", Owner::Engine}, Library{"legacy.so", Owner::Engine},
    Library{"libldap", Owner::Engine}, Library{"liblber", Owner::Engine}, Library{"libcurl", Owner::Engine},
    Library{"libc.so", Owner::CLibrary}};

struct Range {
    std::uintptr_t start;
    std::uintptr_t end;
    Owner owner;
};

std::array<Range, 2 * libraries.size()> ranges;
std::size_t known = 0;

Owner ownerOf(const dl_phdr_info& module)
{
    if (!*module.dlpi_name) // the program itself
        return Owner::Project;
    const auto* const found = std::find_if(libraries.begin(), libraries.end(),
        [&](const Library& library) { return std::strstr(module.dlpi_name, library.name) != nullptr; });
    return found == libraries.end() ? Owner::Other : found->owner;
}

int noteModule(dl_phdr_info* module, std::size_t, void*)
{
    const Owner owner = ownerOf(*module);
    for (int i = 0; owner != Owner::Other && i < module->dlpi_phnum; ++i) {
        const auto& segment = module->dlpi_phdr[i];
        const std::uintptr_t start = module->dlpi_addr + segment.p_vaddr;
        if (segment.p_type == PT_LOAD && (segment.p_flags & PF_X) != 0 && known < ranges.size())
            ranges[known++] = {start, start + segment.p_memsz, owner};
    }
    return 0;
}

Owner ownerOf(const void* site)
{
    const auto address = reinterpret_cast<std::uintptr_t>(site);
    for (std::size_t i = 0; i < known; ++i)
        if (address >= ranges[i].start && address < ranges[i].end)
            return ranges[i].owner;
    return Owner::Other;
}

/** Whether code does what others ask it for. */
bool isAsked(Owner owner) { return owner == Owner::CLibrary || owner == Owner::StandardLibrary; }

/** Who asks such code for what happens at @p site. */
Owner askerOf(const void* site)
{
    std::array<void*, 40> frames{};
    void** const end = frames.data() + backtrace(frames.data(), static_cast<int>(frames.size()));
    void** const asker = std::find_if(
        std::find(frames.data(), end, site), end, [](const void* frame) { return !isAsked(ownerOf(frame)); });
    return asker == end ? Owner::Other : ownerOf(*asker);
}

} // namespace

void findOwnCode() noexcept
{
    known = 0;
    dl_iterate_phdr(noteModule, nullptr);
}

bool inOwnCode(const void* site) noexcept
{
    const Owner owner = ownerOf(site);
    return owner == Owner::Project || owner == Owner::StandardLibrary;
}

bool worksForUs(const void* site) noexcept
{
    const Owner owner = ownerOf(site);
    const Owner asker = isAsked(owner) ? askerOf(site) : owner;
    return asker == Owner::Project || asker == Owner::Engine;
}

} // namespace torture
