// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Folders with items of any name: candidates of every family, and the paths that their entries get.

#include "certlist/entry.h"
#include "certlist/store_layout.h"
#include "fuzz/target.h"

#include <cstring>
#include <string_view>

namespace {

void checkPaths(const sigil::Family& family, const sigil::SearchedFolder& folder, const char* name)
{
    sigil::ScratchEntry entry;
    sigil::setPaths(family, folder, name, *entry);
    for (const char* const path :
        {entry->szSignCertPath, entry->szSignPriKeyPath, entry->szKmCertPath, entry->szKmPriKeyPath})
        require(std::strlen(path) < sizeof entry->szSignCertPath, "a path fits into its field");
    // A name that only holds the mark may be its own key's.
    const bool usual = !family.files.mark || std::string_view(name).ends_with(family.files.mark);
    for (const sigil::PairPaths& pair : sigil::pairsOf(family, folder, name))
        require(!usual || pair.certificate != pair.key, "a certificate and its key are two files");
}

} // namespace

FUZZ_TARGET(certlist_layout, input)
{
    const std::string text = fuzz::text(input);
    dirent item{};
    item.d_type = text.size() % 2 == 0 ? DT_DIR : DT_REG;
    text.copy(item.d_name, sizeof item.d_name - 1);
    const sigil::SearchedFolder nowhere;
    for (const sigil::Family& family : sigil::families())
        if (*item.d_name && sigil::isCandidate(family, nowhere, item))
            checkPaths(family, nowhere, item.d_name);
    require(sigil::cutPath(text).size() < sizeof(tagCERTINFO::szSignCertPath), "a cut path fits into its field");
}
