// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "toolkit/engine/keys/private_key.h"

#include "toolkit/engine/base/der.h"
#include "toolkit/engine/base/error.h"
#include "toolkit/engine/base/oid.h"
#include "toolkit/engine/keys/key_numbers.h"

#include <algorithm>
#include <optional>
#include <vector>

namespace toolkit {
namespace {

/** The fields of a PrivateKeyInfo. */
struct KeyInfo {
    View beforeAttributes;        ///< version, algorithm and key
    std::vector<View> attributes; ///< each one whole
    std::vector<View> afterwards; ///< public key of the later version
};

std::optional<KeyInfo> parseKeyInfo(View der)
{
    der::Reader outer(der);
    const auto content = outer.take(der::Sequence);
    if (!content || !outer.atEnd())
        return {};
    der::Reader fields(*content);
    const auto version = fields.take(der::Integer);
    const auto number = version ? der::smallInteger(*version) : std::nullopt;
    const auto algorithm = fields.take(der::Sequence);
    const auto key = fields.take(der::OctetString);
    if (!number || *number > 1 || !algorithm || !key)
        return {};
    if (!der::Reader(*algorithm).take(der::Oid))
        return {};
    KeyInfo info{content->first(static_cast<std::size_t>(key->data() + key->size() - content->data())), {}, {}};
    while (const auto field = fields.next()) {
        if (field->tag != der::Explicit0) {
            info.afterwards.push_back(field->whole);
            continue;
        }
        der::Reader set(field->content);
        while (const auto attribute = set.next())
            info.attributes.push_back(attribute->whole);
        if (!set.atEnd())
            return {};
    }
    return fields.atEnd() ? std::optional(info) : std::nullopt;
}

/** Content of the SET of values when @p attribute holds the identity random value. */
std::optional<View> randomValues(View attribute)
{
    const auto content = der::Reader(attribute).take(der::Sequence);
    if (!content)
        return {};
    der::Reader parts(*content);
    const auto type = parts.take(der::Oid);
    if (!type || der::oidText(*type) != oid::randomNumber)
        return {};
    return parts.take(der::Set);
}

/** An RSAPublicKey from the first numbers of an RSAPrivateKey; nothing when that has another form. */
std::optional<Bytes> rsaPublicKey(View privateKey)
{
    const auto numbers = rsaNumbers(privateKey);
    return numbers ? std::optional(der::element(der::Sequence, {(*numbers)[1].whole, (*numbers)[2].whole}))
                   : std::nullopt;
}

struct Algorithm {
    std::string oid;
    View whole;
};

std::optional<Algorithm> takeAlgorithm(der::Reader& fields)
{
    const auto algorithm = fields.next();
    const auto id = algorithm ? der::Reader(algorithm->content).take(der::Oid) : std::nullopt;
    return id ? std::optional(Algorithm{der::oidText(*id), algorithm->whole}) : std::nullopt;
}

bool sameBytes(View left, View right) { return std::equal(left.begin(), left.end(), right.begin(), right.end()); }

/** Compares the public parts where both are written out, so that no key has to be loaded: OpenSSL's decoders leave copies of
 *  what they read. Nothing for other kinds and forms. */
std::optional<bool> belongTogether(View publicKeyInfo, View keyInfo)
{
    der::Reader publicFields(der::Reader(publicKeyInfo).take(der::Sequence).value_or(View()));
    der::Reader privateFields(der::Reader(keyInfo).take(der::Sequence).value_or(View()));
    privateFields.take(der::Integer);
    const auto publicAlgorithm = takeAlgorithm(publicFields);
    const auto privateAlgorithm = takeAlgorithm(privateFields);
    const auto bits = publicFields.take(der::BitString);
    const auto known = bits ? der::bitOctets(*bits) : std::nullopt;
    const auto key = privateFields.take(der::OctetString);
    if (!isPrivateKeyInfo(keyInfo) || !publicAlgorithm || !privateAlgorithm || !known || known->empty() || !key)
        return {};
    const bool rsa = publicAlgorithm->oid == oid::rsa && privateAlgorithm->oid == oid::rsa;
    const bool ec = publicAlgorithm->oid == oid::ec && known->front() == 4 &&
        sameBytes(publicAlgorithm->whole, privateAlgorithm->whole);
    const auto own = rsa ? rsaPublicKey(*key) : ec ? ecPublicKey(*key) : std::nullopt;
    return own ? std::optional(sameBytes(*own, *known)) : std::nullopt;
}

/** By OpenSSL's decoders, which know all kinds. */
KeyHandle decodedKey(const Library& library, View keyInfo)
{
    const unsigned char* at = keyInfo.data();
    const KeyInfoHandle parsed(d2i_PKCS8_PRIV_KEY_INFO(nullptr, &at, static_cast<long>(keyInfo.size())));
    require(parsed != nullptr, SIGIL_TK_KEY_UNUSABLE);
    KeyHandle key(EVP_PKCS82PKEY_ex(parsed.get(), library.context(), nullptr));
    require(key != nullptr, SIGIL_TK_KEY_UNUSABLE);
    return key;
}

} // namespace

bool isPrivateKeyInfo(View der) { return parseKeyInfo(der).has_value(); }

KeyHandle loadPrivateKey(const Library& library, View keyInfo)
{
    require(isPrivateKeyInfo(keyInfo), SIGIL_TK_KEY_UNUSABLE, "PrivateKeyInfo");
    KeyHandle key = keyOfNumbers(library, keyInfo);
    return key ? std::move(key) : decodedKey(library, keyInfo);
}

Secret encodePrivateKey(const EVP_PKEY* key)
{
    if (auto encoded = encodeNumbers(key))
        return std::move(*encoded);
    const KeyInfoHandle info(EVP_PKEY2PKCS8(key));
    require(info != nullptr, SIGIL_TK_KEY_UNUSABLE);
    return encode<Secret>(info.get(), i2d_PKCS8_PRIV_KEY_INFO);
}

Secret heldIdentityRandom(View keyInfo)
{
    const auto info = parseKeyInfo(keyInfo);
    require(info.has_value(), SIGIL_TK_KEY_UNUSABLE, "PrivateKeyInfo");
    for (const View attribute : info->attributes) {
        const auto values = randomValues(attribute);
        const auto bits = values ? der::Reader(*values).take(der::BitString) : std::nullopt;
        const auto random = bits ? der::bitOctets(*bits) : std::nullopt;
        if (random && !random->empty())
            return toSecret(*random);
    }
    return {};
}

Secret identityRandom(View keyInfo)
{
    Secret random = heldIdentityRandom(keyInfo);
    require(!random.empty(), SIGIL_TK_VID_NO_RANDOM);
    return random;
}

Secret withIdentityRandom(View keyInfo, View random)
{
    const auto info = parseKeyInfo(keyInfo);
    require(info.has_value(), SIGIL_TK_KEY_UNUSABLE, "PrivateKeyInfo");
    constexpr unsigned char unusedBits[]{0};
    const auto bits = der::element<Secret>(der::BitString, {unusedBits, random});
    const auto values = der::element<Secret>(der::Set, {bits});
    Secret attributes = der::element<Secret>(der::Sequence, {der::oid(oid::randomNumber), values});
    for (const View attribute : info->attributes)
        if (!randomValues(attribute))
            attributes.insert(attributes.end(), attribute.begin(), attribute.end());
    Secret rest;
    for (const View field : info->afterwards)
        rest.insert(rest.end(), field.begin(), field.end());
    const auto set = der::element<Secret>(der::Explicit0, {attributes});
    return der::element<Secret>(der::Sequence, {info->beforeAttributes, set, rest});
}

void checkKeyPair(const Library& library, const Certificate& certificate, View keyInfo)
{
    if (const auto same = belongTogether(certificate.publicKeyDer(), keyInfo))
        return require(*same, SIGIL_TK_KEY_MISMATCH);
    const KeyHandle privateKey = loadPrivateKey(library, keyInfo);
    const KeyHandle publicKey = certificate.publicKey();
    require(EVP_PKEY_eq(publicKey.get(), privateKey.get()) == 1, SIGIL_TK_KEY_MISMATCH);
}

} // namespace toolkit
