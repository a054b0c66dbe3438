// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "toolkit/engine/tokens/token_objects.h"

#include "toolkit/engine/base/der.h"
#include "toolkit/engine/base/digest.h"
#include "toolkit/engine/base/error.h"
#include "toolkit/engine/base/oid.h"
#include "toolkit/engine/keys/private_key.h"
#include "toolkit/engine/tokens/token_certificates.h"
#include "toolkit/engine/x509/text.h"

#include <algorithm>
#include <array>
#include <cctype>

namespace toolkit {
namespace {

/** Korean software finds the random value of a key by this label with the key's identifier behind it. */
constexpr const char* randomLabel = "R4VID=";

std::string randomLabelOf(View id) { return randomLabel + hexText(id); }

ObjectHandles randomsLabelled(const TokenSession& session, std::string_view label)
{
    return session.find(Template().add(CKA_CLASS, CKO_DATA).add(CKA_LABEL, view(label)));
}

/** Other programs may write the digits in capitals. */
ObjectHandles randomsOf(const TokenSession& session, View id)
{
    const std::string label = randomLabelOf(id);
    ObjectHandles found = randomsLabelled(session, label);
    std::string capitals = label;
    std::transform(capitals.begin(), capitals.end(), capitals.begin(),
        [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
    if (found.empty() && capitals != label)
        found = randomsLabelled(session, capitals);
    return found;
}

/** Empty when there is none. */
Secret storedRandom(const TokenSession& session, View id)
{
    const ObjectHandles found = randomsOf(session, id);
    return found.empty() ? Secret() : session.attribute(found.front(), CKA_VALUE).value_or(Secret());
}

Template storedObject(CK_OBJECT_CLASS type, bool isPrivate)
{
    Template object;
    object.add(CKA_CLASS, type).flag(CKA_TOKEN, true).flag(CKA_PRIVATE, isPrivate);
    return object;
}

Template randomTemplate(View random, View id)
{
    Template object = storedObject(CKO_DATA, true);
    object.add(CKA_LABEL, view(randomLabelOf(id)))
        .add(CKA_APPLICATION, view("SigilDesk"))
        .add(CKA_OBJECT_ID, der::oid(oid::randomNumber))
        .add(CKA_VALUE, random);
    return object;
}

/** Algorithm and key of a PrivateKeyInfo. */
struct KeyParts {
    std::string algorithm;
    View parameters;
    View key;
};

KeyParts partsOf(View keyInfo)
{
    require(isPrivateKeyInfo(keyInfo), SIGIL_TK_KEY_UNUSABLE, "PrivateKeyInfo");
    der::Reader fields(*der::Reader(keyInfo).take(der::Sequence));
    fields.take(der::Integer);
    der::Reader algorithm(*fields.take(der::Sequence));
    const std::string type = der::oidText(*algorithm.take(der::Oid));
    const auto parameters = algorithm.next();
    return {type, parameters ? parameters->whole : View(), *fields.take(der::OctetString)};
}

Template rsaKey(const KeyParts& parts, const ObjectName& name)
{
    constexpr std::array numbers{CKA_MODULUS, CKA_PUBLIC_EXPONENT, CKA_PRIVATE_EXPONENT, CKA_PRIME_1, CKA_PRIME_2,
        CKA_EXPONENT_1, CKA_EXPONENT_2, CKA_COEFFICIENT};
    Template object = privateKeyTemplate(CKK_RSA, name);
    der::Reader fields(der::Reader(parts.key).take(der::Sequence).value_or(View()));
    bool whole = fields.take(der::Integer).has_value();
    for (const CK_ATTRIBUTE_TYPE number : numbers) {
        const auto value = fields.take(der::Integer);
        whole = whole && value;
        object.add(number, der::withoutZeros(value.value_or(View())));
    }
    require(whole, SIGIL_TK_KEY_UNUSABLE, "RSAPrivateKey");
    return object;
}

Template ecKey(const KeyParts& parts, const ObjectName& name)
{
    der::Reader fields(der::Reader(parts.key).take(der::Sequence).value_or(View()));
    const bool versioned = fields.take(der::Integer).has_value();
    const auto value = fields.take(der::OctetString);
    require(versioned && value && !parts.parameters.empty(), SIGIL_TK_KEY_UNUSABLE, "ECPrivateKey");
    Template object = privateKeyTemplate(CKK_EC, name);
    object.add(CKA_EC_PARAMS, parts.parameters).add(CKA_VALUE, *value);
    return object;
}

void append(ObjectHandles& all, const ObjectHandles& more) { all.insert(all.end(), more.begin(), more.end()); }

void addKey(ObjectWriting& writing, View keyInfo, const ObjectName& name, View subject)
{
    writing.add(keyTemplate(keyInfo, name, subject));
    const Secret random = heldIdentityRandom(keyInfo);
    if (!random.empty())
        writing.add(randomTemplate(random, name.id));
}

} // namespace

ObjectWriting::~ObjectWriting()
{
    for (const CK_OBJECT_HANDLE object : m_objects)
        m_session.call(&_CK_FUNCTION_LIST::C_DestroyObject, object);
}

void ObjectWriting::add(const Template& object) { m_objects.push_back(m_session.create(object)); }

void ObjectWriting::finish(ObjectHandles replaced)
{
    m_objects.clear();
    std::sort(replaced.begin(), replaced.end());
    replaced.erase(std::unique(replaced.begin(), replaced.end()), replaced.end());
    for (const CK_OBJECT_HANDLE object : replaced)
        m_session.destroy(object);
}

Bytes tokenIdOf(const Library& library, View publicKeyInfo)
{
    der::Reader fields(der::Reader(publicKeyInfo).take(der::Sequence).value_or(View()));
    fields.take(der::Sequence);
    const View bits = fields.take(der::BitString).value_or(View());
    return hash(library, SIGIL_TK_HASH_SHA1, der::bitOctets(bits).value_or(View()));
}

Bytes tokenIdOf(const Library& library, const Certificate& certificate)
{
    const ASN1_OCTET_STRING* const identifier = X509_get0_subject_key_id(certificate.get());
    if (!identifier || ASN1_STRING_length(identifier) == 0)
        return tokenIdOf(library, certificate.publicKeyDer());
    const unsigned char* const bytes = ASN1_STRING_get0_data(identifier);
    return {bytes, bytes + ASN1_STRING_length(identifier)};
}

ObjectName nameOf(const Library& library, const Certificate& certificate)
{
    return {tokenIdOf(library, certificate), utf8FromCp949(certificate.uid()).value_or(std::string())};
}

Template privateKeyTemplate(CK_KEY_TYPE type, const ObjectName& name)
{
    Template object = storedObject(CKO_PRIVATE_KEY, true);
    object.add(CKA_KEY_TYPE, type)
        .add(CKA_ID, name.id)
        .add(CKA_LABEL, view(name.label))
        .flag(CKA_SENSITIVE, true)
        .flag(CKA_EXTRACTABLE, false)
        .flag(CKA_SIGN, true)
        .flag(type == CKK_RSA ? CKA_DECRYPT : CKA_DERIVE, true);
    return object;
}

Template certificateTemplate(const Certificate& certificate, const ObjectName& name)
{
    X509* const fields = certificate.get();
    Template object = storedObject(CKO_CERTIFICATE, false);
    object.add(CKA_CERTIFICATE_TYPE, CKC_X_509)
        .add(CKA_ID, name.id)
        .add(CKA_LABEL, view(name.label))
        .add(CKA_SUBJECT, certificate.subjectNameDer())
        .add(CKA_ISSUER, encode<Bytes>(X509_get_issuer_name(fields), i2d_X509_NAME))
        .add(CKA_SERIAL_NUMBER, encode<Bytes>(X509_get0_serialNumber(fields), i2d_ASN1_INTEGER))
        .add(CKA_VALUE, certificate.der());
    return object;
}

Template keyTemplate(View keyInfo, const ObjectName& name, View subject)
{
    const KeyParts parts = partsOf(keyInfo);
    require(parts.algorithm == oid::rsa || parts.algorithm == oid::ec, SIGIL_TK_ALGORITHM, "kind of key");
    Template object = parts.algorithm == oid::rsa ? rsaKey(parts, name) : ecKey(parts, name);
    if (!subject.empty())
        object.add(CKA_SUBJECT, subject);
    return object;
}

ObjectHandles objectsOf(const TokenSession& session, CK_OBJECT_CLASS type, View id)
{
    return session.find(Template().add(CKA_CLASS, type).add(CKA_ID, id));
}

Bytes keyIdOf(const Library& library, const TokenSession& session, const Certificate& certificate)
{
    session.requireLogin();
    for (const TokenCertificate& other : tokenCertificates(library, session))
        if (!other.id.empty() && other.certificate.der() == certificate.der())
            return other.id;
    for (Bytes id : {tokenIdOf(library, certificate), tokenIdOf(library, certificate.publicKeyDer())})
        if (!objectsOf(session, CKO_PRIVATE_KEY, id).empty())
            return id;
    fail(SIGIL_TK_TOKEN_OBJECT, "private key");
}

ObjectHandles keyObjects(const TokenSession& session, View id)
{
    ObjectHandles all = objectsOf(session, CKO_PRIVATE_KEY, id);
    append(all, objectsOf(session, CKO_PUBLIC_KEY, id));
    append(all, randomsOf(session, id));
    return all;
}

CK_OBJECT_HANDLE privateKeyOf(const TokenSession& session, View id)
{
    session.requireLogin();
    const ObjectHandles found = objectsOf(session, CKO_PRIVATE_KEY, id);
    require(!found.empty(), SIGIL_TK_TOKEN_OBJECT, "private key");
    return found.front();
}

void writeTokenCertificate(
    const TokenSession& session, const Certificate& certificate, const ObjectName& name, ObjectHandles replaced)
{
    append(replaced, objectsOf(session, CKO_CERTIFICATE, name.id));
    ObjectWriting writing(session);
    writing.add(certificateTemplate(certificate, name));
    writing.finish(std::move(replaced));
}

void writeCertificateOfKey(
    const Library& library, const TokenSession& session, const Certificate& certificate, View id)
{
    const ObjectName name{toBytes(id), nameOf(library, certificate).label};
    writeTokenCertificate(session, certificate, name);
    Template names;
    names.add(CKA_LABEL, view(name.label)).add(CKA_SUBJECT, certificate.subjectNameDer());
    for (const CK_OBJECT_CLASS type : {CKO_PRIVATE_KEY, CKO_PUBLIC_KEY})
        for (const CK_OBJECT_HANDLE key : objectsOf(session, type, id))
            session.call(&_CK_FUNCTION_LIST::C_SetAttributeValue, key, names.data(), names.size());
}

void inheritTokenRandom(const TokenSession& session, View fromId, View toId)
{
    const Secret random = storedRandom(session, fromId);
    if (!random.empty())
        session.create(randomTemplate(random, toId));
}

void writePair(const Library& library, const TokenSession& session, const Certificate& certificate, View keyInfo)
{
    checkKeyPair(library, certificate, keyInfo);
    session.requireLogin();
    const ObjectName name = nameOf(library, certificate);
    ObjectHandles replaced = objectsOf(session, CKO_CERTIFICATE, name.id);
    append(replaced, keyObjects(session, name.id));
    ObjectWriting writing(session);
    writing.add(certificateTemplate(certificate, name));
    addKey(writing, keyInfo, name, certificate.subjectNameDer());
    writing.finish(std::move(replaced));
}

void writeTokenKey(
    const TokenSession& session, View keyInfo, const ObjectName& name, View subject, ObjectHandles replaced)
{
    session.requireLogin();
    append(replaced, keyObjects(session, name.id));
    ObjectWriting writing(session);
    addKey(writing, keyInfo, name, subject);
    writing.finish(std::move(replaced));
}

void deletePair(const TokenSession& session, View id)
{
    session.requireLogin();
    ObjectHandles all = keyObjects(session, id);
    append(all, objectsOf(session, CKO_CERTIFICATE, id));
    require(!all.empty(), SIGIL_TK_TOKEN_OBJECT);
    for (const CK_OBJECT_HANDLE object : all)
        session.destroy(object);
}

Secret tokenRandom(const TokenSession& session, View id)
{
    privateKeyOf(session, id);
    Secret random = storedRandom(session, id);
    require(!random.empty(), SIGIL_TK_VID_NO_RANDOM);
    return random;
}

} // namespace toolkit
