#include "toolkit/engine/base/error.h"
#include "toolkit/engine/keys/key_file.h"
#include "toolkit/engine/keys/password.h"
#include "toolkit/engine/keys/private_key.h"
#include "toolkit/engine/pkcs12/pkcs12.h"
#include "toolkit/engine/pkcs12/pkcs12_handles.h"
#include "toolkit/engine/x509/certificate.h"

#include <algorithm>
#include <array>

namespace toolkit {
namespace {

constexpr int iterations = 2048;

struct Protection {
    int option;
    int keyAlgorithm;      ///< SigilToolkitKeyEncryption of the key bags
    int certificateCipher; ///< cipher of PBES2 around the certificates; NID_undef leaves them open
    const char* mac;
};

constexpr std::array protections{
    Protection{SIGIL_TK_PFX_3DES, SIGIL_TK_KEY_PKCS12_3DES, NID_undef, "SHA1"},
    Protection{SIGIL_TK_PFX_SEED, SIGIL_TK_KEY_PBES2_SEED, NID_seed_cbc, "SHA1"},
    Protection{SIGIL_TK_PFX_AES256, SIGIL_TK_KEY_PBES2_AES256, NID_aes_256_cbc, "SHA256"},
};

void ensure(bool condition) { require(condition, SIGIL_TK_INTERNAL, "PKCS#12"); }

/** Adds to a stack, which owns the bag from then on. */
void push(STACK_OF(PKCS12_SAFEBAG) * bags, BagHandle bag)
{
    ensure(sk_PKCS12_SAFEBAG_push(bags, bag.get()) > 0);
    static_cast<void>(bag.release());
}

Bytes keyIdentifier(const Library& library, const Certificate& certificate)
{
    if (const ASN1_OCTET_STRING* id = X509_get0_subject_key_id(certificate.get()))
        return {id->data, id->data + id->length};
    Bytes hash(EVP_MAX_MD_SIZE);
    unsigned length = 0;
    ensure(X509_pubkey_digest(certificate.get(), library.digest("SHA1").get(), hash.data(), &length) == 1);
    hash.resize(length);
    return hash;
}

BagHandle certificateBag(const Certificate& certificate)
{
    BagHandle bag(PKCS12_SAFEBAG_create_cert(certificate.get()));
    ensure(bag != nullptr);
    return bag;
}

BagHandle keyBag(const Library& library, int algorithm, View keyInfo, std::string_view password)
{
    const Bytes file = encryptKeyFile(library, algorithm, keyInfo, password);
    const unsigned char* at = file.data();
    EncryptedKeyHandle encrypted(d2i_X509_SIG(nullptr, &at, static_cast<long>(file.size())));
    ensure(encrypted != nullptr);
    BagHandle bag(PKCS12_SAFEBAG_create0_pkcs8(encrypted.get()));
    ensure(bag != nullptr);
    static_cast<void>(encrypted.release());
    return bag;
}

void label(PKCS12_SAFEBAG* bag, Bytes id)
{
    ensure(PKCS12_add_localkeyid(bag, id.data(), static_cast<int>(id.size())) == 1);
}

void push(STACK_OF(PKCS7) * safes, SafeHandle safe)
{
    ensure(safe && sk_PKCS7_push(safes, safe.get()) > 0);
    static_cast<void>(safe.release());
}

SafeHandle certificateSafe(
    const Library& library, const Protection& protection, STACK_OF(PKCS12_SAFEBAG) * bags, View password)
{
    if (protection.certificateCipher == NID_undef)
        return SafeHandle(PKCS12_pack_p7data(bags));
    return SafeHandle(PKCS12_pack_p7encdata_ex(protection.certificateCipher, chars(password),
        static_cast<int>(password.size()), nullptr, 0, iterations, bags, library.context(), nullptr));
}

} // namespace

Bytes writePkcs12(const Library& library, const Pkcs12Content& content, std::string_view password, int option)
{
    const auto* const protection = std::find_if(
        protections.begin(), protections.end(), [&](const Protection& p) { return p.option == option; });
    require(protection != protections.end(), SIGIL_TK_OPTION, "PKCS#12 option");
    const Secret secret = utf8Password(password);

    const BagsHandle certificates(sk_PKCS12_SAFEBAG_new_null());
    const BagsHandle keys(sk_PKCS12_SAFEBAG_new_null());
    ensure(certificates && keys);
    for (const CertifiedKey& pair : content.pairs) {
        const Certificate certificate(library, pair.certificate);
        checkKeyPair(library, certificate, pair.keyInfo);
        BagHandle holder = certificateBag(certificate);
        BagHandle key = keyBag(library, protection->keyAlgorithm, pair.keyInfo, {chars(secret), secret.size()});
        label(holder.get(), keyIdentifier(library, certificate));
        label(key.get(), keyIdentifier(library, certificate));
        push(certificates.get(), std::move(holder));
        push(keys.get(), std::move(key));
    }
    for (const Bytes& other : content.others)
        push(certificates.get(), certificateBag({library, other}));

    const SafesHandle safes(sk_PKCS7_new_null());
    ensure(safes != nullptr);
    push(safes.get(), certificateSafe(library, *protection, certificates.get(), secret));
    push(safes.get(), SafeHandle(PKCS12_pack_p7data(keys.get())));
    const Pkcs12Handle pfx(PKCS12_add_safes_ex(safes.get(), NID_pkcs7_data, library.context(), nullptr));
    ensure(pfx != nullptr);
    const DigestHandle mac = library.digest(protection->mac);
    ensure(PKCS12_set_mac(
               pfx.get(), chars(secret), static_cast<int>(secret.size()), nullptr, 0, iterations, mac.get()) == 1);
    return encode<Bytes>(pfx.get(), i2d_PKCS12);
}

} // namespace toolkit
