// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// One of a program's targets under libFuzzer: "--target=NAME" chooses it. libFuzzer itself looks past two dashes.

#include "fuzz/target.h"

namespace {

fuzz::Run chosen = nullptr;

} // namespace

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv)
{
    constexpr std::string_view option = "--target=";
    for (int i = 1; i < *argc; ++i) {
        const std::string_view argument = (*argv)[i];
        if (argument.starts_with(option))
            chosen = fuzz::targetNamed(argument.substr(option.size()));
    }
    require(chosen != nullptr, "--target=NAME names one of the targets");
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    chosen({data, size});
    return 0;
}
