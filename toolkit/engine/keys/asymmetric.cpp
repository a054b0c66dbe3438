// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "toolkit/engine/keys/asymmetric.h"

#include "toolkit/engine/base/digest.h"
#include "toolkit/engine/base/error.h"
#include "toolkit/engine/base/file.h"
#include "toolkit/engine/keys/private_key.h"
#include "toolkit/engine/x509/object_list.h"

#include <openssl/err.h>
#include <openssl/rand.h>
#include <openssl/rsa.h>

#include <algorithm>
#include <array>
#include <optional>

namespace toolkit {
namespace {

constexpr int maximumRandom = 16 * 1024 * 1024;

/** A running signature or verification. */
class Signer {
public:
    Signer(const Library& library, const SignatureScheme& scheme, EVP_PKEY* key, bool verifying)
        : m_digest(hashAlgorithm(library, scheme.hash))
        , m_context(EVP_MD_CTX_new())
        , m_verifying(verifying)
    {
        require(m_context != nullptr, SIGIL_TK_NO_MEMORY); // OpenSSL would look into it
        EVP_PKEY_CTX* options = nullptr;                   // owned by m_context
        const char* const name = EVP_MD_get0_name(m_digest.get());
        auto* const start = verifying ? EVP_DigestVerifyInit_ex : EVP_DigestSignInit_ex;
        require(start(m_context.get(), &options, name, library.context(), nullptr, key, nullptr) == 1,
            SIGIL_TK_ALGORITHM, "signature");
        require(scheme.rsaVersion != SIGIL_TK_RSA_PSS || EVP_PKEY_is_a(key, "RSA") != 1 || usePss(options),
            SIGIL_TK_ALGORITHM, "RSASSA-PSS");
    }
    void update(View data)
    {
        auto* const add = m_verifying ? EVP_DigestVerifyUpdate : EVP_DigestSignUpdate;
        require(add(m_context.get(), data.data(), data.size()) == 1, SIGIL_TK_INTERNAL, "signature");
    }
    Bytes finish()
    {
        std::size_t length = 0;
        require(EVP_DigestSignFinal(m_context.get(), nullptr, &length) == 1, SIGIL_TK_ALGORITHM, "signature");
        Bytes signature(length);
        require(
            EVP_DigestSignFinal(m_context.get(), signature.data(), &length) == 1, SIGIL_TK_ALGORITHM, "signature");
        signature.resize(length);
        return signature;
    }
    void check(View signature)
    {
        require(
            EVP_DigestVerifyFinal(m_context.get(), signature.data(), signature.size()) == 1, SIGIL_TK_SIGNATURE);
    }

private:
    DigestHandle m_digest;
    DigestContextHandle m_context;
    bool m_verifying;
};

Signer signer(const Library& library, const SignatureScheme& scheme, View keyInfo)
{
    return {library, scheme, loadPrivateKey(library, keyInfo).get(), false};
}

Signer verifier(const Library& library, const SignatureScheme& scheme, const Certificate& certificate)
{
    return {library, scheme, certificate.publicKey().get(), true};
}

/** The public key of a certificate or of a SubjectPublicKeyInfo. */
KeyHandle loadPublicKey(const Library& library, View bytes)
{
    const unsigned char* at = bytes.data();
    KeyHandle key(d2i_PUBKEY_ex(nullptr, &at, static_cast<long>(bytes.size()), library.context(), nullptr));
    return key ? std::move(key) : Certificate(library, bytes).publicKey();
}

KeyContextHandle contextFor(const Library& library, EVP_PKEY* key)
{
    KeyContextHandle context(EVP_PKEY_CTX_new_from_pkey(library.context(), key, nullptr));
    require(context != nullptr, SIGIL_TK_ALGORITHM, "key");
    return context;
}

/** Ready for a hash that was taken elsewhere. @param start begins a signature or a verification */
KeyContextHandle digestContext(
    const Library& library, const SignatureScheme& scheme, EVP_PKEY* key, int (*start)(EVP_PKEY_CTX*))
{
    KeyContextHandle context = contextFor(library, key);
    const DigestHandle algorithm = hashAlgorithm(library, scheme.hash);
    const bool ready = start(context.get()) == 1 && (!signsWithPss(scheme, key) || usePss(context.get())) &&
        EVP_PKEY_CTX_set_signature_md(context.get(), algorithm.get()) == 1;
    require(ready, SIGIL_TK_ALGORITHM, "signature");
    return context;
}

using PkeyRun = int (*)(EVP_PKEY_CTX*, unsigned char*, std::size_t*, const unsigned char*, std::size_t);

template <class Container>
Container run(PkeyRun operation, EVP_PKEY_CTX* context, View data, int code)
{
    std::size_t length = 0;
    require(operation(context, nullptr, &length, data.data(), data.size()) == 1, code);
    Container out(length);
    require(operation(context, out.data(), &length, data.data(), data.size()) == 1, code);
    out.resize(length);
    return out;
}

bool isPrivateKind(int keyKind)
{
    require(keyKind == SIGIL_TK_ASYM_PUBLIC || keyKind == SIGIL_TK_ASYM_PRIVATE, SIGIL_TK_OPTION, "kind of key");
    return keyKind == SIGIL_TK_ASYM_PRIVATE;
}

/** Without a hash a signature is the padded data itself: what a private key closes and the public key opens. */
void requireV15(const EncryptionScheme& scheme)
{
    require(scheme.padding == SIGIL_TK_PADDING_V15, SIGIL_TK_OPTION, "only PKCS#1 v1.5 with this kind of key");
}

struct CurveName {
    int kind;
    const char* name;
};

constexpr std::array curves{CurveName{SIGIL_TK_KEYPAIR_P256, "P-256"}, CurveName{SIGIL_TK_KEYPAIR_P384, "P-384"}};

EVP_PKEY* generate(const Library& library, int kind)
{
    for (const CurveName& curve : curves)
        if (curve.kind == kind)
            return EVP_PKEY_Q_keygen(library.context(), nullptr, "EC", curve.name);
    require(isRsaKeyPair(kind), SIGIL_TK_ALGORITHM, "key pair " + std::to_string(kind));
    return EVP_PKEY_Q_keygen(library.context(), nullptr, "RSA", static_cast<std::size_t>(kind));
}

} // namespace

bool signsWithPss(const SignatureScheme& scheme, const EVP_PKEY* key)
{
    return EVP_PKEY_is_a(key, "RSA-PSS") == 1 ||
        (scheme.rsaVersion == SIGIL_TK_RSA_PSS && EVP_PKEY_is_a(key, "RSA") == 1);
}

bool usePss(EVP_PKEY_CTX* options)
{
    return EVP_PKEY_CTX_set_rsa_padding(options, RSA_PKCS1_PSS_PADDING) == 1 &&
        EVP_PKEY_CTX_set_rsa_pss_saltlen(options, RSA_PSS_SALTLEN_DIGEST) == 1;
}

void setPadding(EVP_PKEY_CTX* context, const Library& library, const EncryptionScheme& scheme)
{
    if (scheme.padding == SIGIL_TK_PADDING_V15) {
        require(EVP_PKEY_CTX_set_rsa_padding(context, RSA_PKCS1_PADDING) == 1, SIGIL_TK_ALGORITHM, "padding");
        return;
    }
    const DigestHandle digest = hashAlgorithm(library, scheme.hash);
    const bool set = EVP_PKEY_CTX_set_rsa_padding(context, RSA_PKCS1_OAEP_PADDING) == 1 &&
        EVP_PKEY_CTX_set_rsa_oaep_md(context, digest.get()) == 1 &&
        EVP_PKEY_CTX_set_rsa_mgf1_md(context, digest.get()) == 1;
    require(set, SIGIL_TK_ALGORITHM, "padding");
}

Bytes signDigest(const Library& library, const SignatureScheme& scheme, View keyInfo, View digest)
{
    const KeyHandle key = loadPrivateKey(library, keyInfo);
    const KeyContextHandle context = digestContext(library, scheme, key.get(), EVP_PKEY_sign_init);
    return run<Bytes>(EVP_PKEY_sign, context.get(), digest, SIGIL_TK_ALGORITHM);
}

void verifyDigest(const Library& library, const SignatureScheme& scheme, const Certificate& certificate,
    View digest, View signature)
{
    const DigestHandle algorithm = hashAlgorithm(library, scheme.hash);
    require(digest.size() == static_cast<std::size_t>(EVP_MD_get_size(algorithm.get())), SIGIL_TK_ARGUMENT,
        "size of the hash");
    const KeyHandle key = certificate.publicKey();
    const KeyContextHandle context = digestContext(library, scheme, key.get(), EVP_PKEY_verify_init);
    require(EVP_PKEY_verify(context.get(), signature.data(), signature.size(), digest.data(), digest.size()) == 1,
        SIGIL_TK_SIGNATURE);
}

Bytes sign(const Library& library, const SignatureScheme& scheme, View keyInfo, View data)
{
    Signer running = signer(library, scheme, keyInfo);
    running.update(data);
    return running.finish();
}

void verify(const Library& library, const SignatureScheme& scheme, const Certificate& certificate, View data,
    View signature)
{
    Signer running = verifier(library, scheme, certificate);
    running.update(data);
    running.check(signature);
}

void verify(const Library& library, const SignatureScheme& scheme, View publicKey, View data, View signature)
{
    Signer running(library, scheme, loadPublicKey(library, publicKey).get(), true);
    running.update(data);
    running.check(signature);
}

Bytes signFile(const Library& library, const SignatureScheme& scheme, View keyInfo, const std::string& path)
{
    Signer running = signer(library, scheme, keyInfo);
    readPieces(path, [&](View piece) { running.update(piece); });
    return running.finish();
}

void verifyFile(const Library& library, const SignatureScheme& scheme, const Certificate& certificate,
    const std::string& path, View signature)
{
    Signer running = verifier(library, scheme, certificate);
    readPieces(path, [&](View piece) { running.update(piece); });
    running.check(signature);
}

Bytes asymmetricEncrypt(const Library& library, const EncryptionScheme& scheme, int keyKind, View key, View data)
{
    const bool isPrivate = isPrivateKind(keyKind);
    const KeyHandle pkey = isPrivate ? loadPrivateKey(library, key) : loadPublicKey(library, key);
    const KeyContextHandle context = contextFor(library, pkey.get());
    if (isPrivate) {
        requireV15(scheme);
        require(EVP_PKEY_sign_init(context.get()) == 1, SIGIL_TK_ALGORITHM);
        return run<Bytes>(EVP_PKEY_sign, context.get(), data, SIGIL_TK_ALGORITHM);
    }
    require(EVP_PKEY_encrypt_init(context.get()) == 1, SIGIL_TK_ALGORITHM);
    setPadding(context.get(), library, scheme);
    return run<Bytes>(EVP_PKEY_encrypt, context.get(), data, SIGIL_TK_ALGORITHM);
}

Secret asymmetricDecrypt(const Library& library, const EncryptionScheme& scheme, int keyKind, View key, View data)
{
    const bool isPrivate = isPrivateKind(keyKind);
    const KeyHandle pkey = isPrivate ? loadPrivateKey(library, key) : loadPublicKey(library, key);
    const KeyContextHandle context = contextFor(library, pkey.get());
    if (!isPrivate) {
        requireV15(scheme);
        require(EVP_PKEY_verify_recover_init(context.get()) == 1, SIGIL_TK_ALGORITHM);
        return run<Secret>(EVP_PKEY_verify_recover, context.get(), data, SIGIL_TK_DECRYPT);
    }
    require(EVP_PKEY_decrypt_init(context.get()) == 1, SIGIL_TK_ALGORITHM);
    setPadding(context.get(), library, scheme);
    return run<Secret>(EVP_PKEY_decrypt, context.get(), data, SIGIL_TK_DECRYPT);
}

bool isRsaKeyPair(int kind)
{
    return kind >= SIGIL_TK_KEYPAIR_RSA1024 && kind <= SIGIL_TK_KEYPAIR_RSA4096 && kind % 1024 == 0;
}

KeyHandle generateKey(const Library& library, int kind)
{
    KeyHandle key(generate(library, kind));
    require(key != nullptr, SIGIL_TK_ALGORITHM, "key pair");
    return key;
}

int kindLike(const EVP_PKEY* key)
{
    const int bits = EVP_PKEY_get_bits(key);
    return EVP_PKEY_is_a(key, "EC") == 1 ? bits : std::max<int>(bits, SIGIL_TK_KEYPAIR_RSA2048);
}

KeyPair generateKeyPair(const Library& library, int kind)
{
    const KeyHandle key = generateKey(library, kind);
    return {encode<Bytes>(key.get(), i2d_PUBKEY), encodePrivateKey(key.get())};
}

Secret sharedKey(const Library& library, int hashCode, View keyInfo, View peer)
{
    const KeyHandle own = loadPrivateKey(library, keyInfo);
    const KeyHandle other = loadPublicKey(library, peer);
    const KeyContextHandle context = contextFor(library, own.get());
    std::size_t length = 0;
    const bool ready = EVP_PKEY_derive_init(context.get()) == 1 &&
        EVP_PKEY_derive_set_peer(context.get(), other.get()) == 1 &&
        EVP_PKEY_derive(context.get(), nullptr, &length) == 1;
    require(ready, SIGIL_TK_ALGORITHM, "key agreement");
    Secret secret(length);
    require(EVP_PKEY_derive(context.get(), secret.data(), &length) == 1, SIGIL_TK_ALGORITHM, "key agreement");
    secret.resize(length);
    return hashCode == SIGIL_TK_SHARED_RAW ? secret : secretHash(library, hashCode, secret);
}

Secret randomBytes(const Library& library, int count)
{
    require(count >= 1 && count <= maximumRandom, SIGIL_TK_ARGUMENT, "number of bytes");
    Secret bytes(static_cast<std::size_t>(count));
    require(RAND_priv_bytes_ex(library.context(), bytes.data(), bytes.size(), 0) == 1, SIGIL_TK_INTERNAL, "random");
    return bytes;
}

} // namespace toolkit
