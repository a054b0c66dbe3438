// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "toolkit/engine/x509/name.h"

#include "toolkit/engine/x509/text.h"

#include <algorithm>
#include <array>
#include <string>
#include <vector>

namespace toolkit {
namespace {

struct TypeName {
    std::string_view name;
    int nid;
};

/** The types that people write; others are known by their numbers. */
constexpr std::array types{
    TypeName{"cn", NID_commonName},
    TypeName{"ou", NID_organizationalUnitName},
    TypeName{"o", NID_organizationName},
    TypeName{"c", NID_countryName},
    TypeName{"l", NID_localityName},
    TypeName{"st", NID_stateOrProvinceName},
    TypeName{"street", NID_streetAddress},
    TypeName{"dc", NID_domainComponent},
    TypeName{"uid", NID_userId},
    TypeName{"sn", NID_surname},
    TypeName{"gn", NID_givenName},
    TypeName{"title", NID_title},
    TypeName{"serialnumber", NID_serialNumber},
    TypeName{"emailaddress", NID_pkcs9_emailAddress},
};

struct Part {
    std::string type; ///< lower case
    std::string_view value;
};

bool isOfType(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '.';
}

/** The type that @p text begins with, as "cn" of " CN = x"; empty when it begins with none. */
std::string_view leadingType(std::string_view text)
{
    const std::string_view type = trimmed(text.substr(0, std::min(text.find('='), text.size())));
    const bool isType = text.find('=') != text.npos && std::all_of(type.begin(), type.end(), isOfType);
    return isType ? type : std::string_view();
}

/** Where the part that @p text begins with ends. */
std::size_t endOfPart(std::string_view text)
{
    std::size_t end = text.find(',');
    while (end != text.npos && leadingType(text.substr(end + 1)).empty())
        end = text.find(',', end + 1);
    return std::min(end, text.size());
}

Part partOf(std::string_view text)
{
    std::string type(leadingType(text));
    require(!type.empty(), SIGIL_TK_ARGUMENT, "distinguished name");
    for (char& c : type)
        c = static_cast<char>(c >= 'A' && c <= 'Z' ? c | 0x20 : c);
    return {std::move(type), trimmed(text.substr(text.find('=') + 1))};
}

std::vector<Part> partsOf(std::string_view text)
{
    std::vector<Part> parts;
    while (!text.empty()) {
        const std::size_t end = endOfPart(text);
        parts.push_back(partOf(text.substr(0, end)));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return parts;
}

ObjectHandle typeObject(const std::string& type)
{
    for (const TypeName& known : types)
        if (known.name == type)
            return ObjectHandle(OBJ_nid2obj(known.nid));
    return ObjectHandle(OBJ_txt2obj(type.c_str(), 1));
}

} // namespace

NameHandle nameFromText(std::string_view text)
{
    const std::string utf8 = isUtf8(text) ? std::string(text) : utf8FromCp949(text).value_or("");
    std::vector<Part> parts = partsOf(utf8);
    require(!parts.empty(), SIGIL_TK_ARGUMENT, "distinguished name");
    if (parts.front().type != "c")
        std::reverse(parts.begin(), parts.end());
    NameHandle name(X509_NAME_new());
    require(name != nullptr, SIGIL_TK_NO_MEMORY);
    for (const Part& part : parts) {
        const ObjectHandle type = typeObject(part.type);
        const auto* const value = reinterpret_cast<const unsigned char*>(part.value.data());
        const bool added = type && !part.value.empty() &&
            X509_NAME_add_entry_by_OBJ(
                name.get(), type.get(), MBSTRING_UTF8, value, static_cast<int>(part.value.size()), -1, 0) == 1;
        require(added, SIGIL_TK_ARGUMENT, "distinguished name: " + part.type);
    }
    return name;
}

} // namespace toolkit
