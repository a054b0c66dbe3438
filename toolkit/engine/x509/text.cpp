#include "toolkit/engine/x509/text.h"

#include "toolkit/engine/base/handles.h"
#include "toolkit/engine/base/oid.h"

#include <iconv.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdio>

namespace toolkit {
namespace {

bool isAscii(std::string_view text)
{
    return std::all_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

/** Character-set conversion that stops at the first byte that it cannot convert. */
class Converter {
public:
    Converter(const char* to, const char* from)
        : m_descriptor(iconv_open(to, from))
    {
    }
    ~Converter()
    {
        if (valid())
            iconv_close(m_descriptor);
    }
    Converter(const Converter&) = delete;
    Converter& operator=(const Converter&) = delete;

    // NOLINTNEXTLINE(performance-no-int-to-ptr): how iconv_open says that it failed
    bool valid() const { return m_descriptor != reinterpret_cast<iconv_t>(-1); }

    /** Appends what can be converted of @p text to @p out; returns the number of bytes taken. */
    std::size_t append(std::string_view text, std::string& out)
    {
        char* in = const_cast<char*>(text.data());
        std::size_t left = text.size();
        while (left > 0) {
            std::array<char, 512> chunk;
            char* to = chunk.data();
            std::size_t room = chunk.size();
            const bool stuck = iconv(m_descriptor, &in, &left, &to, &room) == static_cast<std::size_t>(-1);
            out.append(chunk.data(), chunk.size() - room);
            if (stuck && room == chunk.size())
                break;
        }
        return text.size() - left;
    }

private:
    iconv_t m_descriptor;
};

std::optional<std::string> convertWhole(const char* to, const char* from, std::string_view text)
{
    Converter converter(to, from);
    std::string out;
    if (!converter.valid() || converter.append(text, out) != text.size())
        return {};
    return out;
}

/** Bytes of the UTF-8 character that begins @p text, at least one. */
std::size_t utf8Length(std::string_view text)
{
    std::size_t length = 1;
    while (length < text.size() && (static_cast<unsigned char>(text[length]) & 0xC0) == 0x80)
        ++length;
    return length;
}

std::string_view trimmed(std::string_view text)
{
    while (!text.empty() && text.front() == ' ')
        text.remove_prefix(1);
    while (!text.empty() && text.back() == ' ')
        text.remove_suffix(1);
    return text;
}

/** "cn=a" of "CN = A": lower-case ASCII letters, no blanks around "=". */
std::string normalPart(std::string_view part)
{
    const std::size_t equals = part.find('=');
    std::string text(trimmed(part.substr(0, equals)));
    if (equals != part.npos)
        text += "=" + std::string(trimmed(part.substr(equals + 1)));
    std::transform(text.begin(), text.end(), text.begin(), [](unsigned char c) { return std::tolower(c); });
    return text;
}

std::vector<std::string> nameParts(std::string_view name)
{
    std::vector<std::string> parts;
    for (std::size_t at = 0; at <= name.size();) {
        const std::size_t end = std::min(name.find(',', at), name.size());
        parts.push_back(normalPart(name.substr(at, end - at)));
        at = end + 1;
    }
    return parts;
}

std::string withoutControls(std::string text)
{
    for (char& c : text)
        if (static_cast<unsigned char>(c) < 0x20 || c == 0x7F)
            c = '?';
    return text;
}

std::string asciiOnly(std::string_view bytes)
{
    std::string text(bytes);
    std::replace_if(
        text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) >= 0x80; }, '?');
    return text;
}

} // namespace

std::string cp949FromUtf8(std::string_view utf8)
{
    if (isAscii(utf8))
        return withoutControls(std::string(utf8));
    Converter converter("CP949", "UTF-8");
    if (!converter.valid())
        return withoutControls(asciiOnly(utf8));
    std::string out;
    while (!utf8.empty()) {
        utf8.remove_prefix(converter.append(utf8, out));
        if (!utf8.empty()) {
            out += '?';
            utf8.remove_prefix(utf8Length(utf8));
        }
    }
    return withoutControls(out);
}

std::optional<std::string> utf8FromCp949(std::string_view cp949) { return convertWhole("UTF-8", "CP949", cp949); }

bool isUtf8(std::string_view bytes) { return isAscii(bytes) || convertWhole("UTF-16LE", "UTF-8", bytes); }

std::string asn1Text(const ASN1_STRING* string)
{
    const std::string_view raw(reinterpret_cast<const char*>(ASN1_STRING_get0_data(string)),
        static_cast<std::size_t>(ASN1_STRING_length(string)));
    const int type = ASN1_STRING_type(string);
    const bool wide = type == V_ASN1_BMPSTRING || type == V_ASN1_UNIVERSALSTRING;
    if (!wide && type != V_ASN1_UTF8STRING && !isAscii(raw) && utf8FromCp949(raw))
        return withoutControls(std::string(raw));
    unsigned char* utf8 = nullptr;
    const int length = ASN1_STRING_to_UTF8(&utf8, string);
    const BufferHandle owner(utf8);
    if (length >= 0)
        return cp949FromUtf8({reinterpret_cast<char*>(utf8), static_cast<std::size_t>(length)});
    return withoutControls(utf8FromCp949(raw) ? std::string(raw) : asciiOnly(raw));
}

std::string_view cutText(std::string_view cp949, std::size_t bytes)
{
    const std::size_t limit = std::min(bytes, cp949.size());
    std::size_t end = 0;
    while (end < limit) {
        const std::size_t width = static_cast<unsigned char>(cp949[end]) >= 0x80 ? 2 : 1;
        if (end + width > limit)
            break;
        end += width;
    }
    return cp949.substr(0, end);
}

std::string hexText(View bytes)
{
    constexpr std::string_view digits = "0123456789abcdef";
    std::string text;
    text.reserve(2 * bytes.size());
    for (const unsigned char byte : bytes) {
        text += digits[byte >> 4];
        text += digits[byte & 15];
    }
    return text;
}

std::string blankOid(const ASN1_OBJECT* object)
{
    std::string text = dottedOid(object);
    std::replace(text.begin(), text.end(), '.', ' ');
    return text;
}

std::string dotted(std::string_view oidText)
{
    std::string text(oidText);
    std::replace(text.begin(), text.end(), ' ', '.');
    return text;
}

std::string nameText(const X509_NAME* name)
{
    std::string text;
    int previousSet = -1;
    for (int i = X509_NAME_entry_count(name) - 1; i >= 0; --i) {
        const X509_NAME_ENTRY* entry = X509_NAME_get_entry(name, i);
        const ASN1_OBJECT* type = X509_NAME_ENTRY_get_object(entry);
        const int nid = OBJ_obj2nid(type);
        std::string key = nid == NID_undef ? dottedOid(type) : OBJ_nid2sn(nid);
        std::transform(key.begin(), key.end(), key.begin(), [](unsigned char c) { return std::tolower(c); });
        if (!text.empty())
            text += X509_NAME_ENTRY_set(entry) == previousSet ? '+' : ',';
        previousSet = X509_NAME_ENTRY_set(entry);
        text += key + "=" + asn1Text(X509_NAME_ENTRY_get_data(entry));
    }
    return text;
}

bool sameName(std::string_view left, std::string_view right)
{
    const std::vector<std::string> a = nameParts(left);
    const std::vector<std::string> b = nameParts(right);
    return a == b || std::equal(a.begin(), a.end(), b.rbegin(), b.rend());
}

std::string join(const std::vector<std::string>& parts, std::string_view separator)
{
    std::string text;
    for (const std::string& part : parts) {
        if (!text.empty())
            text += separator;
        text += part;
    }
    return text;
}

std::string timeText(std::time_t time)
{
    std::tm local{};
    localtime_r(&time, &local);
    if (local.tm_isdst > 0) {
        std::tm standard = local;
        standard.tm_isdst = 0;
        const std::time_t shift = std::mktime(&standard) - time;
        const std::time_t wall = timegm(&local) - shift;
        gmtime_r(&wall, &local);
    }
    std::array<char, 32> text{};
    const std::size_t length = std::strftime(text.data(), text.size(), "%Y-%m-%d %H:%M:%S", &local);
    return {text.data(), length};
}

std::optional<std::time_t> timeFromText(std::string_view text)
{
    std::tm fields{};
    int end = 0;
    const std::string terminated(text);
    const int count = std::sscanf(terminated.c_str(), "%4d-%2d-%2d %2d:%2d:%2d%n", &fields.tm_year, &fields.tm_mon,
        &fields.tm_mday, &fields.tm_hour, &fields.tm_min, &fields.tm_sec, &end);
    if (count != 6 || static_cast<std::size_t>(end) != terminated.size())
        return {};
    fields.tm_year -= 1900;
    fields.tm_mon -= 1;
    fields.tm_isdst = 0;
    return std::mktime(&fields);
}

std::optional<std::time_t> asn1Time(const ASN1_TIME* time)
{
    std::tm fields{};
    if (!time || ASN1_TIME_to_tm(time, &fields) != 1)
        return {};
    return timegm(&fields);
}

} // namespace toolkit
