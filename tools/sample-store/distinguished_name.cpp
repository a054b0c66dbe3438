// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "tools/sample-store/distinguished_name.h"

#include "tools/sample-store/check.h"

#include <openssl/objects.h>

#include <vector>

namespace sample {

namespace {

struct Attribute {
    std::string_view type;
    int nid;
    int encoding;
};

constexpr Attribute attributes[] = {{"cn", NID_commonName, V_ASN1_UTF8STRING},
    {"ou", NID_organizationalUnitName, V_ASN1_UTF8STRING}, {"o", NID_organizationName, V_ASN1_UTF8STRING},
    {"c", NID_countryName, V_ASN1_PRINTABLESTRING}};

const Attribute& attributeOf(std::string_view type)
{
    for (const Attribute& attribute : attributes)
        if (attribute.type == type)
            return attribute;
    throw std::runtime_error("unknown attribute in a name: " + std::string(type));
}

std::vector<std::string_view> partsOf(std::string_view text)
{
    std::vector<std::string_view> parts;
    for (std::size_t comma; (comma = text.find(',')) != text.npos; text.remove_prefix(comma + 1))
        parts.push_back(text.substr(0, comma));
    parts.push_back(text);
    return parts;
}

void addPart(X509_NAME* name, std::string_view part)
{
    const std::size_t equals = part.find('=');
    const Attribute& attribute = attributeOf(part.substr(0, equals));
    const std::string value(part.substr(equals + 1));
    check(X509_NAME_add_entry_by_NID(name, attribute.nid, attribute.encoding,
              reinterpret_cast<const unsigned char*>(value.c_str()), static_cast<int>(value.size()), -1, 0),
        "encode a name");
}

} // namespace

std::string DistinguishedName::commonName() const
{
    const std::string_view first = partsOf(m_text).front();
    return std::string(first.substr(first.find('=') + 1));
}

NameHandle DistinguishedName::toX509() const
{
    NameHandle name(X509_NAME_new());
    const std::vector<std::string_view> parts = partsOf(m_text);
    for (auto part = parts.rbegin(); part != parts.rend(); ++part)
        addPart(name.get(), *part);
    return name;
}

} // namespace sample
