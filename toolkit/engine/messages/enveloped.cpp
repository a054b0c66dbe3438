// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "toolkit/engine/messages/enveloped.h"

#include "toolkit/engine/base/digest.h"
#include "toolkit/engine/base/error.h"
#include "toolkit/engine/base/oid.h"
#include "toolkit/engine/keys/private_key.h"
#include "toolkit/engine/keys/session_cipher.h"
#include "toolkit/engine/messages/cms_parts.h"
#include "toolkit/engine/x509/text.h"

#include <openssl/rsa.h>

#include <algorithm>

namespace toolkit {
namespace {

CipherHandle contentCipher(const Library& library, int algorithm)
{
    return cipherFor(library, algorithm == 0 ? SIGIL_TK_CIPHER_SEED : algorithm);
}

void addRecipient(
    const Library& library, CMS_ContentInfo* cms, const Certificate& certificate, const EnvelopeRequest& request)
{
    const bool byKeyId = (request.options & SIGIL_TK_ENVELOPE_KEY_ID) != 0;
    require(!byKeyId || X509_get0_subject_key_id(certificate.get()), SIGIL_TK_OPTION,
        "a recipient's certificate has no subject key identifier");
    CMS_RecipientInfo* const recipient =
        CMS_add1_recipient_cert(cms, certificate.get(), CMS_KEY_PARAM | (byKeyId ? CMS_USE_KEYID : 0U));
    EVP_PKEY_CTX* const options = recipient ? CMS_RecipientInfo_get0_pkey_ctx(recipient) : nullptr;
    require(options != nullptr, SIGIL_TK_ALGORITHM, "recipient's key");
    if (CMS_RecipientInfo_type(recipient) == CMS_RECIPINFO_AGREE) // RFC 5753: dhSinglePass-stdDH-sha256kdf
        require(EVP_PKEY_CTX_set_ecdh_kdf_md(options, EVP_sha256()) == 1, SIGIL_TK_ALGORITHM, "key agreement");
    else
        setPadding(options, library, request.scheme);
}

/** Which of a recipient's keys is for the certificate; negative for none. */
int keyFor(CMS_RecipientInfo* recipient, X509* certificate)
{
    if (CMS_RecipientInfo_type(recipient) == CMS_RECIPINFO_TRANS)
        return CMS_RecipientInfo_ktri_cert_cmp(recipient, certificate) == 0 ? 0 : -1;
    if (CMS_RecipientInfo_type(recipient) != CMS_RECIPINFO_AGREE)
        return -1;
    STACK_OF(CMS_RecipientEncryptedKey)* const keys = CMS_RecipientInfo_kari_get0_reks(recipient);
    for (int i = 0; i < sk_CMS_RecipientEncryptedKey_num(keys); ++i)
        if (CMS_RecipientEncryptedKey_cert_cmp(sk_CMS_RecipientEncryptedKey_value(keys, i), certificate) == 0)
            return i;
    return -1;
}

std::vector<CMS_RecipientInfo*> recipients(CMS_ContentInfo* cms)
{
    std::vector<CMS_RecipientInfo*> all;
    STACK_OF(CMS_RecipientInfo)* const found = CMS_get0_RecipientInfos(cms);
    for (int i = 0; found && i < sk_CMS_RecipientInfo_num(found); ++i)
        all.push_back(sk_CMS_RecipientInfo_value(found, i));
    return all;
}

/** The layout exists only once the cipher runs: that encrypts the key for the recipients. */
Encryption start(CmsHandle cms, const EVP_CIPHER* cipher)
{
    const auto blockSize = static_cast<std::uint64_t>(EVP_CIPHER_get_block_size(cipher));
    ContentCipher running(std::move(cms), SIGIL_TK_ALGORITHM);
    MessageLayout layout = layoutOf(encodeCms(running.cms()));
    return {std::move(running), std::move(layout), blockSize};
}

void decrypt(CmsHandle cms, const std::function<void(const Sink&)>& ciphertext, const Sink& take)
{
    ContentCipher cipher(std::move(cms), SIGIL_TK_DECRYPT);
    ciphertext([&](View piece) { cipher.update(piece, take); });
    cipher.finish(take);
}

std::string integerText(const ASN1_INTEGER* integer) { return hexText(octets(integer)); }

Recipient describe(
    X509_ALGOR* algorithm, const X509_NAME* issuer, const ASN1_INTEGER* serial, const ASN1_OCTET_STRING* keyId)
{
    const int nid = algorithm ? OBJ_obj2nid(algorithm->algorithm) : NID_undef;
    return {issuer ? nameText(issuer) : "",
        serial      ? integerText(serial)
            : keyId ? hexText(octets(keyId))
                    : "",
        nid == NID_undef ? "" : OBJ_nid2ln(nid)};
}

void describeAgreement(CMS_RecipientInfo* recipient, std::vector<Recipient>& out)
{
    X509_ALGOR* algorithm = nullptr;
    CMS_RecipientInfo_kari_get0_alg(recipient, &algorithm, nullptr);
    STACK_OF(CMS_RecipientEncryptedKey)* const keys = CMS_RecipientInfo_kari_get0_reks(recipient);
    for (int i = 0; i < sk_CMS_RecipientEncryptedKey_num(keys); ++i) {
        ASN1_OCTET_STRING* keyId = nullptr;
        X509_NAME* issuer = nullptr;
        ASN1_INTEGER* serial = nullptr;
        CMS_RecipientEncryptedKey_get0_id(
            sk_CMS_RecipientEncryptedKey_value(keys, i), &keyId, nullptr, nullptr, &issuer, &serial);
        out.push_back(describe(algorithm, issuer, serial, keyId));
    }
}

} // namespace

ContentCipher::ContentCipher(CmsHandle cms, int failure)
    : m_cms(std::move(cms))
    , m_output(BIO_new(BIO_s_mem()))
    , m_failure(failure)
{
    require(
        m_output != nullptr, SIGIL_TK_NO_MEMORY); // without one OpenSSL would take another place for the content
    m_cipher.reset(CMS_dataInit(m_cms.get(), m_output));
    if (!m_cipher)
        BIO_free(m_output);
    require(m_cipher != nullptr, m_failure);
}

void ContentCipher::update(View bytes, const Sink& out)
{
    const int length = static_cast<int>(bytes.size());
    require(BIO_write(m_cipher.get(), bytes.data(), length) == length, m_failure);
    drain(out);
}

void ContentCipher::finish(const Sink& out)
{
    require(BIO_flush(m_cipher.get()) == 1, m_failure);
    drain(out);
}

void ContentCipher::drain(const Sink& out)
{
    char* bytes = nullptr;
    const long length = BIO_get_mem_data(m_output, &bytes);
    if (length > 0)
        out(view({bytes, static_cast<std::size_t>(length)}));
    BIO_reset(m_output);
}

Encryption startEnvelope(const Library& library, const EnvelopeRequest& request)
{
    require((request.options & ~SIGIL_TK_ENVELOPE_KEY_ID) == 0, SIGIL_TK_OPTION,
        "option " + std::to_string(request.options));
    require(!request.recipients.empty(), SIGIL_TK_ARGUMENT, "recipients");
    const CipherHandle cipher = contentCipher(library, request.cipher);
    CmsHandle cms(CMS_EnvelopedData_create_ex(cipher.get(), library.context(), nullptr));
    require(cms != nullptr, SIGIL_TK_ALGORITHM, "cipher");
    for (const Certificate& recipient : request.recipients)
        addRecipient(library, cms.get(), recipient, request);
    return start(std::move(cms), cipher.get());
}

Encryption startEncryption(const Library& library, int algorithm, View key)
{
    const CipherHandle cipher = contentCipher(library, algorithm);
    require(key.size() == static_cast<std::size_t>(EVP_CIPHER_get_key_length(cipher.get())), SIGIL_TK_ALGORITHM,
        "size of the key");
    CmsHandle cms(CMS_ContentInfo_new_ex(library.context(), nullptr));
    require(cms && CMS_EncryptedData_set1_key(cms.get(), cipher.get(), key.data(), key.size()) == 1,
        SIGIL_TK_ALGORITHM, "cipher");
    return start(std::move(cms), cipher.get());
}

RecipientPlace placeOf(CMS_ContentInfo* enveloped, const Certificate& certificate)
{
    int index = 0;
    for (CMS_RecipientInfo* recipient : recipients(enveloped)) {
        const int key = keyFor(recipient, certificate.get());
        if (key >= 0)
            return {index, key};
        ++index;
    }
    fail(SIGIL_TK_CMS_NOBODY, "the certificate is no recipient's");
}

EnvelopeOpener openerWith(View keyInfo)
{
    return {[keyInfo](const Library& library, const Certificate& certificate) {
                checkKeyPair(library, certificate, keyInfo);
            },
        [keyInfo](const Library& library, CmsHandle enveloped, const Certificate& certificate) {
            const KeyHandle key = loadPrivateKey(library, keyInfo);
            // With a certificate OpenSSL goes on with a random key when the content's key cannot be decrypted.
            require(CMS_decrypt_set1_pkey(enveloped.get(), key.get(), certificate.get()) == 1, SIGIL_TK_DECRYPT);
            return enveloped;
        }};
}

void openEnvelope(const Library& library, View skeleton, const Certificate& certificate,
    const EnvelopeOpener& opener, const std::function<void(const Sink&)>& ciphertext, const Sink& take)
{
    opener.check(library, certificate);
    CmsHandle cms = parseCms(library, skeleton);
    placeOf(cms.get(), certificate);
    decrypt(opener.unlock(library, std::move(cms), certificate), ciphertext, take);
}

void openEncrypted(const Library& library, const Message& message, View key, const Sink& take)
{
    CmsHandle cms = parseCms(library, message.require(oid::encryptedData).layout().skeleton());
    require(CMS_EncryptedData_set1_key(cms.get(), nullptr, key.data(), key.size()) == 1, SIGIL_TK_DECRYPT);
    decrypt(
        std::move(cms), [&](const Sink& piece) { message.content(piece); }, take);
}

std::vector<Recipient> recipientsOf(const Library& library, const Message& message)
{
    const CmsHandle cms = parseCms(library, message.require(oid::envelopedData).layout().skeleton());
    std::vector<Recipient> out;
    for (CMS_RecipientInfo* recipient : recipients(cms.get())) {
        if (CMS_RecipientInfo_type(recipient) == CMS_RECIPINFO_AGREE) {
            describeAgreement(recipient, out);
            continue;
        }
        ASN1_OCTET_STRING* keyId = nullptr;
        X509_NAME* issuer = nullptr;
        ASN1_INTEGER* serial = nullptr;
        X509_ALGOR* algorithm = nullptr;
        if (CMS_RecipientInfo_type(recipient) == CMS_RECIPINFO_TRANS) {
            CMS_RecipientInfo_ktri_get0_signer_id(recipient, &keyId, &issuer, &serial);
            CMS_RecipientInfo_ktri_get0_algs(recipient, nullptr, nullptr, &algorithm);
        }
        out.push_back(describe(algorithm, issuer, serial, keyId));
    }
    return out;
}

} // namespace toolkit
