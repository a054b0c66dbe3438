// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// What a start costs after the first, against the loader's part of it: opening and closing the open toolkit's library. In a host
// that has Qt and not OpenSSL, as most have; OpenSSL stays with the process that started once.

#include <sigildesk/codes.h>
#include <sigildesk/handles.h>

#include <benchmark/benchmark.h>

#include <dlfcn.h>

#include <string>

namespace {

std::string folder = SIGILDESK_LIBRARY_FOLDER;

void start()
{
    sigildesk::CryptoHandle crypto;
    sigildesk::initialise(crypto, SIGIL_TOOLKIT_MAKER, folder.data());
}

void library(benchmark::State& state)
{
    start();
    const std::string path = folder + "/libHVCToolkitV30.so";
    for (auto turn : state)
        dlclose(dlopen(path.c_str(), RTLD_LAZY));
}

void handle(benchmark::State& state)
{
    for (auto turn : state)
        start();
}

void processor(benchmark::State& state)
{
    for (auto turn : state) {
        sigildesk::ProcessorHandle list;
        sigildesk::initialise(list, SIGIL_TOOLKIT_MAKER, SIGIL_LANGUAGE_KOREAN, folder.data());
    }
}

BENCHMARK(handle);
BENCHMARK(processor);
BENCHMARK(library);

} // namespace
