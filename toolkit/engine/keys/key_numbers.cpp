// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "toolkit/engine/keys/key_numbers.h"

#include "toolkit/engine/base/oid.h"

#include <openssl/core_names.h>
#include <openssl/ec.h>
#include <openssl/objects.h>
#include <openssl/params.h>

#include <algorithm>
#include <array>
#include <bit>
#include <deque>
#include <vector>

namespace toolkit {
namespace {

/** A key from its numbers. They are handed over where they lie. */
class KeyParameters {
public:
    /** @param number as DER writes it; of no sign */
    void add(const char* name, View number)
    {
        Secret& native = m_numbers.emplace_back(number.begin(), number.end());
        if constexpr (std::endian::native == std::endian::little)
            std::reverse(native.begin(), native.end());
        m_parameters.push_back(OSSL_PARAM_construct_BN(name, native.data(), native.size()));
    }
    void addName(const char* name, const char* value)
    {
        m_parameters.push_back(OSSL_PARAM_construct_utf8_string(name, const_cast<char*>(value), 0)); // only read
    }
    void addOctets(const char* name, Bytes& value)
    {
        m_parameters.push_back(OSSL_PARAM_construct_octet_string(name, value.data(), value.size()));
    }
    /** Null when OpenSSL takes no such key. */
    KeyHandle make(const Library& library, const char* kind)
    {
        m_parameters.push_back(OSSL_PARAM_construct_end());
        const KeyContextHandle context(EVP_PKEY_CTX_new_from_name(library.context(), kind, nullptr));
        EVP_PKEY* key = nullptr;
        if (context && EVP_PKEY_fromdata_init(context.get()) == 1)
            EVP_PKEY_fromdata(context.get(), &key, EVP_PKEY_KEYPAIR, m_parameters.data());
        return KeyHandle(key);
    }

private:
    std::deque<Secret> m_numbers;
    std::vector<OSSL_PARAM> m_parameters;
};

constexpr std::array<const char*, rsaNumberCount> rsaNames{nullptr, OSSL_PKEY_PARAM_RSA_N, OSSL_PKEY_PARAM_RSA_E,
    OSSL_PKEY_PARAM_RSA_D, OSSL_PKEY_PARAM_RSA_FACTOR1, OSSL_PKEY_PARAM_RSA_FACTOR2, OSSL_PKEY_PARAM_RSA_EXPONENT1,
    OSSL_PKEY_PARAM_RSA_EXPONENT2, OSSL_PKEY_PARAM_RSA_COEFFICIENT1};

bool isPositive(View number)
{
    return (number.front() & 0x80) == 0 &&
        std::any_of(number.begin(), number.end(), [](unsigned char byte) { return byte != 0; });
}

KeyHandle rsaKey(const Library& library, View privateKey)
{
    const auto numbers = rsaNumbers(privateKey);
    if (!numbers)
        return {};
    KeyParameters parameters;
    for (std::size_t i = 1; i < numbers->size(); ++i) {
        if (!isPositive((*numbers)[i].content))
            return {};
        parameters.add(rsaNames[i], (*numbers)[i].content);
    }
    return parameters.make(library, "RSA");
}

/** The public point of a scalar on a curve; empty when there is none. */
Bytes publicPoint(const Library& library, int curve, View scalar)
{
    const GroupHandle group(EC_GROUP_new_by_curve_name_ex(library.context(), nullptr, curve));
    const NumberHandle number(BN_secure_new());
    const NumberContextHandle work(BN_CTX_secure_new_ex(library.context()));
    const PointHandle point(group ? EC_POINT_new(group.get()) : nullptr);
    const bool reckoned = point && number && work &&
        BN_bin2bn(scalar.data(), static_cast<int>(scalar.size()), number.get()) &&
        EC_POINT_mul(group.get(), point.get(), number.get(), nullptr, nullptr, work.get()) == 1;
    if (!reckoned)
        return {};
    const auto write = [&](unsigned char* out, std::size_t room) {
        return EC_POINT_point2oct(group.get(), point.get(), POINT_CONVERSION_UNCOMPRESSED, out, room, work.get());
    };
    Bytes octets(write(nullptr, 0));
    write(octets.data(), octets.size());
    return octets;
}

KeyHandle ecKey(const Library& library, View curveContent, View privateKey)
{
    const int curve = der::nidOf(curveContent);
    der::Reader fields(der::Reader(privateKey).take(der::Sequence).value_or(View()));
    fields.take(der::Integer);
    const auto scalar = fields.take(der::OctetString);
    if (curve == NID_undef || !scalar || scalar->empty())
        return {};
    Bytes point = ecPublicKey(privateKey).value_or(Bytes());
    if (point.empty())
        point = publicPoint(library, curve, *scalar);
    if (point.empty())
        return {};
    KeyParameters parameters;
    parameters.addName(OSSL_PKEY_PARAM_GROUP_NAME, OBJ_nid2sn(curve));
    parameters.addOctets(OSSL_PKEY_PARAM_PUB_KEY, point);
    parameters.add(OSSL_PKEY_PARAM_PRIV_KEY, *scalar);
    return parameters.make(library, "EC");
}

NumberHandle numberOf(const EVP_PKEY* key, const char* name)
{
    BIGNUM* number = nullptr;
    EVP_PKEY_get_bn_param(key, name, &number);
    return NumberHandle(number);
}

/** The bytes of a number, at least @p length of them. */
Secret octetsOf(const BIGNUM* number, int length)
{
    Secret octets(static_cast<std::size_t>(std::max(length, BN_num_bytes(number))));
    BN_bn2binpad(number, octets.data(), static_cast<int>(octets.size()));
    return octets;
}

/** An INTEGER has a bit for the sign. */
Secret integer(const BIGNUM* number)
{
    return der::element<Secret>(der::Integer, {octetsOf(number, BN_num_bits(number) / 8 + 1)});
}

Secret keyInfoOf(View algorithm, View privateKey)
{
    constexpr unsigned char version[]{0};
    return der::element<Secret>(der::Sequence,
        {der::element(der::Integer, {version}), algorithm, der::element<Secret>(der::OctetString, {privateKey})});
}

std::optional<Secret> encodeRsa(const EVP_PKEY* key)
{
    constexpr unsigned char version[]{0};
    Secret numbers = der::element<Secret>(der::Integer, {version});
    for (std::size_t i = 1; i < rsaNames.size(); ++i) {
        const NumberHandle number = numberOf(key, rsaNames[i]);
        if (!number)
            return {};
        const Secret element = integer(number.get());
        numbers.insert(numbers.end(), element.begin(), element.end());
    }
    const Bytes algorithm = der::element(der::Sequence, {der::oid(oid::rsa), der::element(der::Null, {})});
    return keyInfoOf(algorithm, der::element<Secret>(der::Sequence, {numbers}));
}

/** The public point as it stands in a certificate. */
Bytes pointOf(const EVP_PKEY* key)
{
    std::size_t length = 0;
    EVP_PKEY_get_octet_string_param(key, OSSL_PKEY_PARAM_PUB_KEY, nullptr, 0, &length);
    Bytes point(length);
    EVP_PKEY_get_octet_string_param(key, OSSL_PKEY_PARAM_PUB_KEY, point.data(), point.size(), &length);
    return point;
}

std::optional<Secret> encodeEc(const EVP_PKEY* key)
{
    std::array<char, 80> curve{};
    const NumberHandle scalar = numberOf(key, OSSL_PKEY_PARAM_PRIV_KEY);
    const Bytes point = pointOf(key);
    if (EVP_PKEY_get_group_name(key, curve.data(), curve.size(), nullptr) != 1 || !scalar || point.empty())
        return {};
    constexpr unsigned char version[]{1};
    constexpr unsigned char unusedBits[]{0};
    const int length = (EVP_PKEY_get_bits(key) + 7) / 8;
    const Secret privateKey = der::element<Secret>(der::Sequence,
        {der::element(der::Integer, {version}),
            der::element<Secret>(der::OctetString, {octetsOf(scalar.get(), length)}),
            der::element(der::constructed(1), {der::element(der::BitString, {unusedBits, point})})});
    const Bytes curveOid = der::element(der::Oid, {der::oidContent(OBJ_sn2nid(curve.data()))});
    return keyInfoOf(der::element(der::Sequence, {der::oid(oid::ec), curveOid}), privateKey);
}

} // namespace

std::optional<RsaNumbers> rsaNumbers(View privateKey)
{
    der::Reader outer(privateKey);
    der::Reader fields(outer.take(der::Sequence).value_or(View()));
    RsaNumbers found{};
    for (der::Element& number : found) {
        const auto field = fields.next();
        if (!field || field->tag != der::Integer || field->content.empty())
            return {};
        number = *field;
    }
    return outer.atEnd() && fields.atEnd() ? std::optional(found) : std::nullopt;
}

std::optional<Bytes> ecPublicKey(View privateKey)
{
    constexpr unsigned char publicKeyTag = 0xA1;
    constexpr unsigned char uncompressed = 4;
    der::Reader fields(der::Reader(privateKey).take(der::Sequence).value_or(View()));
    while (const auto field = fields.next()) {
        const auto bits =
            field->tag == publicKeyTag ? der::Reader(field->content).take(der::BitString) : std::nullopt;
        const auto point = bits ? der::bitOctets(*bits) : std::nullopt;
        if (point && !point->empty() && point->front() == uncompressed)
            return toBytes(*point);
    }
    return {};
}

KeyHandle keyOfNumbers(const Library& library, View keyInfo)
{
    der::Reader fields(der::Reader(keyInfo).take(der::Sequence).value_or(View()));
    fields.take(der::Integer);
    der::Reader algorithm(fields.take(der::Sequence).value_or(View()));
    const auto id = algorithm.take(der::Oid);
    const auto key = fields.take(der::OctetString);
    if (!id || !key)
        return {};
    const std::string dotted = der::oidText(*id);
    if (dotted == oid::rsa)
        return rsaKey(library, *key);
    const auto curve = dotted == oid::ec ? algorithm.take(der::Oid) : std::nullopt;
    return curve ? ecKey(library, *curve, *key) : KeyHandle();
}

std::optional<Secret> encodeNumbers(const EVP_PKEY* key)
{
    if (EVP_PKEY_is_a(key, "RSA") == 1)
        return encodeRsa(key);
    return EVP_PKEY_is_a(key, "EC") == 1 ? encodeEc(key) : std::nullopt;
}

} // namespace toolkit
