// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "toolkit/engine/x509/certificate_view.h"

#include "toolkit/engine/base/der.h"
#include "toolkit/engine/base/oid.h"
#include "toolkit/engine/x509/general_name.h"
#include "toolkit/engine/x509/text.h"

#include <openssl/objects.h>
#include <openssl/x509v3.h>

#include <algorithm>
#include <bit>
#include <chrono>
#include <utility>

namespace toolkit {
namespace {

/** Thrown where the view does not know how OpenSSL would read on. */
struct Unusual { };

void expect(bool usual)
{
    if (!usual)
        throw Unusual();
}

/** The elements of a structure, each of which must be there and be in DER. */
class Elements {
public:
    explicit Elements(View bytes)
        : m_rest(bytes)
    {
    }

    bool atEnd() const { return m_rest.empty(); }
    bool nextIs(der::Tag tag) const { return !m_rest.empty() && m_rest[0] == tag; }
    der::Element next()
    {
        const auto element = der::shortest(m_rest);
        expect(element.has_value());
        m_rest = m_rest.subspan(element->whole.size());
        return *element;
    }
    View whole(der::Tag tag)
    {
        expect(nextIs(tag));
        return next().whole;
    }
    View take(der::Tag tag)
    {
        expect(nextIs(tag));
        return next().content;
    }
    void end() const { expect(atEnd()); }

private:
    View m_rest;
};

/** The content of the only element. */
View only(View bytes, der::Tag tag)
{
    Elements elements(bytes);
    const View content = elements.take(tag);
    elements.end();
    return content;
}

/** The octets of a non-negative INTEGER, without the zero octet that keeps it from being negative. */
View magnitude(View integer)
{
    expect(!integer.empty() && integer[0] < 0x80);
    const bool padded = integer.size() > 1 && integer[0] == 0;
    expect(!padded || integer[1] >= 0x80);
    return integer.subspan(padded ? 1 : 0);
}

/** The octets of a BIT STRING that has whole octets. */
View wholeOctets(View bits)
{
    expect(!bits.empty() && bits[0] == 0);
    return bits.subspan(1);
}

View identifier(View oid)
{
    expect(der::isOid(oid));
    return oid;
}

/** The identifier of an AlgorithmIdentifier. */
View algorithm(View content)
{
    Elements elements(content);
    const View id = identifier(elements.take(der::Oid));
    if (elements.nextIs(der::Null))
        expect(elements.take(der::Null).empty());
    else if (elements.nextIs(der::Oid))
        identifier(elements.take(der::Oid));
    else if (!elements.atEnd())
        elements.take(der::Sequence);
    elements.end();
    return id;
}

std::string shortName(View id)
{
    const int nid = der::nidOf(id);
    return nid == NID_undef ? der::oidText(id) : OBJ_nid2sn(nid);
}

int decimal(View digits)
{
    int value = 0;
    for (const unsigned char digit : digits) {
        expect(digit >= '0' && digit <= '9');
        value = 10 * value + (digit - '0');
    }
    return value;
}

/** UTCTime or GeneralizedTime in the one form that each has in certificates: "YYMMDDhhmmssZ", "YYYYMMDDhhmmssZ". */
std::time_t timeOf(const der::Element& element)
{
    using namespace std::chrono;
    const bool isShort = element.tag == der::UtcTime;
    expect(isShort || element.tag == der::GeneralizedTime);
    const std::size_t digits = isShort ? 2 : 4;
    const View text = element.content;
    expect(text.size() == digits + 11 && text.back() == 'Z');
    const auto pair = [&](std::size_t index) { return decimal(text.subspan(digits + 2 * index, 2)); };
    const int written = decimal(text.first(digits));
    const int century = !isShort ? 0 : written < 50 ? 2000 : 1900;
    const year_month_day date{
        year(century + written), month(static_cast<unsigned>(pair(0))), day(static_cast<unsigned>(pair(1)))};
    expect(date.ok() && pair(2) < 24 && pair(3) < 60 && pair(4) < 60);
    return (sys_days(date).time_since_epoch() + hours(pair(2)) + minutes(pair(3)) + seconds(pair(4))) / seconds(1);
}

struct Attribute {
    int set; ///< attributes of one set have the same number
    View type;
    der::Tag string;
    View value;
};

/** OpenSSL refuses a name when it cannot convert a string of it. */
bool isConvertible(const der::Element& string)
{
    const View text = string.content;
    switch (string.tag) {
    case der::PrintableString:
    case der::Ia5String:
    case der::T61String:
        return true;
    case der::Utf8String:
        return isUtf8({chars(text), text.size()});
    case der::BmpString:
        for (std::size_t at = 0; at < text.size(); at += 2)
            if ((text[at] & 0xF8) == 0xD8) // half of a character
                return false;
        return text.size() % 2 == 0;
    default:
        return false;
    }
}

/** @param name content of the SEQUENCE */
std::vector<Attribute> attributes(View name)
{
    constexpr std::size_t usualCount = 8;
    std::vector<Attribute> found;
    found.reserve(usualCount);
    Elements sets(name);
    for (int set = 0; !sets.atEnd(); ++set) {
        Elements members(sets.take(der::Set));
        do {
            Elements attribute(members.take(der::Sequence));
            const View type = identifier(attribute.take(der::Oid));
            const der::Element string = attribute.next();
            attribute.end();
            expect(isConvertible(string));
            found.push_back({set, type, static_cast<der::Tag>(string.tag), string.content});
        } while (!members.atEnd());
    }
    return found;
}

std::string nameTextOf(View name)
{
    std::string text;
    int previousSet = -1;
    const std::vector<Attribute> found = attributes(name);
    for (auto attribute = found.rbegin(); attribute != found.rend(); ++attribute) {
        addAttribute(text, attribute->set == previousSet, shortName(attribute->type),
            asn1Text(attribute->string, attribute->value));
        previousSet = attribute->set;
    }
    return text;
}

/** The identity data in an otherName, or its kind. */
std::string otherName(View content)
{
    Elements elements(content);
    const std::string kind = der::oidText(identifier(elements.take(der::Oid)));
    const View wrapped = elements.take(der::Explicit0);
    elements.end();
    only(wrapped, der::Sequence);
    return kind == oid::identifyData ? identityText(wrapped) : "otherName=" + kind;
}

std::string generalName(const der::Element& name)
{
    constexpr der::Tag otherNames = der::constructed(GEN_OTHERNAME);
    constexpr der::Tag directoryNames = der::constructed(GEN_DIRNAME);
    const auto text = [&] { return asn1Text(V_ASN1_IA5STRING, name.content); };
    switch (name.tag) {
    case der::primitive(GEN_URI):
        return text();
    case directoryNames:
        return nameTextOf(only(name.content, der::Sequence));
    case der::primitive(GEN_EMAIL):
        return "email=" + text();
    case der::primitive(GEN_DNS):
        return "dns=" + text();
    case der::primitive(GEN_IPADD):
        return "ip=" + addressesText(name.content);
    case otherNames:
        return otherName(name.content);
    default:
        throw Unusual();
    }
}

/** @param names content of the SEQUENCE */
void addGeneralNames(View names, std::vector<std::string>& texts)
{
    for (Elements elements(names); !elements.atEnd();)
        texts.push_back(generalName(elements.next()));
}

std::string generalNamesText(View names)
{
    std::vector<std::string> texts;
    addGeneralNames(names, texts);
    return join(texts, ", ");
}

std::string alternativeNames(View extension) { return generalNamesText(only(extension, der::Sequence)); }

std::optional<unsigned> usage(View extension)
{
    const View bits = only(extension, der::BitString);
    expect(bits.size() == 2 || bits.size() == 3);
    expect(bits[0] < 8 && (bits.back() & ((1U << bits[0]) - 1)) == 0);
    return bits[1] | (bits.size() > 2 ? static_cast<unsigned>(bits[2]) << 8 : 0U);
}

/** A text that is made when it is wanted. */
struct TextBytes {
    int type;
    View bytes;
};

TextBytes userNotice(View content)
{
    Elements notice(content);
    if (notice.atEnd())
        return {V_ASN1_UTF8STRING, {}};
    const der::Element text = notice.next();
    notice.end();
    const bool isWide = text.tag == der::BmpString;
    expect(text.tag == der::Utf8String || text.tag == der::Ia5String || text.tag == der::VisibleString || isWide);
    expect(!isWide || text.content.size() % 2 == 0);
    return {text.tag, text.content};
}

/** Adds the text of a qualifier to @p texts, when that is not null. */
void readQualifier(View content, std::vector<std::string>* texts)
{
    Elements elements(content);
    const int kind = der::nidOf(identifier(elements.take(der::Oid)));
    const bool isPlace = kind == NID_id_qt_cps;
    expect(isPlace || kind == NID_id_qt_unotice);
    const TextBytes found = isPlace ? TextBytes{V_ASN1_IA5STRING, elements.take(der::Ia5String)}
                                    : userNotice(elements.take(der::Sequence));
    elements.end();
    if (!texts)
        return;
    std::string text = (isPlace ? "CPS: " : "") + asn1Text(found.type, found.bytes);
    if (!text.empty())
        texts->push_back(std::move(text));
}

std::string policy(View content, bool withQualifiers)
{
    Elements elements(content);
    const std::string id = blankOid(der::oidText(identifier(elements.take(der::Oid))));
    std::vector<std::string> texts;
    Elements qualifiers(elements.atEnd() ? View() : elements.take(der::Sequence));
    elements.end();
    while (!qualifiers.atEnd())
        readQualifier(qualifiers.take(der::Sequence), withQualifiers ? &texts : nullptr);
    return policyText(id, texts);
}

std::string policiesText(View extension, bool withQualifiers)
{
    std::vector<std::string> texts;
    for (Elements elements(only(extension, der::Sequence)); !elements.atEnd();)
        texts.push_back(policy(elements.take(der::Sequence), withQualifiers));
    return join(texts, ", ");
}

std::string keyIdOfAuthority(View extension)
{
    Elements elements(only(extension, der::Sequence));
    std::vector<std::string> parts;
    if (elements.nextIs(der::primitive(0)))
        parts.push_back("KeyID=" + hexText(elements.take(der::primitive(0))));
    if (elements.nextIs(der::constructed(1)))
        parts.push_back("issuer=" + generalNamesText(elements.take(der::constructed(1))));
    if (elements.nextIs(der::primitive(2)))
        parts.push_back("serial=" + hexText(magnitude(elements.take(der::primitive(2)))));
    elements.end();
    return join(parts, ", ");
}

std::string distributionPoints(View extension)
{
    std::vector<std::string> texts;
    for (Elements points(only(extension, der::Sequence)); !points.atEnd();) {
        const View name = only(points.take(der::Sequence), der::constructed(0));
        addGeneralNames(only(name, der::constructed(0)), texts);
    }
    return join(texts, ", ");
}

std::string accessText(View content)
{
    Elements elements(content);
    std::string method = shortName(identifier(elements.take(der::Oid)));
    method += "=" + generalName(elements.next());
    elements.end();
    return method;
}

std::string accesses(View extension)
{
    std::vector<std::string> texts;
    for (Elements elements(only(extension, der::Sequence)); !elements.atEnd();)
        texts.push_back(accessText(elements.take(der::Sequence)));
    return join(texts, ", ");
}

} // namespace

std::optional<CertificateView> CertificateView::of(View der)
{
    try {
        return CertificateView(der);
    } catch (const Unusual&) {
        return {};
    }
}

CertificateView::CertificateView(View der)
{
    Elements parts(only(der, der::Sequence));
    readFields(parts.take(der::Sequence));
    algorithm(parts.take(der::Sequence));
    m_signature = wholeOctets(parts.take(der::BitString));
    parts.end();
}

void CertificateView::readFields(View fields)
{
    constexpr der::Tag version = der::constructed(0);
    constexpr der::Tag extensions = der::constructed(3);
    Elements elements(fields);
    if (elements.nextIs(version)) {
        const View number = magnitude(only(elements.take(version), der::Integer));
        expect(number.size() == 1 && number[0] < 0x80);
        m_version = number[0] + 1;
    }
    m_serial = magnitude(elements.take(der::Integer));
    m_algorithm = algorithm(elements.take(der::Sequence));
    m_issuer = elements.whole(der::Sequence);
    Elements validity(elements.take(der::Sequence));
    m_notBefore = timeOf(validity.next());
    m_notAfter = timeOf(validity.next());
    validity.end();
    m_subject = elements.whole(der::Sequence);
    for (const View name : {m_issuer, m_subject})
        attributes(only(name, der::Sequence));
    readKey(elements.whole(der::Sequence));
    if (!elements.atEnd())
        readExtensions(only(elements.take(extensions), der::Sequence));
    elements.end();
}

void CertificateView::readKey(View keyInfo)
{
    m_keyInfo = keyInfo;
    Elements elements(only(keyInfo, der::Sequence));
    m_keyAlgorithm = algorithm(elements.take(der::Sequence));
    m_key = wholeOctets(elements.take(der::BitString));
    elements.end();
}

void CertificateView::readExtensions(View extensions)
{
    constexpr std::size_t most = 32; // each is compared with all before
    for (Elements elements(extensions); !elements.atEnd();) {
        Elements extension(elements.take(der::Sequence));
        const View id = identifier(extension.take(der::Oid));
        if (extension.nextIs(der::Boolean))
            expect(extension.take(der::Boolean).size() == 1);
        const View value = extension.take(der::OctetString);
        extension.end();
        const bool isNew = std::none_of(m_extensions.begin(), m_extensions.end(),
            [&](const Extension& other) { return std::ranges::equal(other.id, id); });
        expect(isNew && m_extensions.size() < most);
        m_extensions.push_back({id, value});
    }
}

/** What @p read makes of an extension; an empty field when there is none. */
template <class T>
std::optional<T> CertificateView::extension(int nid, T (*read)(View)) const
{
    const View id = der::oidContent(nid);
    const auto found = std::find_if(m_extensions.begin(), m_extensions.end(),
        [&](const Extension& extension) { return std::ranges::equal(extension.id, id); });
    if (found == m_extensions.end())
        return T();
    try {
        return read(found->value);
    } catch (const Unusual&) {
        return {};
    }
}

std::string CertificateView::uid() const
{
    const std::vector<Attribute> found = attributes(only(m_subject, der::Sequence));
    const auto last = std::find_if(found.rbegin(), found.rend(),
        [](const Attribute& attribute) { return der::nidOf(attribute.type) == NID_commonName; });
    return last == found.rend() ? std::string() : asn1Text(last->string, last->value);
}

std::string CertificateView::serialNumber() const { return hexText(m_serial); }

std::string CertificateView::signatureAlgorithm() const
{
    const int nid = der::nidOf(m_algorithm);
    return nid == NID_undef ? der::oidText(m_algorithm) : OBJ_nid2ln(nid);
}

std::string CertificateView::signature() const { return hexText(m_signature); }

std::string CertificateView::issuerName() const { return nameTextOf(only(m_issuer, der::Sequence)); }

std::string CertificateView::subjectName() const { return nameTextOf(only(m_subject, der::Sequence)); }

std::string CertificateView::publicKeyAlgorithm() const
{
    switch (const int nid = der::nidOf(m_keyAlgorithm)) {
    case NID_rsaEncryption:
        return "RSA";
    case NID_X9_62_id_ecPublicKey:
        return "EC";
    case NID_undef:
        return der::oidText(m_keyAlgorithm);
    default:
        return OBJ_nid2sn(nid);
    }
}

std::optional<std::string> CertificateView::publicKeyLength() const
{
    const auto bits = der::nidOf(m_keyAlgorithm) == NID_rsaEncryption ? modulusBits(m_key) : std::nullopt;
    return bits ? std::optional(std::to_string(*bits) + " Bits") : std::nullopt;
}

std::string CertificateView::publicKeyText() const { return hexText(m_key); }

std::optional<std::optional<unsigned>> CertificateView::usageBits() const
{
    return extension(NID_key_usage, usage);
}

std::optional<std::string> CertificateView::policies() const
{
    return extension<std::string>(
        NID_certificate_policies, [](View extension) { return policiesText(extension, true); });
}

std::optional<std::string> CertificateView::policyIds() const
{
    return extension<std::string>(
        NID_certificate_policies, [](View extension) { return policiesText(extension, false); });
}

std::optional<std::string> CertificateView::subjectAltName() const
{
    return extension(NID_subject_alt_name, alternativeNames);
}

std::optional<std::string> CertificateView::authorityKeyId() const
{
    return extension(NID_authority_key_identifier, keyIdOfAuthority);
}

std::optional<std::string> CertificateView::subjectKeyId() const
{
    return extension<std::string>(
        NID_subject_key_identifier, [](View extension) { return hexText(only(extension, der::OctetString)); });
}

std::optional<std::string> CertificateView::crlDistributionPoints() const
{
    return extension(NID_crl_distribution_points, distributionPoints);
}

std::optional<std::string> CertificateView::authorityInfoAccess() const
{
    return extension(NID_info_access, accesses);
}

std::optional<int> modulusBits(View key)
{
    try {
        Elements numbers(only(key, der::Sequence));
        const View modulus = magnitude(numbers.take(der::Integer));
        const View exponent = magnitude(numbers.take(der::Integer));
        numbers.end();
        expect(modulus[0] != 0 && exponent[0] != 0);
        return 8 * static_cast<int>(modulus.size()) - std::countl_zero(modulus[0]);
    } catch (const Unusual&) {
        return {};
    }
}

} // namespace toolkit
