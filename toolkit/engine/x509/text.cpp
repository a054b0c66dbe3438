// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "toolkit/engine/x509/text.h"

#include "toolkit/engine/base/error.h"
#include "toolkit/engine/base/handles.h"
#include "toolkit/engine/base/oid.h"

#include <iconv.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdint>
#include <cstring>
#include <mutex>

namespace toolkit {
namespace {

bool isAscii(std::string_view text)
{
    constexpr std::uint64_t highBits = 0x8080808080808080;
    std::uint64_t eight = 0;
    for (; text.size() >= sizeof eight; text.remove_prefix(sizeof eight)) {
        std::memcpy(&eight, text.data(), sizeof eight);
        if ((eight & highBits) != 0)
            return false;
    }
    return std::all_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

/** Character-set conversion that stops at the first byte that it cannot convert. */
class Converter {
public:
    Converter(const char* to, const char* from)
        : m_descriptor(iconv_open(to, from))
    {
        if (!valid())
            requireMemory();
    }
    ~Converter()
    {
        if (valid())
            iconv_close(m_descriptor);
    }
    Converter(const Converter&) = delete;
    Converter& operator=(const Converter&) = delete;

    /** Forgets the text of before. */
    void restart()
    {
        if (valid())
            iconv(m_descriptor, nullptr, nullptr, nullptr, nullptr);
    }

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

/** A converter that is kept: to open one costs more than to convert dozens of names. */
class KeptConverter {
public:
    KeptConverter(const char* to, const char* from)
        : m_to(to)
        , m_from(from)
    {
    }

    /** Lends it to @p use; another thread that comes meanwhile gets one of its own, and nobody waits. */
    template <class Use>
    auto lend(Use use)
    {
        const std::unique_lock lock(m_mutex, std::try_to_lock);
        if (!lock) {
            Converter another(m_to, m_from);
            return use(another);
        }
        if (!m_kept || !m_kept->valid())
            m_kept.emplace(m_to, m_from);
        m_kept->restart();
        return use(*m_kept);
    }

private:
    const char* m_to;
    const char* m_from;
    std::mutex m_mutex;
    std::optional<Converter> m_kept;
};

KeptConverter& toCp949()
{
    static KeptConverter kept("CP949", "UTF-8");
    return kept;
}

KeptConverter& fromCp949()
{
    static KeptConverter kept("UTF-8", "CP949");
    return kept;
}

std::optional<std::string> convertWhole(KeptConverter& kept, std::string_view text)
{
    return kept.lend([&](Converter& converter) -> std::optional<std::string> {
        std::string out;
        if (!converter.valid() || converter.append(text, out) != text.size())
            return {};
        return out;
    });
}

/** Bytes of the UTF-8 character that begins @p text, at least one. */
std::size_t utf8Length(std::string_view text)
{
    std::size_t length = 1;
    while (length < text.size() && (static_cast<unsigned char>(text[length]) & 0xC0) == 0x80)
        ++length;
    return length;
}

/** Bytes of the character that begins @p text, by Unicode's table of well-formed UTF-8; 0 when none does. */
std::size_t wellFormedLength(std::string_view text)
{
    struct Row {
        unsigned char firstFrom, firstTo, secondFrom, secondTo;
        std::size_t length;
    };
    static constexpr std::array rows{Row{0x00, 0x7F, 0x80, 0xBF, 1}, Row{0xC2, 0xDF, 0x80, 0xBF, 2},
        Row{0xE0, 0xE0, 0xA0, 0xBF, 3}, Row{0xE1, 0xEC, 0x80, 0xBF, 3}, Row{0xED, 0xED, 0x80, 0x9F, 3},
        Row{0xEE, 0xEF, 0x80, 0xBF, 3}, Row{0xF0, 0xF0, 0x90, 0xBF, 4}, Row{0xF1, 0xF3, 0x80, 0xBF, 4},
        Row{0xF4, 0xF4, 0x80, 0x8F, 4}};
    const auto at = [&](std::size_t index) { return static_cast<unsigned char>(text[index]); };
    for (const Row& row : rows) {
        if (at(0) < row.firstFrom || at(0) > row.firstTo)
            continue;
        if (text.size() < row.length || (row.length > 1 && (at(1) < row.secondFrom || at(1) > row.secondTo)))
            return 0;
        for (std::size_t index = 2; index < row.length; ++index)
            if ((at(index) & 0xC0) != 0x80)
                return 0;
        return row.length;
    }
    return 0;
}

/** Bytes of the CP949 character that begins with @p first. */
std::size_t cp949Width(char first) { return static_cast<unsigned char>(first) >= 0x80 ? 2 : 1; }

/** CP949 with its ASCII letters in lower case. The second byte of a character may look like such a letter. */
void lowerAscii(std::string& cp949)
{
    for (std::size_t at = 0; at < cp949.size(); at += cp949Width(cp949[at]))
        if (cp949[at] >= 'A' && cp949[at] <= 'Z')
            cp949[at] = static_cast<char>(cp949[at] - 'A' + 'a');
}

/** "cn=a" of "CN = A": lower-case ASCII letters, no blanks around "=". */
std::string normalPart(std::string_view part)
{
    const std::size_t equals = part.find('=');
    std::string text(trimmed(part.substr(0, equals)));
    if (equals != part.npos)
        text += "=" + std::string(trimmed(part.substr(equals + 1)));
    lowerAscii(text);
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

/** Bytes of an unknown character set as CP949: UTF-8 when all of it is in CP949 (hardly any CP949 text is that by chance),
 *  else CP949; nothing when they are neither. */
std::optional<std::string> koreanText(std::string_view bytes)
{
    if (auto fromUtf8 = convertWhole(toCp949(), bytes))
        return fromUtf8;
    return utf8FromCp949(bytes) ? std::optional<std::string>(bytes) : std::nullopt;
}

/** The digits of each octet. */
constexpr auto hexPairs = [] {
    constexpr std::string_view digits = "0123456789abcdef";
    std::array<std::array<char, 2>, 256> pairs{};
    for (std::size_t octet = 0; octet < pairs.size(); ++octet)
        pairs[octet] = {digits[octet >> 4], digits[octet & 15]};
    return pairs;
}();

constexpr std::string_view timeForm = "0000-00-00 00:00:00";

struct UsageName {
    unsigned bit;
    const char* name;
};

constexpr std::array usageNames{
    UsageName{KU_DIGITAL_SIGNATURE, "digitalSignature"},
    UsageName{KU_NON_REPUDIATION, "nonRepudiation"},
    UsageName{KU_KEY_ENCIPHERMENT, "keyEncipherment"},
    UsageName{KU_DATA_ENCIPHERMENT, "dataEncipherment"},
    UsageName{KU_KEY_AGREEMENT, "keyAgreement"},
    UsageName{KU_KEY_CERT_SIGN, "keyCertSign"},
    UsageName{KU_CRL_SIGN, "crlSign"},
    UsageName{KU_ENCIPHER_ONLY, "encipherOnly"},
    UsageName{KU_DECIPHER_ONLY, "decipherOnly"},
};

std::string asciiOnly(std::string_view bytes)
{
    std::string text(bytes);
    std::replace_if(
        text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) >= 0x80; }, '?');
    return text;
}

std::string lossyText(Converter& converter, std::string_view text)
{
    std::string out;
    while (!text.empty()) {
        text.remove_prefix(converter.append(text, out));
        if (!text.empty()) {
            out += '?';
            text.remove_prefix(utf8Length(text));
        }
    }
    return out;
}

/** A string of any ASN.1 type as OpenSSL reads it; nothing when its bytes are not of the type. */
std::optional<std::string> utf8Of(int type, View bytes)
{
    const Handle<ASN1_STRING, ASN1_STRING_free> string(ASN1_STRING_type_new(type));
    require(string && ASN1_STRING_set(string.get(), bytes.data(), static_cast<int>(bytes.size())) == 1,
        SIGIL_TK_NO_MEMORY);
    unsigned char* utf8 = nullptr;
    const int length = ASN1_STRING_to_UTF8(&utf8, string.get());
    const BufferHandle owner(utf8);
    if (length >= 0)
        return std::string(reinterpret_cast<char*>(utf8), static_cast<std::size_t>(length));
    requireMemory();
    return {};
}

} // namespace

std::string cp949FromUtf8(std::string_view utf8)
{
    if (isAscii(utf8))
        return withoutControls(std::string(utf8));
    return withoutControls(toCp949().lend(
        [utf8](Converter& converter) { return converter.valid() ? lossyText(converter, utf8) : asciiOnly(utf8); }));
}

std::optional<std::string> utf8FromCp949(std::string_view cp949) { return convertWhole(fromCp949(), cp949); }

bool isUtf8(std::string_view bytes)
{
    if (isAscii(bytes))
        return true;
    while (!bytes.empty()) {
        const std::size_t length = wellFormedLength(bytes);
        if (length == 0)
            return false;
        bytes.remove_prefix(length);
    }
    return true;
}

std::string asn1Text(int type, View bytes)
{
    const std::string_view raw(chars(bytes), bytes.size());
    const bool wide = type == V_ASN1_BMPSTRING || type == V_ASN1_UNIVERSALSTRING;
    if (!wide && isAscii(raw))
        return withoutControls(std::string(raw));
    if (!wide && type != V_ASN1_UTF8STRING)
        if (const auto korean = koreanText(raw))
            return withoutControls(*korean);
    if (type == V_ASN1_UTF8STRING)
        if (const auto korean = convertWhole(toCp949(), raw))
            return withoutControls(*korean);
    if (const auto utf8 = utf8Of(type, bytes))
        return cp949FromUtf8(*utf8);
    return withoutControls(utf8FromCp949(raw) ? std::string(raw) : asciiOnly(raw));
}

std::string asn1Text(const ASN1_STRING* string)
{
    return asn1Text(ASN1_STRING_type(string),
        {ASN1_STRING_get0_data(string), static_cast<std::size_t>(ASN1_STRING_length(string))});
}

std::string_view trimmed(std::string_view text)
{
    while (!text.empty() && text.front() == ' ')
        text.remove_prefix(1);
    while (!text.empty() && text.back() == ' ')
        text.remove_suffix(1);
    return text;
}

std::string_view cutText(std::string_view cp949, std::size_t bytes)
{
    const std::size_t limit = std::min(bytes, cp949.size());
    if (isAscii(cp949.substr(0, limit)))
        return cp949.substr(0, limit);
    std::size_t end = 0;
    while (end < limit) {
        const std::size_t width = cp949Width(cp949[end]);
        if (end + width > limit)
            break;
        end += width;
    }
    return cp949.substr(0, end);
}

std::string hexText(View bytes)
{
    std::string text(2 * bytes.size(), '0');
    auto at = text.begin();
    for (const unsigned char byte : bytes)
        at = std::copy_n(hexPairs[byte].begin(), 2, at);
    return text;
}

Bytes bytesOfHex(std::string_view digits)
{
    long length = 0;
    const std::string text(digits);
    const BufferHandle bytes(OPENSSL_hexstr2buf(text.c_str(), &length));
    require(bytes && text.find(':') == text.npos, SIGIL_TK_ENCODING, "hexadecimal digits");
    return {bytes.get(), bytes.get() + length};
}

std::string blankOid(std::string dotted)
{
    std::replace(dotted.begin(), dotted.end(), '.', ' ');
    return dotted;
}

std::string blankOid(const ASN1_OBJECT* object) { return blankOid(dottedOid(object)); }

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
        addAttribute(text, X509_NAME_ENTRY_set(entry) == previousSet,
            nid == NID_undef ? dottedOid(type) : OBJ_nid2sn(nid), asn1Text(X509_NAME_ENTRY_get_data(entry)));
        previousSet = X509_NAME_ENTRY_set(entry);
    }
    return text;
}

void addAttribute(std::string& name, bool besideLast, std::string type, std::string_view value)
{
    if (!name.empty())
        name += besideLast ? '+' : ',';
    lowerAscii(type);
    name.append(type).append("=").append(value);
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

std::string usageText(unsigned bits)
{
    std::vector<std::string> names;
    for (const UsageName& usage : usageNames)
        if ((bits & usage.bit) != 0)
            names.emplace_back(usage.name);
    return join(names, ", ");
}

std::string policyText(const std::string& id, const std::vector<std::string>& qualifiers)
{
    return qualifiers.empty() ? id : id + " [" + join(qualifiers, "; ") + "]";
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
    const int year = local.tm_year + 1900;
    if (year > 9999) // an end of 9999-12-31 23:59:59 means "never", east of Greenwich too
        return "9999-12-31 23:59:59";
    if (year < 0)
        return "0000-01-01 00:00:00";
    std::string text(timeForm);
    const auto write = [&](std::size_t at, std::size_t digits, int number) {
        for (; digits > 0; number /= 10)
            text[at + --digits] = static_cast<char>('0' + number % 10);
    };
    write(0, 4, year);
    write(5, 2, local.tm_mon + 1);
    write(8, 2, local.tm_mday);
    write(11, 2, local.tm_hour);
    write(14, 2, local.tm_min);
    write(17, 2, local.tm_sec);
    return text;
}

std::optional<std::time_t> timeFromText(std::string_view text)
{
    const bool formed = std::equal(text.begin(), text.end(), timeForm.begin(), timeForm.end(),
        [](char c, char expected) { return expected == '0' ? c >= '0' && c <= '9' : c == expected; });
    if (!formed)
        return {};
    const auto number = [&](std::size_t at, std::size_t digits) {
        int value = 0;
        for (const char digit : text.substr(at, digits))
            value = 10 * value + (digit - '0');
        return value;
    };
    const std::chrono::year_month_day date{std::chrono::year(number(0, 4)),
        std::chrono::month(static_cast<unsigned>(number(5, 2))),
        std::chrono::day(static_cast<unsigned>(number(8, 2)))};
    std::tm fields{};
    fields.tm_year = number(0, 4) - 1900;
    fields.tm_mon = number(5, 2) - 1;
    fields.tm_mday = number(8, 2);
    fields.tm_hour = number(11, 2);
    fields.tm_min = number(14, 2);
    fields.tm_sec = number(17, 2);
    if (!date.ok() || fields.tm_hour > 23 || fields.tm_min > 59 || fields.tm_sec > 59)
        return {};
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
