#include "toolkit/engine/x509/general_name.h"

#include "toolkit/engine/base/handles.h"
#include "toolkit/engine/base/oid.h"
#include "toolkit/engine/keys/identity.h"
#include "toolkit/engine/x509/text.h"

#include <algorithm>

namespace toolkit {
namespace {

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

std::string otherName(const GENERAL_NAME* name)
{
    const auto identity = identifyData(name);
    return identity ? identityText(*identity) : "otherName=" + dottedOid(name->d.otherName->type_id);
}

std::string addressText(const ASN1_OCTET_STRING* address)
{
    const Handle<char, releaseBuffer> text(i2s_ASN1_OCTET_STRING(nullptr, address));
    return text ? text.get() : "";
}

} // namespace

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
        return "ip=" + addressText(name->d.iPAddress);
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
