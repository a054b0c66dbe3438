// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Owners for OpenSSL objects.
 */
#pragma once

#include "toolkit/engine/base/error.h"

#include <openssl/asn1.h>
#include <openssl/bio.h>
#include <openssl/bn.h>
#include <openssl/cms.h>
#include <openssl/ec.h>
#include <openssl/evp.h>
#include <openssl/pkcs12.h>
#include <openssl/x509.h>
#include <openssl/x509_vfy.h>
#include <openssl/x509v3.h>

#include <memory>
#include <utility>

namespace toolkit {

template <auto Release>
struct Releaser {
    template <class T>
    void operator()(T* object) const
    {
        Release(object);
    }
};

template <class T, auto Release>
using Handle = std::unique_ptr<T, Releaser<Release>>;

inline void releaseBuffer(void* buffer) { OPENSSL_free(buffer); }
inline void releaseCertificates(STACK_OF(X509) * stack) { sk_X509_pop_free(stack, X509_free); }

using X509Handle = Handle<X509, X509_free>;
using CrlHandle = Handle<X509_CRL, X509_CRL_free>;
using KeyHandle = Handle<EVP_PKEY, EVP_PKEY_free>;
using KeyContextHandle = Handle<EVP_PKEY_CTX, EVP_PKEY_CTX_free>;
using KeyInfoHandle = Handle<PKCS8_PRIV_KEY_INFO, PKCS8_PRIV_KEY_INFO_free>;
using EncryptedKeyHandle = Handle<X509_SIG, X509_SIG_free>;
using AlgorithmHandle = Handle<X509_ALGOR, X509_ALGOR_free>;
using CipherHandle = Handle<EVP_CIPHER, EVP_CIPHER_free>;
using CipherContextHandle = Handle<EVP_CIPHER_CTX, EVP_CIPHER_CTX_free>;
using DigestHandle = Handle<EVP_MD, EVP_MD_free>;
using DigestContextHandle = Handle<EVP_MD_CTX, EVP_MD_CTX_free>;
using MacHandle = Handle<EVP_MAC, EVP_MAC_free>;
using MacContextHandle = Handle<EVP_MAC_CTX, EVP_MAC_CTX_free>;
using BioHandle = Handle<BIO, BIO_free_all>;
using ObjectHandle = Handle<ASN1_OBJECT, ASN1_OBJECT_free>;
using NumberHandle = Handle<BIGNUM, BN_clear_free>;
using NumberContextHandle = Handle<BN_CTX, BN_CTX_free>;
using GroupHandle = Handle<EC_GROUP, EC_GROUP_free>;
using PointHandle = Handle<EC_POINT, EC_POINT_clear_free>;
using CertificatesHandle = Handle<STACK_OF(X509), releaseCertificates>;
using CmsHandle = Handle<CMS_ContentInfo, CMS_ContentInfo_free>;
using BufferHandle = Handle<unsigned char, releaseBuffer>;

/** DER of an object, through its i2d function. Throws SIGIL_TK_INTERNAL when OpenSSL cannot encode it. */
template <class Container, class T, class Encoder>
Container encode(const T* object, Encoder i2d)
{
    const int length = i2d(const_cast<T*>(object), nullptr);
    require(length > 0, SIGIL_TK_INTERNAL, "encoding");
    Container der(static_cast<std::size_t>(length));
    unsigned char* out = der.data();
    require(i2d(const_cast<T*>(object), &out) == length, SIGIL_TK_INTERNAL, "encoding");
    return der;
}

/** Decodes into an object that was made in a library context. On failure OpenSSL frees the object only when it began to
 *  fill it, and then clears the pointer; what the pointer says afterwards is what is left to own.
 *  @param decode takes the pointer's address and answers null on failure
 *  @return null on failure */
template <class T, auto Release, class Decoder>
Handle<T, Release> decodeInto(Handle<T, Release> object, Decoder decode)
{
    T* target = object.release();
    const bool decoded = decode(&target) != nullptr;
    object.reset(target);
    return decoded ? std::move(object) : nullptr;
}

} // namespace toolkit
