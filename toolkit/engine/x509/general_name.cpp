// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "toolkit/engine/x509/general_name.h"

#include "toolkit/engine/base/handles.h"
#include "toolkit/engine/base/oid.h"
#include "toolkit/engine/keys/identity.h"
#include "toolkit/engine/x509/text.h"

#include <algorithm>
#include <array>

#include <arpa/inet.h>

namespace toolkit {
namespace {

std::string otherName(const GENERAL_NAME* name)
{
    const auto identity = identifyData(name);
    return identity ? identityText(*identity) : "otherName=" + dottedOid(name->d.otherName->type_id);
}

/** "192.0.2.1" or "2001:db8::1"; nothing for another number of bytes. */
std::string addressText(View address)
{
    std::array<char, INET6_ADDRSTRLEN> text{};
    const int family = address.size() == sizeof(in_addr) ? AF_INET : AF_INET6;
    if (address.size() == sizeof(in_addr) || address.size() == sizeof(in6_addr))
        inet_ntop(family, address.data(), text.data(), text.size());
    return text.data();
}

} // namespace

std::string identityText(View der)
{
    const auto data = parseIdentifyData(der);
    if (!data)
        return "identifyData";
    std::string text = "identifyData(" + cp949FromUtf8(data->realName);
    if (data->vid)
        text += ", vid=" + hexText(data->vid->value);
    return text + ")";
}

std::string addressesText(View bytes)
{
    std::string one = addressText(bytes);
    const std::size_t half = bytes.size() / 2;
    const std::string range = addressText(bytes.first(half));
    if (!one.empty())
        return one;
    return range.empty() || bytes.size() % 2 != 0 ? hexText(bytes) : range + "/" + addressText(bytes.subspan(half));
}

std::string generalName(const GENERAL_NAME* name)
{
    switch (name->type) {
    case GEN_URI:
        return asn1Text(name->d.uniformResourceIdentifier);
    case GEN_DIRNAME:
        return nameText(name->d.directoryName);
    case GEN_EMAIL:
        return "email=" + asn1Text(name->d.rfc822Name);
    case GEN_DNS:
        return "dns=" + asn1Text(name->d.dNSName);
    case GEN_IPADD:
        return "ip=" +
            addressesText({name->d.iPAddress->data, static_cast<std::size_t>(name->d.iPAddress->length)});
    case GEN_RID:
        return "oid=" + dottedOid(name->d.registeredID);
    case GEN_OTHERNAME:
        return otherName(name);
    default:
        return "unsupported";
    }
}

std::vector<std::string> generalNames(const GENERAL_NAMES* names)
{
    std::vector<std::string> texts;
    texts.reserve(static_cast<std::size_t>(std::max(sk_GENERAL_NAME_num(names), 0)));
    for (int i = 0; i < sk_GENERAL_NAME_num(names); ++i)
        texts.push_back(generalName(sk_GENERAL_NAME_value(names, i)));
    return texts;
}

std::optional<Bytes> identifyData(const GENERAL_NAME* name)
{
    if (name->type != GEN_OTHERNAME || dottedOid(name->d.otherName->type_id) != oid::identifyData)
        return {};
    const ASN1_TYPE* value = name->d.otherName->value;
    if (!value || value->type != V_ASN1_SEQUENCE)
        return {};
    return Bytes(value->value.sequence->data, value->value.sequence->data + value->value.sequence->length);
}

} // namespace toolkit
