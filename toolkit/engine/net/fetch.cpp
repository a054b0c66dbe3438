// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "toolkit/engine/net/fetch.h"

#include "toolkit/engine/base/error.h"
#include "toolkit/engine/net/directory.h"
#include "toolkit/engine/net/web.h"
#include "toolkit/engine/x509/text.h"

#include <array>
#include <optional>

namespace toolkit {
namespace {

constexpr std::array attributesOfModes{"", "cACertificate;binary", "userCertificate;binary",
    "certificateRevocationList;binary", "authorityRevocationList;binary"};
constexpr int ldapPort = 389;
constexpr int webPort = 80;

void addAttribute(std::vector<std::string>& attributes, const std::string& name)
{
    constexpr std::string_view binary = ";binary";
    const bool isBinary = name.ends_with(binary);
    attributes.push_back(isBinary ? name : name + std::string(binary));
    attributes.push_back(isBinary ? name.substr(0, name.size() - binary.size()) : name);
}

std::vector<std::string> attributesFor(int mode)
{
    require(
        mode >= 0 && static_cast<std::size_t>(mode) < attributesOfModes.size(), SIGIL_TK_OPTION, "what to fetch");
    std::vector<std::string> attributes;
    for (std::size_t i = 1; i < attributesOfModes.size(); ++i)
        if (mode == SIGIL_TK_FETCH_ANY || static_cast<std::size_t>(mode) == i)
            addAttribute(attributes, attributesOfModes[i]);
    return attributes;
}

int hexDigit(char c)
{
    if (c >= '0' && c <= '9')
        return c - '0';
    const char lower = static_cast<char>(c | 0x20);
    return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

std::string percentDecoded(std::string_view text)
{
    std::string decoded;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool escape =
            text[i] == '%' && i + 2 < text.size() && hexDigit(text[i + 1]) >= 0 && hexDigit(text[i + 2]) >= 0;
        decoded += escape ? static_cast<char>(hexDigit(text[i + 1]) * 16 + hexDigit(text[i + 2])) : text[i];
        i += escape ? 2 : 0;
    }
    return decoded;
}

std::string utf8(std::string_view text)
{
    return isUtf8(text) ? std::string(text) : utf8FromCp949(text).value_or(std::string(text));
}

/** @p text up to @p end, and the rest after it. */
std::string_view cutAt(std::string_view& text, char end)
{
    const std::size_t at = text.find(end);
    const std::string_view head = text.substr(0, at);
    text = at == text.npos ? std::string_view() : text.substr(at + 1);
    return head;
}

struct Address {
    std::string scheme; ///< lower case
    std::string_view rest;
};

Address parseAddress(std::string_view url)
{
    const std::size_t at = url.find("://");
    if (at == url.npos)
        return {"ldap", url};
    std::string scheme(url.substr(0, at));
    for (char& c : scheme)
        c = static_cast<char>(c | 0x20);
    return {scheme, url.substr(at + 3)};
}

bool isWeb(const Address& address) { return address.scheme == "http" || address.scheme == "https"; }

std::string withPort(std::string_view host)
{
    const std::size_t bracket = host.rfind(']'); // before it stand the colons of an IPv6 address
    const std::size_t port = host.find(':', bracket == host.npos ? 0 : bracket);
    return std::string(host) + (port == host.npos ? ":" + std::to_string(ldapPort) : "");
}

/** Whether an address is the name of a host and nothing else; the colons of IPv6 stand in brackets. */
bool isHost(std::string_view text)
{
    const bool bracketed = text.starts_with('[') && text.ends_with(']');
    return text.find_first_of(bracketed ? "/?#@\\ " : "/?#@\\ :") == text.npos;
}

DirectoryQuery directoryQuery(std::string_view rest, const std::vector<std::string>& attributes)
{
    const std::string_view host = cutAt(rest, '/');
    const std::string_view base = cutAt(rest, '?');
    const std::string_view attribute = cutAt(rest, '?');
    require(!host.empty(), SIGIL_TK_URL);
    DirectoryQuery query{withPort(host), utf8(percentDecoded(base)), {}, attributes};
    if (!attribute.empty()) {
        query.attributes.clear();
        addAttribute(query.attributes, std::string(attribute));
    }
    return query;
}

} // namespace

Bytes fetch(std::string_view url, int mode)
{
    Visits visits;
    return fetch(url, mode, visits);
}

Bytes fetch(std::string_view url, int mode, Visits& visits)
{
    const std::vector<std::string> attributes = attributesFor(mode);
    const Address address = parseAddress(url);
    visits.begin(url);
    if (isWeb(address))
        return getFromWeb(std::string(url), visits);
    require(address.scheme == "ldap", SIGIL_TK_URL);
    return queryDirectory(directoryQuery(address.rest, attributes), visits);
}

Bytes post(std::string_view url, const std::string& contentType, View body, std::size_t maximumSize)
{
    Visits visits;
    return post(url, contentType, body, maximumSize, visits);
}

Bytes post(std::string_view url, const std::string& contentType, View body, std::size_t maximumSize, Visits& visits)
{
    require(isWeb(parseAddress(url)), SIGIL_TK_URL);
    return postToWeb(std::string(url), contentType, body, maximumSize, visits);
}

std::string webAddress(std::string_view address, int port)
{
    require(!address.empty() && port >= 0 && port <= 0xFFFF, SIGIL_TK_ARGUMENT, "address");
    if (address.find("://") != address.npos)
        return std::string(address);
    require(isHost(address), SIGIL_TK_URL, "neither a web address nor a host alone");
    return "http://" + std::string(address) + ":" + std::to_string(port == 0 ? webPort : port) + "/";
}

Bytes fetchAttribute(std::string_view url, std::string_view attribute)
{
    const Address address = parseAddress(url);
    require(address.scheme == "ldap" && !attribute.empty(), SIGIL_TK_URL);
    DirectoryQuery query = directoryQuery(address.rest, {});
    query.attributes.clear();
    addAttribute(query.attributes, std::string(attribute));
    return queryDirectory(query, Visits());
}

Bytes fetchByCommonName(
    std::string_view host, int port, std::string_view commonName, int mode, std::string_view base)
{
    require(!host.empty() && !commonName.empty() && port >= 0 && port <= 0xFFFF, SIGIL_TK_ARGUMENT);
    const std::string server = std::string(host) + ":" + std::to_string(port == 0 ? ldapPort : port);
    const std::string filter = "(cn=" + escapedFilterValue(utf8(commonName)) + ")";
    return queryDirectory({server, utf8(base), filter, attributesFor(mode)}, Visits());
}

} // namespace toolkit
