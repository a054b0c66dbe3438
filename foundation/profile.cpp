#include <sigildesk/profile.h>

#include "foundation/ascii.h"
#include "foundation/file.h"
#include "foundation/profile_lines.h"
#include "foundation/text_field.h"

#include <cstring>
#include <memory>
#include <optional>
#include <string_view>

namespace {

constexpr int outOfMemory = -2;
constexpr int noList = -3;

/** The value in @p line, without the white space around it, when the line is one of @p key. */
std::optional<std::string_view> valueOf(const char* line, std::string_view key)
{
    const char* equals = std::strchr(line, '=');
    if (!equals || sigil::trimmed({line, static_cast<std::size_t>(equals - line)}) != key)
        return std::nullopt;
    const std::string_view rest(equals + 1);
    return sigil::trimmed(rest.substr(0, rest.find('\n')));
}

/** Searches the lines behind @p header up to the end of its section. */
std::optional<std::string_view> findValue(const sigil::_ConfigProfile* header, std::string_view key)
{
    for (const sigil::_ConfigProfile* node = header->next; node; node = node->next) {
        if (sigil::_IsCommentLine(node->line))
            continue;
        // A "[" ends the section wherever it stands, also inside a value: the files in use rely on it.
        if (std::strchr(node->line, '['))
            return std::nullopt;
        if (const auto value = valueOf(node->line, key))
            return value;
    }
    return std::nullopt;
}

int store(char* out, int outSize, std::string_view text)
{
    sigil::copyText(out, static_cast<std::size_t>(outSize), text);
    return static_cast<int>(std::strlen(out));
}

} // namespace

int FileGetPrivateProfileString(char* section, char* key, char* defaultValue, char* out, int outSize, char* path)
{
    if (!out || outSize < 1)
        return 0;
    std::memset(out, 0, static_cast<std::size_t>(outSize));
    const sigil::File file = sigil::openForReading(path);
    if (!section || !key || !file)
        return 0;

    sigil::_ConfigProfile* list = nullptr;
    const int decoded = sigil::_DecodeConfigProfile(&list, file.get());
    const std::unique_ptr<sigil::_ConfigProfile, void (*)(sigil::_ConfigProfile*)> owner(
        list, sigil::_ReleaseConfigProfile);
    if (decoded != 0)
        return outOfMemory;

    sigil::_ConfigProfile* header = nullptr;
    if (sigil::_FindConfigProfileSection(&header, list, section) != 0)
        return noList;
    const auto value = findValue(header, key);
    if (!value)
        return 0;
    return store(out, outSize, value->empty() ? sigil::textOf(defaultValue) : *value);
}

int FileGetPrivateProfileInt(char* section, char* key, int /*defaultValue*/, char* path)
{
    char text[1024];
    char none[] = "";
    const int length = FileGetPrivateProfileString(section, key, none, text, sizeof text - 1, path);
    return length < 0 ? length : sigil::toInt(text);
}

int StrTrimString(char* text)
{
    if (!text)
        return 1;
    const std::size_t length = std::strlen(text);
    const std::string_view kept = sigil::trimmed({text, length});
    const std::size_t keptLength = kept.size();
    std::memmove(text, kept.data(), keptLength);
    std::memset(text + keptLength, 0, length - keptLength);
    return 1;
}
