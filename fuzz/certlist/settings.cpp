// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Policy and issuer settings files and the caller's list of policies, of any content.

#include "certlist/issuer_table.h"
#include "certlist/policy_table.h"

#include "fuzz/foundation/require.h"

#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string>

namespace {

/** A file in memory, with a path. */
class MemoryFile {
public:
    explicit MemoryFile(std::string_view content)
        : m_file(memfd_create("settings", 0))
    {
        require(write(m_file, content.data(), content.size()) == static_cast<ssize_t>(content.size()),
            "memory files can be written");
    }
    ~MemoryFile() { close(m_file); }
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;

    std::string path() const { return "/proc/self/fd/" + std::to_string(m_file); }

private:
    int m_file;
};

void policies(std::string_view content)
{
    CBinary read;
    const auto result = sigil::readPolicyFile(MemoryFile(content).path().c_str(), read);
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
    const char* mistake = table.read(MemoryFile(content).path().c_str());
    require(!mistake || std::strstr(mistake, "read fail"), "a mistake is told in words");
    table.nameOf(content);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    policies(text);
    filter(text);
    issuers(text);
    return 0;
}
