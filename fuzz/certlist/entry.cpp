// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Entries whose bytes are of any content, lengths and terminators included; and copy targets of any subject.

#include "certlist/entry.h"
#include "certlist/copy_target.h"
#include "fuzz/target.h"

#include <cstring>
#include <string>

namespace {

void packAndUnpack(fuzz::Input input)
{
    sigil::ScratchEntry entry;
    fuzz::fill(*entry, input);
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

FUZZ_TARGET(certlist_entry, input)
{
    packAndUnpack(input);
    copyTargets(fuzz::text(input));
}
