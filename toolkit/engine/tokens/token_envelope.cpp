// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "toolkit/engine/tokens/token_envelope.h"

#include "toolkit/engine/base/der.h"
#include "toolkit/engine/base/error.h"
#include "toolkit/engine/base/oid.h"
#include "toolkit/engine/messages/cms_parts.h"

#include <openssl/core_names.h>
#include <openssl/kdf.h>
#include <openssl/objects.h>
#include <openssl/rsa.h>

#include <algorithm>
#include <array>
#include <optional>

namespace toolkit {
namespace {

using KdfHandle = Handle<EVP_KDF, EVP_KDF_free>;
using KdfContextHandle = Handle<EVP_KDF_CTX, EVP_KDF_CTX_free>;

constexpr unsigned char implicit0 = 0xA0;
constexpr unsigned char implicit1 = 0xA1;

View malformedWithout(const std::optional<View>& value)
{
    require(value.has_value(), SIGIL_TK_CMS_MALFORMED, "recipient");
    return *value;
}

der::Element elementOf(std::optional<der::Element> element)
{
    require(element.has_value(), SIGIL_TK_CMS_MALFORMED, "recipient");
    return *element;
}

/** The next element, when it has the tag. */
std::optional<View> optionalField(der::Reader& fields, unsigned char tag)
{
    der::Reader ahead = fields;
    const auto element = ahead.next();
    if (!element || element->tag != tag)
        return {};
    fields = ahead;
    return element->content;
}

View field(der::Reader& fields, unsigned char tag) { return malformedWithout(optionalField(fields, tag)); }

/** The point of an OriginatorPublicKey. */
View originatorPoint(View originator)
{
    der::Reader choice(originator);
    der::Reader key(field(choice, implicit1));
    field(key, der::Sequence);
    return malformedWithout(der::bitOctets(field(key, der::BitString)));
}

/** KeyTransRecipientInfo */
void readTransport(View recipient, RecipientKey& out)
{
    der::Reader fields(recipient);
    field(fields, der::Integer);
    elementOf(fields.next()); // who it is for is known
    out.algorithm = elementOf(fields.next()).whole;
    out.encryptedKey = field(fields, der::OctetString);
}

/** KeyAgreeRecipientInfo */
void readAgreement(View recipient, int index, RecipientKey& out)
{
    der::Reader fields(recipient);
    field(fields, der::Integer);
    out.originator = originatorPoint(field(fields, implicit0));
    if (const auto keying = optionalField(fields, implicit1)) {
        der::Reader octets(*keying);
        out.userKeying = field(octets, der::OctetString);
    }
    out.algorithm = elementOf(fields.next()).whole;
    der::Reader keys(field(fields, der::Sequence));
    for (int i = 0; i < index; ++i)
        elementOf(keys.next());
    der::Reader key(field(keys, der::Sequence));
    elementOf(key.next());
    out.encryptedKey = field(key, der::OctetString);
}

/** An EncryptedData around the same content: opened by the content's key itself. */
Bytes encryptedData(View content)
{
    constexpr unsigned char version0[]{der::Integer, 1, 0};
    const Bytes data = der::element(der::Sequence, {version0, content});
    return der::element(der::Sequence, {der::oid(oid::encryptedData), der::element(der::Explicit0, {data})});
}

AlgorithmHandle parseAlgorithm(View der)
{
    const unsigned char* at = der.data();
    AlgorithmHandle algorithm(d2i_X509_ALGOR(nullptr, &at, static_cast<long>(der.size())));
    require(algorithm != nullptr, SIGIL_TK_CMS_MALFORMED, "algorithm");
    return algorithm;
}

int nidOf(const X509_ALGOR* algorithm) { return algorithm ? OBJ_obj2nid(algorithm->algorithm) : NID_sha1; }

int hashOf(int nid)
{
    constexpr std::array<std::pair<int, int>, 5> hashes{
        {{NID_sha1, SIGIL_TK_HASH_SHA1}, {NID_sha224, SIGIL_TK_HASH_SHA224}, {NID_sha256, SIGIL_TK_HASH_SHA256},
            {NID_sha384, SIGIL_TK_HASH_SHA384}, {NID_sha512, SIGIL_TK_HASH_SHA512}}};
    const auto* const found =
        std::find_if(hashes.begin(), hashes.end(), [&](const auto& pair) { return pair.first == nid; });
    require(found != hashes.end(), SIGIL_TK_TOKEN_MECHANISM, "hash of the padding");
    return found->second;
}

/** The padding that a key was encrypted with. */
EncryptionScheme schemeOf(View algorithmDer)
{
    const AlgorithmHandle algorithm = parseAlgorithm(algorithmDer);
    if (nidOf(algorithm.get()) == NID_rsaEncryption)
        return {SIGIL_TK_PADDING_V15, SIGIL_TK_HASH_SHA1};
    require(nidOf(algorithm.get()) == NID_rsaesOaep, SIGIL_TK_DECRYPT);
    const auto* const given = algorithm->parameter;
    const Handle<RSA_OAEP_PARAMS, RSA_OAEP_PARAMS_free> parameters(given && given->type == V_ASN1_SEQUENCE
            ? static_cast<RSA_OAEP_PARAMS*>(
                  ASN1_item_unpack(given->value.sequence, ASN1_ITEM_rptr(RSA_OAEP_PARAMS)))
            : nullptr);
    return {SIGIL_TK_PADDING_OAEP, hashOf(parameters ? nidOf(parameters->hashFunc) : NID_sha1)};
}

Secret derivedKey(const Library& library, const char* hash, View secret, View info, std::size_t length)
{
    const KdfHandle function(EVP_KDF_fetch(library.context(), "X963KDF", nullptr));
    const KdfContextHandle context(EVP_KDF_CTX_new(function.get()));
    Secret key(length);
    const std::array parameters{OSSL_PARAM_construct_utf8_string(OSSL_KDF_PARAM_DIGEST, const_cast<char*>(hash), 0),
        OSSL_PARAM_construct_octet_string(OSSL_KDF_PARAM_KEY, bytesFor(secret), secret.size()),
        OSSL_PARAM_construct_octet_string(OSSL_KDF_PARAM_INFO, bytesFor(info), info.size()),
        OSSL_PARAM_construct_end()};
    require(
        context && EVP_KDF_derive(context.get(), key.data(), key.size(), parameters.data()) == 1, SIGIL_TK_DECRYPT);
    return key;
}

/** ECC-CMS-SharedInfo (RFC 5753, section 7.2). */
Bytes sharedInfo(View wrapAlgorithm, View userKeying, std::size_t keyLength)
{
    constexpr auto explicit2 = static_cast<der::Tag>(0xA2);
    const std::size_t bits = keyLength * 8;
    const Bytes size{0, 0, static_cast<unsigned char>(bits >> 8U), static_cast<unsigned char>(bits)};
    const Bytes keying =
        userKeying.empty() ? Bytes() : der::element(der::Explicit0, {der::element(der::OctetString, {userKeying})});
    const Bytes supplement = der::element(explicit2, {der::element(der::OctetString, {size})});
    return der::element(der::Sequence, {wrapAlgorithm, keying, supplement});
}

Secret unwrap(const EVP_CIPHER* cipher, View key, View wrapped)
{
    const CipherContextHandle context(EVP_CIPHER_CTX_new());
    require(context != nullptr, SIGIL_TK_NO_MEMORY);
    EVP_CIPHER_CTX_set_flags(context.get(), EVP_CIPHER_CTX_FLAG_WRAP_ALLOW);
    Secret out(wrapped.size() + EVP_MAX_BLOCK_LENGTH);
    int length = 0;
    const bool opened = EVP_DecryptInit_ex2(context.get(), cipher, key.data(), nullptr, nullptr) == 1 &&
        EVP_DecryptUpdate(context.get(), out.data(), &length, wrapped.data(), static_cast<int>(wrapped.size())) ==
            1;
    require(opened && length > 0, SIGIL_TK_DECRYPT);
    out.resize(static_cast<std::size_t>(length));
    return out;
}

/** The content's key by agreement: dhSinglePass with the ANSI X9.63 derivation and a key wrap. */
Secret agreedKey(const Library& library, const TokenKey& key, const RecipientKey& recipient)
{
    const AlgorithmHandle algorithm = parseAlgorithm(recipient.algorithm);
    int hashNid = NID_undef;
    const bool known = OBJ_find_sigid_algs(OBJ_obj2nid(algorithm->algorithm), &hashNid, nullptr) == 1;
    const char* const hash = known ? OBJ_nid2sn(hashNid) : nullptr;
    const auto* const parameter = algorithm->parameter;
    require(hash && parameter && parameter->type == V_ASN1_SEQUENCE, SIGIL_TK_DECRYPT);
    const View wrapDer = octets(parameter->value.sequence);
    const AlgorithmHandle wrap = parseAlgorithm(wrapDer);
    const CipherHandle cipher = library.cipher(dottedOid(wrap->algorithm).c_str());
    const auto length = static_cast<std::size_t>(EVP_CIPHER_get_key_length(cipher.get()));
    const Secret secret = key.sharedSecret(recipient.originator);
    const Secret wrapKey =
        derivedKey(library, hash, secret, sharedInfo(wrapDer, recipient.userKeying, length), length);
    return unwrap(cipher.get(), wrapKey, recipient.encryptedKey);
}

/** A wrong padding must not show: a random key takes the place of one that cannot be opened. */
Secret transportedKey(const Library& library, const TokenKey& key, const RecipientKey& recipient)
{
    constexpr int anyKey = 16;
    try {
        Secret opened = key.decrypt(schemeOf(recipient.algorithm), recipient.encryptedKey);
        return opened.empty() ? randomBytes(library, anyKey) : opened;
    } catch (const Error& error) {
        if (error.code() != SIGIL_TK_DECRYPT)
            throw;
        return randomBytes(library, anyKey);
    }
}

Secret contentKey(const Library& library, const TokenKey& key, const RecipientKey& recipient)
{
    return recipient.originator.empty() ? transportedKey(library, key, recipient)
                                        : agreedKey(library, key, recipient);
}

CmsHandle unlock(
    const Library& library, const TokenKey& key, CMS_ContentInfo* enveloped, const Certificate& certificate)
{
    // Encoding sorts the recipients, so they are looked up in what was encoded.
    const Bytes der = encodeCms(enveloped);
    const CmsHandle sorted = parseCms(library, der);
    const RecipientKey recipient = recipientKeyIn(der, placeOf(sorted.get(), certificate));
    const Secret opened = contentKey(library, key, recipient);
    CmsHandle content = parseCms(library, encryptedData(recipient.content));
    require(
        CMS_EncryptedData_set1_key(content.get(), nullptr, opened.data(), opened.size()) == 1, SIGIL_TK_DECRYPT);
    return content;
}

} // namespace

RecipientKey recipientKeyIn(View der, const RecipientPlace& place)
{
    der::Reader message(der);
    der::Reader info(field(message, der::Sequence));
    field(info, der::Oid);
    der::Reader wrapped(field(info, der::Explicit0));
    der::Reader enveloped(field(wrapped, der::Sequence));
    field(enveloped, der::Integer);
    optionalField(enveloped, implicit0); // originatorInfo
    der::Reader recipients(field(enveloped, der::Set));
    for (int i = 0; i < place.recipient; ++i)
        elementOf(recipients.next());
    const der::Element recipient = elementOf(recipients.next());
    RecipientKey out;
    if (recipient.tag == implicit1)
        readAgreement(recipient.content, place.key, out);
    else
        readTransport(recipient.content, out);
    out.content = elementOf(enveloped.next()).whole;
    return out;
}

EnvelopeOpener tokenOpener(const TokenKey& key)
{
    return {[](const Library&, const Certificate&) {}, // the key was found by the certificate's identifier
        [&key](const Library& library, CmsHandle enveloped, const Certificate& certificate) {
            return unlock(library, key, enveloped.get(), certificate);
        }};
}

} // namespace toolkit
