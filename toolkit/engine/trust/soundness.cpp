// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "toolkit/engine/trust/soundness.h"

#include "toolkit/engine/base/der.h"
#include "toolkit/engine/base/error.h"
#include "toolkit/engine/base/oid.h"

#include <openssl/objects.h>
#include <openssl/rsa.h>

#include <algorithm>
#include <set>
#include <string>

namespace toolkit {
namespace {

constexpr int leastRsaBits = 1024;
constexpr int newestVersion = 3;

using PssHandle = Handle<RSA_PSS_PARAMS, RSA_PSS_PARAMS_free>;

void releaseExtension(X509_EXTENSION* extension, void* decoded)
{
    const X509V3_EXT_METHOD* const method = X509V3_EXT_get(extension);
    if (method->it)
        ASN1_item_free(static_cast<ASN1_VALUE*>(decoded), ASN1_ITEM_ptr(method->it));
    else
        method->ext_free(decoded);
}

bool isOneElement(View bytes)
{
    const auto element = der::first(bytes);
    return element && element->whole.size() == bytes.size();
}

/** Extensions that OpenSSL does not know are as they please. */
bool isWellFormed(X509_EXTENSION* extension)
{
    if (!X509V3_EXT_get(extension))
        return true;
    void* const decoded = X509V3_EXT_d2i(extension);
    if (decoded)
        releaseExtension(extension, decoded);
    const ASN1_OCTET_STRING* const bytes = X509_EXTENSION_get_data(extension);
    return decoded &&
        isOneElement({ASN1_STRING_get0_data(bytes), static_cast<std::size_t>(ASN1_STRING_length(bytes))});
}

void requireSoundExtensions(const X509* certificate)
{
    std::set<std::string> seen;
    for (int i = 0; i < X509_get_ext_count(certificate); ++i) {
        X509_EXTENSION* const extension = X509_get_ext(certificate, i);
        const std::string name = dottedOid(X509_EXTENSION_get_object(extension));
        require(seen.insert(name).second, SIGIL_TK_VERIFY_FAILED, "repeated extension " + name);
        require(isWellFormed(extension), SIGIL_TK_VERIFY_FAILED, "malformed extension " + name);
    }
}

int digestOfPss(const X509_ALGOR* signature)
{
    const PssHandle parameters(static_cast<RSA_PSS_PARAMS*>(
        ASN1_TYPE_unpack_sequence(ASN1_ITEM_rptr(RSA_PSS_PARAMS), signature->parameter)));
    const X509_ALGOR* const digest = parameters ? parameters->hashAlgorithm : nullptr;
    return digest ? OBJ_obj2nid(digest->algorithm) : NID_sha1; // the default
}

int digestOf(const X509_ALGOR* signature)
{
    const int algorithm = OBJ_obj2nid(signature->algorithm);
    int digest = NID_undef;
    OBJ_find_sigid_algs(algorithm, &digest, nullptr);
    return algorithm == NID_rsassaPss ? digestOfPss(signature) : digest;
}

} // namespace

void requireSound(const Certificate& certificate)
{
    const int version = certificate.version();
    require(version >= 1 && version <= newestVersion, SIGIL_TK_VERIFY_FAILED, "version");
    require(version == newestVersion || X509_get_ext_count(certificate.get()) == 0, SIGIL_TK_VERIFY_FAILED,
        "extensions in an old version");
    requireSoundExtensions(certificate.get());
    require(!isShortKey(X509_get0_pubkey(certificate.get())), SIGIL_TK_VERIFY_FAILED, "the RSA key is too short");
}

bool isBrokenDigest(int nid)
{
    constexpr int broken[]{NID_md2, NID_md4, NID_md5};
    return std::find(std::begin(broken), std::end(broken), nid) != std::end(broken);
}

bool isShortKey(const EVP_PKEY* key)
{
    const int type = key ? EVP_PKEY_get_base_id(key) : EVP_PKEY_NONE;
    return (type == EVP_PKEY_RSA || type == EVP_PKEY_RSA_PSS) && EVP_PKEY_get_bits(key) < leastRsaBits;
}

bool isForgeable(const X509_ALGOR* signature) { return isBrokenDigest(digestOf(signature)); }

bool isForgeable(const X509_ALGOR* signature, const EVP_PKEY* key)
{
    return isForgeable(signature) || isShortKey(key);
}

} // namespace toolkit
