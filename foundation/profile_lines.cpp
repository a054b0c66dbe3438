#include "foundation/profile_lines.h"

#include "foundation/ascii.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <memory_resource>
#include <new>
#include <sys/stat.h>

namespace sigil {

namespace {

/** The first node and the memory of all other nodes and lines. A lookup reads the whole file: two heap allocations
 *  for every line would cost more than the reading. */
struct ProfileLines : _ConfigProfile {
    explicit ProfileLines(std::size_t expectedSize)
        : _ConfigProfile{nullptr, nullptr}
        , memory(expectedSize)
    {
    }

    /** Adds a line behind @p last, the node that was added before; the first line goes into the first node. */
    _ConfigProfile* add(_ConfigProfile* last, const char* text, std::size_t length)
    {
        // The text stands right behind its node.
        void* room = memory.allocate(sizeof(_ConfigProfile) + length + 1, alignof(_ConfigProfile));
        auto* node = new (room) _ConfigProfile{static_cast<char*>(room) + sizeof(_ConfigProfile), nullptr};
        std::memcpy(node->line, text, length);
        node->line[length] = '\0';
        if (line)
            return last->next = node;
        line = node->line;
        return this;
    }

    std::pmr::monotonic_buffer_resource memory;
};

/** Memory that the lines of a file will need, about: twice its size, within bounds. One block of the right size is
 *  given back to the heap and used again by the next lookup; a row of growing ones would go back to the system. */
std::size_t expectedSize(std::FILE* file)
{
    constexpr std::size_t least = 16UL * 1024;
    constexpr std::size_t most = 16UL * 1024 * 1024;
    struct stat status { };
    const bool known = fstat(fileno(file), &status) == 0 && status.st_size > 0;
    return known ? std::clamp(2 * static_cast<std::size_t>(status.st_size), least, most) : least;
}

/** Length of the line at the start of the @p size bytes at @p text; 0 when its end has not been read yet. */
std::size_t lineLength(const char* text, std::size_t size, bool atEnd)
{
    const std::size_t limit = std::min<std::size_t>(size, longestProfileLine);
    if (const void* end = std::memchr(text, '\n', limit))
        return static_cast<std::size_t>(static_cast<const char*>(end) - text) + 1;
    return atEnd || limit == longestProfileLine ? limit : 0;
}

void readLines(ProfileLines& lines, std::FILE* file)
{
    char buffer[32 * 1024];
    std::size_t held = 0;
    _ConfigProfile* last = &lines;
    for (bool atEnd = false; !atEnd;) {
        held += std::fread(buffer + held, 1, sizeof buffer - held, file);
        atEnd = held < sizeof buffer;
        const char* rest = buffer;
        while (const std::size_t length = lineLength(rest, held, atEnd)) {
            last = lines.add(last, rest, length);
            rest += length;
            held -= length;
        }
        std::memmove(buffer, rest, held);
    }
}

bool isHeader(const _ConfigProfile& node, const char* header)
{
    return node.line && std::strstr(node.line, header) && !_IsCommentLine(node.line);
}

} // namespace

int _DecodeConfigProfile(_ConfigProfile** list, std::FILE* file)
{
    *list = nullptr;
    try {
        ProfileLines* lines = std::make_unique<ProfileLines>(expectedSize(file)).release();
        *list = lines;
        readLines(*lines, file);
        return 0;
    } catch (const std::bad_alloc&) {
        return -1;
    }
}

void _ReleaseConfigProfile(_ConfigProfile* list)
{
    std::unique_ptr<ProfileLines>(static_cast<ProfileLines*>(list));
}

int _FindConfigProfileSection(_ConfigProfile** found, _ConfigProfile* list, char* section)
{
    if (!list)
        return -1;
    char header[1024];
    static_cast<void>(std::snprintf(header, sizeof header, "[%s]", section ? section : "")); // cut to the field
    _ConfigProfile* node = list;
    while (!isHeader(*node, header) && node->next)
        node = node->next;
    *found = node;
    return 0;
}

int _IsCommentLine(char* line)
{
    while (isSpace(*line))
        ++line;
    return *line == '#' ? 1 : 0;
}

} // namespace sigil
