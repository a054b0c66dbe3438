// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Policy and issuer settings files and the caller's list of policies, of any content.

#include "certlist/issuer_table.h"
#include "certlist/policy_table.h"

#include "fuzz/memory_file.h"

#include <algorithm>
#include <cstring>
#include <string>

namespace {

void policies(std::string_view content)
{
    CBinary read;
    const auto result = sigil::readPolicyFile(fuzz::MemoryFile(content).path().c_str(), read);
    require((result.code == 0) == !content.empty(), "a file with content is read");
    sigil::PolicyTable table;
    table.build(content);
    std::string firstOid(content.substr(0, content.find('=')));
    const bool complete = content.find('\n') != content.npos && firstOid.find('\n') == firstOid.npos &&
        firstOid.size() < sizeof(tagPOLICYID::szOID) && firstOid.size() < content.size();
    std::replace(firstOid.begin(), firstOid.end(), '.', ' ');
    const std::string* name = table.nameOf(firstOid);
    require(name || !complete, "the first line's policy has a name");
    require(!name || name->size() < sizeof(tagPOLICYID::szName), "a name is cut to its room");
}

void filter(std::string_view list)
{
    sigil::PolicyFilter filter;
    const int items = filter.ParsingPolicyIDS(list, false);
    require(items <= std::count(list.begin(), list.end(), '|'), "an item has a bar");
    filter.choose(list);
    char nobody[] = "\2\2";
    require(filter.accepts(nobody) == (items == 0) || list.find(nobody) != list.npos,
        "without items every policy is welcome");
}

void issuers(std::string_view content)
{
    sigil::IssuerTable table;
    const char* mistake = table.read(fuzz::MemoryFile(content).path().c_str());
    require(!mistake || std::strstr(mistake, "read fail"), "a mistake is told in words");
    table.nameOf(content);
}

} // namespace

FUZZ_TARGET(certlist_settings, input)
{
    const std::string text = fuzz::text(input);
    policies(text);
    filter(text);
    issuers(text);
}
