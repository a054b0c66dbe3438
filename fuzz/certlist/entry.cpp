// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Entries whose bytes are of any content, lengths and terminators included; and copy targets of any subject.

#include "certlist/entry.h"
#include "certlist/copy_target.h"
#include "fuzz/foundation/require.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string>

namespace {

void packAndUnpack(const std::uint8_t* data, std::size_t size)
{
    sigil::ScratchEntry entry;
    auto* bytes = reinterpret_cast<std::uint8_t*>(&*entry);
    for (std::size_t at = 0; size > 0 && at < sizeof(tagCERTINFO); at += size) // repeated over the whole record
        std::memcpy(bytes + at, data, std::min(size, sizeof(tagCERTINFO) - at));
    sigil::PackedEntry packed;
    packed.store(*entry);
    sigil::ScratchEntry once(packed);
    packed.store(*once);
    sigil::ScratchEntry twice(packed);
    require(std::memcmp(&*once, &*twice, sizeof(tagCERTINFO)) == 0, "packing keeps an entry");
}

void copyTargets(const std::string& text)
{
    const std::string cn = text.substr(0, text.size() / 2);
    for (const char* organisation : {text.c_str(), "Government of Korea", "Halvard"})
        for (bool toHardDisk : {true, false}) {
            sigil::CertPaths paths;
            sigil::formCopyPaths(toHardDisk, "/base", {text.c_str(), cn.c_str(), organisation, cn.c_str()}, paths);
            for (const char* path : {paths.signCert, paths.signKey, paths.kmCert, paths.kmKey}) {
                require(std::strlen(path) < sizeof paths.signCert, "a path fits");
                require(!*path || std::strncmp(path, "/base", 5) == 0, "a path lies below the base folder");
                require(!std::strstr(path, "/../"), "no certificate leads out of the base folder");
            }
        }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    packAndUnpack(data, size);
    copyTargets(std::string(reinterpret_cast<const char*>(data), size));
    return 0;
}
