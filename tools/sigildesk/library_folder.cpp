// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "library_folder.h"

#include <dlfcn.h>
#include <filesystem>
#include <memory>
#include <vector>

namespace host {

namespace {

/** The folders in which the loader looks for what this program loads. */
std::vector<std::string> searchPath()
{
    void* program = dlopen(nullptr, RTLD_LAZY);
    Dl_serinfo head{};
    if (!program || dlinfo(program, RTLD_DI_SERINFOSIZE, &head) != 0)
        return {};
    const std::unique_ptr<char[]> room(new char[head.dls_size]);
    auto* info = reinterpret_cast<Dl_serinfo*>(room.get());
    info->dls_size = head.dls_size;
    info->dls_cnt = head.dls_cnt;
    std::vector<std::string> folders;
    if (dlinfo(program, RTLD_DI_SERINFO, info) == 0)
        for (unsigned i = 0; i < info->dls_cnt; ++i)
            folders.emplace_back(info->dls_serpath[i].dls_name);
    dlclose(program);
    return folders;
}

} // namespace

std::string installedFolder()
{
    std::error_code error;
    for (const std::string& folder : searchPath()) {
        const std::filesystem::path candidate = std::filesystem::path(folder) / "sigildesk";
        if (std::filesystem::is_directory(candidate, error))
            return std::filesystem::weakly_canonical(candidate, error).string();
    }
    return "/usr/local/lib/sigildesk";
}

} // namespace host
