// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "toolkit/engine/keys/identity.h"

#include "toolkit/engine/base/der.h"
#include "toolkit/engine/base/error.h"
#include "toolkit/engine/base/oid.h"

#include <openssl/objects.h>

#include <algorithm>
#include <iterator>

namespace toolkit {
namespace {

std::optional<VirtualId> parseVid(View content)
{
    der::Reader vid(content);
    const auto algorithm = vid.take(der::Sequence);
    const auto wrapped = vid.take(der::Explicit0);
    if (!algorithm || !wrapped)
        return {};
    const auto hash = der::Reader(*algorithm).take(der::Oid);
    const auto value = der::Reader(*wrapped).take(der::OctetString);
    if (!hash || !value)
        return {};
    return VirtualId{der::oidText(*hash), toBytes(*value)};
}

std::optional<VirtualId> findVid(View userInfo)
{
    der::Reader attributes(userInfo);
    while (const auto attribute = attributes.take(der::Sequence)) {
        der::Reader parts(*attribute);
        const auto type = parts.take(der::Oid);
        const auto value = parts.take(der::Sequence);
        if (type && value && der::oidText(*type) == oid::virtualId)
            return parseVid(*value);
    }
    return {};
}

Bytes encodeVid(const VirtualId& vid)
{
    const Bytes algorithm = der::element(der::Sequence, {der::oid(vid.hashOid.c_str())});
    const Bytes value = der::element(der::Explicit0, {der::element(der::OctetString, {vid.value})});
    return der::element(der::Sequence, {der::oid(oid::virtualId), der::element(der::Sequence, {algorithm, value})});
}

Secret hashContent(std::string_view idn, View random)
{
    Secret number;
    std::copy_if(idn.begin(), idn.end(), std::back_inserter(number), [](char c) { return c != ' ' && c != '-'; });
    constexpr unsigned char unusedBits[]{0};
    const auto idnElement = der::element<Secret>(der::PrintableString, {number});
    const auto randomElement = der::element<Secret>(der::BitString, {unusedBits, random});
    return der::element<Secret>(der::Sequence, {idnElement, randomElement});
}

Secret digest(const EVP_MD* algorithm, View data)
{
    Secret hash(EVP_MAX_MD_SIZE);
    unsigned length = 0;
    require(EVP_Digest(data.data(), data.size(), hash.data(), &length, algorithm, nullptr) == 1, SIGIL_TK_INTERNAL,
        "digest");
    hash.resize(length);
    return hash;
}

} // namespace

std::optional<IdentifyData> parseIdentifyData(View der)
{
    der::Reader outer(der);
    const auto content = outer.take(der::Sequence);
    if (!content)
        return {};
    der::Reader fields(*content);
    const auto name = fields.take(der::Utf8String);
    if (!name)
        return {};
    IdentifyData data{std::string(chars(*name), name->size()), {}};
    if (const auto userInfo = fields.take(der::Sequence))
        data.vid = findVid(*userInfo);
    return data;
}

Bytes encodeIdentifyData(const IdentifyData& data)
{
    const Bytes name = der::element(der::Utf8String, {view(data.realName)});
    if (!data.vid)
        return der::element(der::Sequence, {name});
    return der::element(der::Sequence, {name, der::element(der::Sequence, {encodeVid(*data.vid)})});
}

VirtualId computeVid(const Library& library, const std::string& hashOid, std::string_view idn, View random)
{
    const DigestHandle algorithm = library.digest(hashOid.c_str());
    const Secret once = digest(algorithm.get(), hashContent(idn, random));
    return {hashOid, toBytes(digest(algorithm.get(), once))};
}

void verifyIdentity(const Library& library, const Certificate& certificate, View random, std::string_view idn)
{
    const auto der = certificate.identifyData();
    const auto data = der ? parseIdentifyData(*der) : std::nullopt;
    require(data && data->vid, SIGIL_TK_VID_NO_DATA);
    const VirtualId expected = computeVid(library, data->vid->hashOid, idn, random);
    const Bytes& stored = data->vid->value;
    require(stored.size() == expected.value.size() &&
            CRYPTO_memcmp(stored.data(), expected.value.data(), stored.size()) == 0,
        SIGIL_TK_VID_MISMATCH);
}

} // namespace toolkit
