#include "text.h"

#include <sigildesk/convert_utf8.h>

#include <cstdio>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace host {

std::string utf8(std::string_view text)
{
    std::string converted(text.size() * 3, '\0');
    int length = static_cast<int>(converted.size());
    ConvertUTF8 convert;
    if (convert.ascii2utf8(text.data(), static_cast<int>(text.size()), converted.data(), length) == 0) {
        converted.resize(static_cast<std::size_t>(length));
        return converted;
    }
    std::string ascii(text);
    for (char& c : ascii)
        if (static_cast<unsigned char>(c) >= 0x80)
            c = '?';
    return ascii;
}

void printField(const char* name, std::string_view text) { std::printf("%-20s %s\n", name, utf8(text).c_str()); }

std::string readFile(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    std::string content{std::istreambuf_iterator<char>(file), {}};
    if (!file)
        throw std::runtime_error("cannot read " + path);
    return content;
}

void writeFile(const std::string& path, std::string_view content)
{
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    file.write(content.data(), static_cast<std::streamsize>(content.size()));
    file.close();
    if (!file)
        throw std::runtime_error("cannot write " + path);
}

} // namespace host
