#include "toolkit/engine/base/der.h"

#include "toolkit/engine/base/error.h"
#include "toolkit/engine/base/handles.h"
#include "toolkit/engine/base/oid.h"

#include <openssl/objects.h>

namespace toolkit::der {

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

std::string oidText(View content)
{
    if (const auto common = commonOid(content))
        return *common;
    const Bytes der = element(Oid, {content});
    const unsigned char* at = der.data();
    const ObjectHandle object(d2i_ASN1_OBJECT(nullptr, &at, static_cast<long>(der.size())));
    if (object)
        return dottedOid(object.get());
    requireMemory();
    return {};
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
