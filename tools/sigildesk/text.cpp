#include "text.h"

#include <cstdio>
#include <fstream>
#include <iconv.h>
#include <iterator>
#include <stdexcept>

namespace host {

namespace {

class Cp949ToUtf8 {
public:
    Cp949ToUtf8()
    {
        if (!valid())
            throw std::runtime_error("this machine's C library does not know CP949");
    }
    ~Cp949ToUtf8() { iconv_close(m_descriptor); }
    Cp949ToUtf8(const Cp949ToUtf8&) = delete;
    Cp949ToUtf8& operator=(const Cp949ToUtf8&) = delete;

    std::string convert(std::string_view text)
    {
        std::string converted(text.size() * 3, '\0'); // no character takes more for each of its bytes
        char* in = const_cast<char*>(text.data());
        char* out = converted.data();
        std::size_t left = text.size(), room = converted.size();
        while (iconv(m_descriptor, &in, &left, &out, &room) == failed && left > 0) {
            *out++ = '?';
            --room;
            const std::size_t skipped = sizeOfUnknown({in, left});
            in += skipped;
            left -= skipped;
        }
        converted.resize(converted.size() - room);
        return converted;
    }

private:
    static constexpr auto failed = static_cast<std::size_t>(-1);

    // NOLINTNEXTLINE(performance-no-int-to-ptr): how iconv_open says that it failed
    bool valid() const { return m_descriptor != reinterpret_cast<iconv_t>(-1); }

    /** Bytes of the unassigned or cut character that @p text begins with. */
    static std::size_t sizeOfUnknown(std::string_view text)
    {
        const bool pair = text.size() > 1 && static_cast<unsigned char>(text[1]) >= 0x80;
        return pair ? 2 : 1;
    }

    iconv_t m_descriptor = iconv_open("UTF-8", "CP949");
};

} // namespace

std::string utf8(std::string_view text) { return Cp949ToUtf8().convert(text); }

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
