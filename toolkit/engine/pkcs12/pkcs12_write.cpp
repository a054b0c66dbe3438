// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "toolkit/engine/base/der.h"
#include "toolkit/engine/base/digest.h"
#include "toolkit/engine/base/error.h"
#include "toolkit/engine/base/oid.h"
#include "toolkit/engine/keys/asymmetric.h"
#include "toolkit/engine/keys/derivation.h"
#include "toolkit/engine/keys/key_file.h"
#include "toolkit/engine/keys/password.h"
#include "toolkit/engine/keys/pbe.h"
#include "toolkit/engine/keys/private_key.h"
#include "toolkit/engine/pkcs12/pkcs12.h"
#include "toolkit/engine/x509/certificate.h"

#include <algorithm>
#include <array>

namespace toolkit {
namespace {

constexpr unsigned long iterations = 2048;
constexpr int saltLength = 8;

struct Protection {
    int option;
    int keyAlgorithm;        ///< SigilToolkitKeyEncryption of the key bags
    bool coversCertificates; ///< else they stay open
    const char* hash;        ///< of the MAC
    const char* hashOid;
};

constexpr std::array protections{
    Protection{SIGIL_TK_PFX_3DES, SIGIL_TK_KEY_PKCS12_3DES, false, "SHA1", oid::sha1},
    Protection{SIGIL_TK_PFX_SEED, SIGIL_TK_KEY_PBES2_SEED, true, "SHA1", oid::sha1},
    Protection{SIGIL_TK_PFX_AES256, SIGIL_TK_KEY_PBES2_AES256, true, "SHA256", oid::sha256},
};

Bytes keyIdentifier(const Library& library, const Certificate& certificate)
{
    if (const ASN1_OCTET_STRING* id = X509_get0_subject_key_id(certificate.get()))
        return {id->data, id->data + id->length};
    Bytes hash(EVP_MAX_MD_SIZE);
    unsigned length = 0;
    require(X509_pubkey_digest(certificate.get(), library.digest("SHA1").get(), hash.data(), &length) == 1,
        SIGIL_TK_INTERNAL, "key identifier");
    hash.resize(length);
    return hash;
}

Bytes sequence(std::initializer_list<View> contents) { return der::element(der::Sequence, contents); }
Bytes octetString(View content) { return der::element(der::OctetString, {content}); }
Bytes explicit0(View content) { return der::element(der::Explicit0, {content}); }

/** @param id local key identifier; empty for a certificate without a key */
Bytes bag(const char* type, View value, View id)
{
    const Bytes attribute = sequence({der::oid(oid::localKeyId), der::element(der::Set, {octetString(id)})});
    const Bytes attributes = der::element(der::Set, {attribute});
    return sequence({der::oid(type), explicit0(value), id.empty() ? View() : View(attributes)});
}

Bytes certificateBag(View certificate, View id)
{
    const Bytes value = sequence({der::oid(oid::x509Certificate), explicit0(octetString(certificate))});
    return bag(oid::certificateBag, value, id);
}

void append(Bytes& all, const Bytes& more) { all.insert(all.end(), more.begin(), more.end()); }

/** ContentInfo of type data. */
Bytes openContent(View content) { return sequence({der::oid(oid::data), explicit0(octetString(content))}); }

/** ContentInfo of type encryptedData. */
Bytes encryptedContent(const Library& library, int algorithm, View content, std::string_view password)
{
    constexpr unsigned char version[]{0};
    const Bytes identifier = makePbeAlgorithm(library, algorithm);
    const Secret encrypted = pbeEncrypt(library, parsePbeAlgorithm(identifier), content, password);
    const Bytes inner =
        sequence({der::oid(oid::data), identifier, der::element(der::Implicit0OctetString, {encrypted})});
    const Bytes data = sequence({der::element(der::Integer, {version}), inner});
    return sequence({der::oid(oid::encryptedData), explicit0(data)});
}

Bytes macData(const Library& library, const Protection& protection, View content, std::string_view password)
{
    constexpr unsigned char count[]{iterations >> 8, iterations & 0xFF};
    const Bytes salt = toBytes(randomBytes(library, saltLength));
    const DigestHandle hash = library.digest(protection.hash);
    WorkBudget budget;
    const Secret key = pkcs12Derive(hash.get(), Pkcs12Purpose::Mac, bmpForms(password).front(), {salt, iterations},
        static_cast<std::size_t>(EVP_MD_get_size(hash.get())), budget);
    const Bytes code = hmac(library, protection.hash, key, content);
    const Bytes algorithm = sequence({der::oid(protection.hashOid), der::element(der::Null, {})});
    return sequence(
        {sequence({algorithm, octetString(code)}), octetString(salt), der::element(der::Integer, {count})});
}

} // namespace

Bytes writePkcs12(const Library& library, const Pkcs12Content& content, std::string_view password, int option)
{
    const auto* const protection = std::find_if(
        protections.begin(), protections.end(), [&](const Protection& p) { return p.option == option; });
    require(protection != protections.end(), SIGIL_TK_OPTION, "PKCS#12 option");
    const Secret reading = readingsOf(password).front();
    const std::string_view secret(chars(reading), reading.size());

    Bytes certificates;
    Bytes keys;
    for (const CertifiedKey& pair : content.pairs) {
        const Certificate certificate(library, pair.certificate);
        checkKeyPair(library, certificate, pair.keyInfo);
        const Bytes id = keyIdentifier(library, certificate);
        append(certificates, certificateBag(certificate.der(), id));
        append(keys,
            bag(oid::shroudedKeyBag, encryptKeyFile(library, protection->keyAlgorithm, pair.keyInfo, secret), id));
    }
    for (const Bytes& other : content.others)
        append(certificates, certificateBag(Certificate(library, other).der(), {}));

    const Bytes certificateContents = sequence({certificates});
    const Bytes safes = sequence({protection->coversCertificates
            ? encryptedContent(library, protection->keyAlgorithm, certificateContents, secret)
            : openContent(certificateContents),
        openContent(sequence({keys}))});
    constexpr unsigned char version[]{3};
    return sequence(
        {der::element(der::Integer, {version}), openContent(safes), macData(library, *protection, safes, secret)});
}

} // namespace toolkit
