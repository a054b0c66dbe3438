// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "toolkit/engine/base/der.h"

#include "toolkit/engine/base/error.h"
#include "toolkit/engine/base/handles.h"
#include "toolkit/engine/base/oid.h"

#include <openssl/objects.h>

#include <algorithm>
#include <array>
#include <utility>

namespace toolkit::der {
namespace {

struct CommonId {
    View content;
    int nid;
};

/** What stands in nearly every certificate: OpenSSL searches a thousand names for it. */
const auto& commonIds()
{
    static const auto ids = [] {
        constexpr std::array nids{NID_commonName, NID_organizationalUnitName, NID_organizationName, NID_countryName,
            NID_pkcs9_emailAddress, NID_domainComponent, NID_sha256WithRSAEncryption, NID_sha1WithRSAEncryption,
            NID_rsaEncryption, NID_X9_62_id_ecPublicKey, NID_id_qt_cps, NID_id_qt_unotice, NID_ad_OCSP,
            NID_ad_ca_issuers};
        std::array<CommonId, nids.size()> found{};
        std::transform(nids.begin(), nids.end(), found.begin(), [](int nid) {
            return CommonId{oidContent(nid), nid};
        });
        return found;
    }();
    return ids;
}

/** Null when this is not the content of an OID. */
ObjectHandle objectOf(View content)
{
    const Bytes der = element(Oid, {content});
    const unsigned char* at = der.data();
    ObjectHandle object(d2i_ASN1_OBJECT(nullptr, &at, static_cast<long>(der.size())));
    if (!object)
        requireMemory();
    return object;
}

} // namespace

std::optional<Element> Reader::next()
{
    if (m_rest.empty())
        return {};
    const unsigned char* at = m_rest.data();
    long length = 0;
    int tag = 0;
    int tagClass = 0;
    const int result = ASN1_get_object(&at, &length, &tag, &tagClass, static_cast<long>(m_rest.size()));
    // Bit 7 is an error, bit 0 an indefinite length.
    if ((result & 0x81) != 0 || tag > 30)
        return {};
    const std::size_t header = static_cast<std::size_t>(at - m_rest.data());
    const std::size_t size = header + static_cast<std::size_t>(length);
    const Element element{m_rest[0], m_rest.subspan(header, static_cast<std::size_t>(length)), m_rest.first(size)};
    m_rest = m_rest.subspan(size);
    return element;
}

std::optional<View> Reader::take(Tag tag)
{
    if (m_rest.empty() || m_rest[0] != tag)
        return {};
    const auto element = next();
    return element ? std::optional(element->content) : std::nullopt;
}

std::optional<Element> first(View bytes) { return Reader(bytes).next(); }

std::optional<Element> shortest(View bytes)
{
    constexpr std::size_t mostOctets = 4;
    if (bytes.size() < 2 || (bytes[0] & 0x1F) == 0x1F)
        return {};
    std::size_t header = 2;
    std::size_t length = bytes[1];
    if (length >= 0x80) {
        const std::size_t octets = length - 0x80;
        if (octets > mostOctets || bytes.size() < header + octets)
            return {};
        length = 0;
        for (const unsigned char octet : bytes.subspan(header, octets))
            length = length << 8 | octet;
        if (length < 0x80 || bytes[header] == 0)
            return {};
        header += octets;
    }
    if (length > bytes.size() - header)
        return {};
    return Element{bytes[0], bytes.subspan(header, length), bytes.first(header + length)};
}

bool isOid(View content)
{
    constexpr std::size_t longest = 64;
    if (content.empty() || content.size() > longest || content.back() >= 0x80)
        return false;
    unsigned char before = 0; // a number ends with an octet below 0x80, and does not begin with 0x80
    for (const unsigned char octet : content)
        if (std::exchange(before, octet) < 0x80 && octet == 0x80)
            return false;
    return true;
}

int nidOf(View content)
{
    for (const CommonId& id : commonIds())
        if (std::ranges::equal(id.content, content))
            return id.nid;
    const ObjectHandle object = objectOf(content);
    return object ? OBJ_obj2nid(object.get()) : NID_undef;
}

View oidContent(int nid)
{
    const ASN1_OBJECT* const object = OBJ_nid2obj(nid);
    return {OBJ_get0_data(object), OBJ_length(object)};
}

std::string oidText(View content)
{
    if (const auto common = commonOid(content))
        return *common;
    const ObjectHandle object = objectOf(content);
    return object ? dottedOid(object.get()) : std::string();
}

std::optional<unsigned long> smallInteger(View content)
{
    if (content.empty() || content.size() > 5 || (content[0] & 0x80) != 0)
        return {};
    unsigned long value = 0;
    for (const unsigned char byte : content)
        value = (value << 8) | byte;
    return value;
}

View withoutZeros(View content)
{
    while (!content.empty() && content.front() == 0)
        content = content.subspan(1);
    return content;
}

std::optional<View> bitOctets(View content)
{
    if (content.empty() || content[0] > 7)
        return {};
    return content.subspan(1);
}

Bytes oid(const char* dotted)
{
    const ObjectHandle object(OBJ_txt2obj(dotted, 1));
    return encode<Bytes>(object.get(), i2d_ASN1_OBJECT);
}

} // namespace toolkit::der
