// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "sigil/installed_folder.h"

#include <dlfcn.h>
#include <filesystem>

namespace host {

std::string installedFolder()
{
    Dl_info info{};
    std::error_code error;
    dladdr(reinterpret_cast<const void*>(&installedFolder), &info); // the loader knows every library that runs
    const std::filesystem::path beside = std::filesystem::path(info.dli_fname).parent_path() / "sigildesk";
    if (std::filesystem::is_directory(beside, error))
        return std::filesystem::weakly_canonical(beside, error).string();
    return "/usr/local/lib/sigildesk";
}

} // namespace host
