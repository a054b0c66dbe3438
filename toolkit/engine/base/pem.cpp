// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "toolkit/engine/base/pem.h"

#include "toolkit/engine/base/error.h"

#include <openssl/evp.h>

#include <algorithm>
#include <array>

namespace toolkit {
namespace {

constexpr std::array<std::string_view, 7> labels{
    "CERTIFICATE", "PRIVATE KEY", "ENCRYPTED PRIVATE KEY", "PUBLIC KEY", "CMS", "X509 CRL", "CERTIFICATE REQUEST"};

constexpr std::string_view beginMarker = "-----BEGIN ";
constexpr std::string_view endMarker = "-----END ";
constexpr std::string_view dashes = "-----";
constexpr std::size_t lineLength = 64;

bool isSpace(unsigned char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

} // namespace

std::string base64(View bytes)
{
    std::string text(4 * ((bytes.size() + 2) / 3) + 1, '\0');
    const int length = EVP_EncodeBlock(
        reinterpret_cast<unsigned char*>(text.data()), bytes.data(), static_cast<int>(bytes.size()));
    text.resize(static_cast<std::size_t>(length));
    return text;
}

Secret fromBase64(View text)
{
    Secret packed;
    packed.reserve(text.size());
    std::copy_if(text.begin(), text.end(), std::back_inserter(packed), [](unsigned char c) { return !isSpace(c); });
    require(packed.size() % 4 == 0, SIGIL_TK_ENCODING, "base64 length");
    const auto padding = static_cast<std::size_t>(std::count(packed.begin(), packed.end(), '='));
    const bool atEnd = std::all_of(packed.end() - static_cast<std::ptrdiff_t>(std::min(padding, packed.size())),
        packed.end(), [](unsigned char c) { return c == '='; });
    require(padding <= 2 && atEnd, SIGIL_TK_ENCODING, "base64 padding");
    Secret bytes(packed.size() / 4 * 3);
    const int length = EVP_DecodeBlock(bytes.data(), packed.data(), static_cast<int>(packed.size()));
    require(length == static_cast<int>(bytes.size()), SIGIL_TK_ENCODING, "base64");
    bytes.resize(bytes.size() - padding);
    return bytes;
}

std::string pemEncode(int type, View der)
{
    require(type >= 0 && static_cast<std::size_t>(type) < labels.size(), SIGIL_TK_OPTION, "PEM type");
    const std::string label(labels[static_cast<std::size_t>(type)]);
    const std::string body = base64(der);
    std::string text = std::string(beginMarker) + label + "-----\n";
    for (std::size_t at = 0; at < body.size(); at += lineLength)
        text += body.substr(at, lineLength) + "\n";
    return text + std::string(endMarker) + label + "-----\n";
}

Secret pemDecode(View text)
{
    const std::string_view all(chars(text), text.size());
    const std::size_t begin = all.find(beginMarker);
    require(begin != all.npos, SIGIL_TK_ENCODING, "PEM");
    const std::size_t labelAt = begin + beginMarker.size();
    const std::size_t labelEnd = all.find(dashes, labelAt);
    require(labelEnd != all.npos, SIGIL_TK_ENCODING, "PEM");
    const std::string footer =
        std::string(endMarker) + std::string(all.substr(labelAt, labelEnd - labelAt)) + std::string(dashes);
    const std::size_t bodyAt = labelEnd + dashes.size();
    const std::size_t bodyEnd = all.find(footer, bodyAt);
    require(bodyEnd != all.npos, SIGIL_TK_ENCODING, "PEM");
    return fromBase64(text.subspan(bodyAt, bodyEnd - bodyAt));
}

Bytes derOf(View bytes, int code)
{
    const std::string_view start(chars(bytes), std::min(bytes.size(), beginMarker.size()));
    if (start != beginMarker)
        return toBytes(bytes);
    try {
        return toBytes(pemDecode(bytes));
    } catch (const Error& error) {
        failAs(code, error);
    }
}

} // namespace toolkit
