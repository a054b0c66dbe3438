// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "toolkit/engine/tokens/token_keys.h"

#include "toolkit/engine/base/der.h"
#include "toolkit/engine/base/digest.h"
#include "toolkit/engine/base/error.h"
#include "toolkit/engine/base/oid.h"
#include "toolkit/engine/tokens/token_certificates.h"
#include "toolkit/engine/tokens/token_objects.h"

#include <openssl/ec.h>
#include <openssl/ecdsa.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <utility>

namespace toolkit {
namespace {

/** Larger than what any key makes or opens. */
constexpr std::size_t resultSize = 2048;
constexpr const char* p256 = "1.2.840.10045.3.1.7";
constexpr const char* p384 = "1.3.132.0.34";

/** A hash as PKCS#11 names it. */
struct HashName {
    int hash;
    CK_MECHANISM_TYPE mechanism;
    CK_RSA_PKCS_MGF_TYPE mask;
};

constexpr std::array hashNames{
    HashName{SIGIL_TK_HASH_SHA1, CKM_SHA_1, CKG_MGF1_SHA1},
    HashName{SIGIL_TK_HASH_SHA224, CKM_SHA224, CKG_MGF1_SHA224},
    HashName{SIGIL_TK_HASH_SHA256, CKM_SHA256, CKG_MGF1_SHA256},
    HashName{SIGIL_TK_HASH_SHA384, CKM_SHA384, CKG_MGF1_SHA384},
    HashName{SIGIL_TK_HASH_SHA512, CKM_SHA512, CKG_MGF1_SHA512},
};

const HashName& hashName(int hash)
{
    const auto* const found =
        std::find_if(hashNames.begin(), hashNames.end(), [&](const HashName& name) { return name.hash == hash; });
    require(found != hashNames.end(), SIGIL_TK_TOKEN_MECHANISM, "hash");
    return *found;
}

/** DigestInfo of PKCS#1. */
Bytes digestInfo(const Library& library, int hash, View digest)
{
    const DigestHandle algorithm = hashAlgorithm(library, hash);
    const Bytes type = encode<Bytes>(OBJ_nid2obj(EVP_MD_get_type(algorithm.get())), i2d_ASN1_OBJECT);
    const Bytes identifier = der::element(der::Sequence, {type, der::element(der::Null, {})});
    return der::element(der::Sequence, {identifier, der::element(der::OctetString, {digest})});
}

/** The two numbers of a raw signature, as DER. */
Bytes ecdsaDer(View raw)
{
    const auto half = static_cast<int>(raw.size() / 2);
    const Handle<ECDSA_SIG, ECDSA_SIG_free> signature(ECDSA_SIG_new());
    NumberHandle r(BN_bin2bn(raw.data(), half, nullptr));
    NumberHandle s(BN_bin2bn(raw.data() + half, half, nullptr));
    require(signature && r && s && ECDSA_SIG_set0(signature.get(), r.get(), s.get()) == 1, SIGIL_TK_NO_MEMORY);
    static_cast<void>(r.release()); // they are the signature's now
    static_cast<void>(s.release());
    return encode<Bytes>(signature.get(), i2d_ECDSA_SIG);
}

/** @param number of one byte at least */
Bytes unsignedInteger(View number)
{
    constexpr unsigned char zero[]{0};
    const bool negative = (number.front() & 0x80U) != 0;
    return der::element(der::Integer, {negative ? View(zero) : View(), number});
}

Bytes publicKeyInfo(const char* algorithm, View parameters, View key)
{
    constexpr unsigned char unusedBits[]{0};
    return der::element(der::Sequence,
        {der::element(der::Sequence, {der::oid(algorithm), parameters}),
            der::element(der::BitString, {unusedBits, key})});
}

/** A point stands in an OCTET STRING; old modules leave that away. */
View pointOf(View value)
{
    der::Reader reader(value);
    const auto wrapped = reader.take(der::OctetString);
    return wrapped && reader.atEnd() ? *wrapped : value;
}

/** From the attributes of a key object; empty when it does not show them. */
Bytes publicKeyIn(const TokenSession& session, CK_OBJECT_HANDLE object)
{
    const auto shown = [&](CK_ATTRIBUTE_TYPE type) { return session.attribute(object, type).value_or(Secret()); };
    const Secret modulus = shown(CKA_MODULUS);
    const Secret exponent = shown(CKA_PUBLIC_EXPONENT);
    if (!modulus.empty() && !exponent.empty())
        return publicKeyInfo(oid::rsa, der::element(der::Null, {}),
            der::element(der::Sequence, {unsignedInteger(modulus), unsignedInteger(exponent)}));
    const Secret curve = shown(CKA_EC_PARAMS);
    const Secret point = shown(CKA_EC_POINT);
    if (!curve.empty() && !point.empty())
        return publicKeyInfo(oid::ec, curve, pointOf(point));
    return {};
}

/** What a pair of a kind is made with. */
struct Generation {
    CK_KEY_TYPE type;
    CK_MECHANISM_TYPE mechanism;
    Template publicKey;
};

Template publicTemplate(CK_KEY_TYPE type)
{
    Template object;
    object.add(CKA_CLASS, CKO_PUBLIC_KEY)
        .add(CKA_KEY_TYPE, type)
        .flag(CKA_TOKEN, true)
        .flag(CKA_PRIVATE, false)
        .flag(CKA_VERIFY, true);
    return object;
}

Generation generation(int algorithm, int bits)
{
    constexpr unsigned char exponent[]{1, 0, 1};
    const std::string wanted = "key pair " + std::to_string(algorithm) + " of " + std::to_string(bits) + " bits";
    if (algorithm == SIGIL_TK_TOKEN_RSA) {
        require(isRsaKeyPair(bits), SIGIL_TK_ALGORITHM, wanted);
        Template key = publicTemplate(CKK_RSA);
        key.flag(CKA_ENCRYPT, true)
            .add(CKA_MODULUS_BITS, static_cast<unsigned long>(bits))
            .add(CKA_PUBLIC_EXPONENT, exponent);
        return {CKK_RSA, CKM_RSA_PKCS_KEY_PAIR_GEN, std::move(key)};
    }
    const char* const curve = bits == SIGIL_TK_KEYPAIR_P256 ? p256 : bits == SIGIL_TK_KEYPAIR_P384 ? p384 : nullptr;
    require(algorithm == SIGIL_TK_TOKEN_EC && curve, SIGIL_TK_ALGORITHM, wanted);
    Template key = publicTemplate(CKK_EC);
    key.add(CKA_EC_PARAMS, der::oid(curve));
    return {CKK_EC, CKM_EC_KEY_PAIR_GEN, std::move(key)};
}

void setId(const TokenSession& session, CK_OBJECT_HANDLE object, View id)
{
    Template change;
    change.add(CKA_ID, id);
    session.must(TOKEN_FUNCTION(C_SetAttributeValue), object, change.data(), change.size());
}

CK_KEY_TYPE typeOf(const TokenSession& session, CK_OBJECT_HANDLE object)
{
    CK_KEY_TYPE type = 0;
    const auto value = session.attribute(object, CKA_KEY_TYPE);
    require(value && value->size() == sizeof type, SIGIL_TK_TOKEN_MODULE, "kind of key");
    std::memcpy(&type, value->data(), sizeof type);
    require(type == CKK_RSA || type == CKK_EC, SIGIL_TK_ALGORITHM, "kind of key");
    return type;
}

/** A module need not tell a wrong padding from another failure. */
bool isUndecryptable(CK_RV answer)
{
    return answer == CKR_GENERAL_ERROR || answer == CKR_FUNCTION_FAILED || answer == CKR_DATA_INVALID ||
        answer == CKR_DATA_LEN_RANGE;
}

} // namespace

TokenKey::TokenKey(const Library& library, const TokenSession& session, View id)
    : m_library(library)
    , m_session(session)
    , m_object(privateKeyOf(session, id))
    , m_type(typeOf(session, m_object))
{
}

Bytes TokenKey::sign(CK_MECHANISM mechanism, View data) const
{
    m_session.must(TOKEN_FUNCTION(C_SignInit), &mechanism, m_object);
    Bytes signature(resultSize);
    unsigned long length = signature.size();
    m_session.must(TOKEN_FUNCTION(C_Sign), bytesFor(data), data.size(), signature.data(), &length);
    signature.resize(std::min<std::size_t>(length, signature.size()));
    return signature;
}

Bytes TokenKey::signPlain(View data) const
{
    return m_type == CKK_EC ? ecdsaDer(sign({CKM_ECDSA, nullptr, 0}, data))
                            : sign({CKM_RSA_PKCS, nullptr, 0}, data);
}

Bytes TokenKey::signDigest(const SignatureScheme& scheme, View digest) const
{
    if (m_type == CKK_EC)
        return signPlain(digest);
    if (scheme.rsaVersion != SIGIL_TK_RSA_PSS)
        return signPlain(digestInfo(m_library, scheme.hash, digest));
    const HashName& name = hashName(scheme.hash);
    CK_RSA_PKCS_PSS_PARAMS parameters{name.mechanism, name.mask, digest.size()};
    return sign({CKM_RSA_PKCS_PSS, &parameters, sizeof parameters}, digest);
}

Secret TokenKey::decrypt(const EncryptionScheme& scheme, View data) const
{
    require(m_type == CKK_RSA, SIGIL_TK_ALGORITHM, "encryption is for RSA keys");
    CK_RSA_PKCS_OAEP_PARAMS parameters{};
    CK_MECHANISM mechanism{CKM_RSA_PKCS, nullptr, 0};
    if (scheme.padding == SIGIL_TK_PADDING_OAEP) {
        const HashName& name = hashName(scheme.hash);
        parameters = {name.mechanism, name.mask, CKZ_DATA_SPECIFIED, nullptr, 0};
        mechanism = {CKM_RSA_PKCS_OAEP, &parameters, sizeof parameters};
    }
    const CK_RV ready = m_session.call(&_CK_FUNCTION_LIST::C_DecryptInit, &mechanism, m_object);
    require(ready != CKR_ARGUMENTS_BAD, SIGIL_TK_TOKEN_MECHANISM, "with these parameters");
    m_session.check(ready, "C_DecryptInit");
    Secret plain(resultSize);
    unsigned long length = plain.size();
    const CK_RV answer =
        m_session.call(&_CK_FUNCTION_LIST::C_Decrypt, bytesFor(data), data.size(), plain.data(), &length);
    require(!isUndecryptable(answer), SIGIL_TK_DECRYPT);
    m_session.check(answer, "C_Decrypt");
    plain.resize(std::min<std::size_t>(length, plain.size()));
    return plain;
}

CK_OBJECT_HANDLE TokenKey::derive(View point, std::size_t length) const
{
    Template secret;
    secret.add(CKA_CLASS, CKO_SECRET_KEY)
        .add(CKA_KEY_TYPE, CKK_GENERIC_SECRET)
        .flag(CKA_TOKEN, false)
        .flag(CKA_SENSITIVE, false)
        .flag(CKA_EXTRACTABLE, true)
        .add(CKA_VALUE_LEN, static_cast<unsigned long>(length));
    CK_ECDH1_DERIVE_PARAMS parameters{CKD_NULL, 0, nullptr, point.size(), bytesFor(point)};
    CK_MECHANISM mechanism{CKM_ECDH1_DERIVE, &parameters, sizeof parameters};
    CK_OBJECT_HANDLE derived = CK_INVALID_HANDLE;
    m_session.must(TOKEN_FUNCTION(C_DeriveKey), &mechanism, m_object, secret.data(), secret.size(), &derived);
    return derived;
}

Secret TokenKey::sharedSecret(View point) const
{
    require(m_type == CKK_EC && point.size() >= 3, SIGIL_TK_DECRYPT);
    const CK_OBJECT_HANDLE derived = derive(point, (point.size() - 1) / 2);
    auto value = m_session.attribute(derived, CKA_VALUE);
    m_session.destroy(derived);
    require(value && !value->empty(), SIGIL_TK_TOKEN_MECHANISM, "key agreement");
    return *value;
}

Bytes tokenPublicKey(const Library& library, const TokenSession& session, View id)
{
    try {
        return tokenCertificate(library, session, id).publicKeyDer();
    } catch (const Error& error) {
        if (error.code() != SIGIL_TK_TOKEN_OBJECT)
            throw;
    }
    for (const CK_OBJECT_CLASS type : {CKO_PUBLIC_KEY, CKO_PRIVATE_KEY})
        for (const CK_OBJECT_HANDLE object : objectsOf(session, type, id))
            if (Bytes key = publicKeyIn(session, object); !key.empty())
                return key;
    fail(SIGIL_TK_TOKEN_OBJECT, "public key");
}

PublicTokenKey generateTokenKey(const Library& library, const TokenSession& session, int algorithm, int bits)
{
    Generation pair = generation(algorithm, bits);
    session.requireLogin();
    Template privateKey = privateKeyTemplate(pair.type, {{}, "SigilDesk"});
    CK_MECHANISM mechanism{pair.mechanism, nullptr, 0};
    CK_OBJECT_HANDLE publicObject = CK_INVALID_HANDLE;
    CK_OBJECT_HANDLE privateObject = CK_INVALID_HANDLE;
    session.must(TOKEN_FUNCTION(C_GenerateKeyPair), &mechanism, pair.publicKey.data(), pair.publicKey.size(),
        privateKey.data(), privateKey.size(), &publicObject, &privateObject);
    try {
        Bytes publicKey = publicKeyIn(session, publicObject);
        require(!publicKey.empty(), SIGIL_TK_TOKEN_MODULE, "public key");
        Bytes id = tokenIdOf(library, publicKey);
        setId(session, publicObject, id);
        setId(session, privateObject, id);
        return {std::move(id), std::move(publicKey)};
    } catch (const Error&) {
        session.call(&_CK_FUNCTION_LIST::C_DestroyObject, publicObject);
        session.call(&_CK_FUNCTION_LIST::C_DestroyObject, privateObject);
        throw;
    }
}

} // namespace toolkit
