// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// The profile reader on files of any content. The first line of the input is the key, the rest is the file.

#include "fuzz/foundation/require.h"
#include "tests/foundation/profile_model.h"

#include <sigildesk/profile.h>
#include <sigildesk/util.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <string>
#include <sys/mman.h>
#include <unistd.h>

namespace {

/** A file in memory with the given content. */
class MemoryFile {
public:
    explicit MemoryFile(std::string_view content)
        : m_descriptor(memfd_create("profile", MFD_CLOEXEC))
        , m_path("/proc/self/fd/" + std::to_string(m_descriptor))
    {
        require(
            write(m_descriptor, content.data(), content.size()) == std::ssize(content), "the file can be written");
    }
    ~MemoryFile() { close(m_descriptor); }
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;

    char* path() { return m_path.data(); }

private:
    int m_descriptor;
    std::string m_path;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string input(reinterpret_cast<const char*>(data), size);
    const std::size_t end = std::min(input.find('\n'), input.size());
    std::string key = input.substr(0, end);
    const std::string_view content = std::string_view(input).substr(std::min(end + 1, input.size()));
    MemoryFile file(content);

    for (const char* name : {"UserInterface", "S", ""}) {
        std::string section = name;
        char fallback[] = "";
        std::array<char, 40> out;
        out.fill('#');
        const int outSize = static_cast<int>(out.size()) - 1;
        const int length =
            FileGetPrivateProfileString(section.data(), key.data(), fallback, out.data(), outSize, file.path());
        require(length >= 0 && length < outSize, "the length lies within the output");
        require(std::strlen(out.data()) == static_cast<std::size_t>(length), "the length is that of the text");
        require(out.back() == '#', "nothing is written behind the output");
        const std::string value = profile_model::lookUp(content, name, key.c_str()).value_or("");
        require(out.data() == value.substr(0, out.size() - 2), "the text is what the rules say");
        FileGetPrivateProfileInt(section.data(), key.data(), 0, file.path());
    }
    char text[16] = ""; // its last byte stays, for texts that fill what they are given
    CUtil(0, nullptr).GetLanguageUIText(file.path(), key.data(), sizeof text - 1, text);
    require(std::strlen(text) < sizeof text, "a language text is terminated");
    require(StrTrimString(key.data()) == 1, "trimming succeeds");
    return 0;
}
