// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  A certificate that is the same in every run but for its signature: of the key of ownKeyInfo(), which signed it too. Messages name it by
 *  its issuer, which is itself, and its number.
 */
#pragma once

#include "fuzz/toolkit/input.h"
#include "toolkit/engine/keys/private_key.h"
#include "toolkit/engine/x509/certificate.h"

namespace fuzz {

inline toolkit::Certificate makeOwnCertificate()
{
    using namespace toolkit;
    const KeyHandle key = loadPrivateKey(library(), ownKeyInfo());
    const X509Handle made(X509_new_ex(library().context(), nullptr));
    X509_NAME* const name = X509_get_subject_name(made.get());
    X509_NAME_add_entry_by_txt(name, "CN", MBSTRING_ASC, reinterpret_cast<const unsigned char*>("x"), -1, -1, 0);
    X509_set_issuer_name(made.get(), name);
    ASN1_INTEGER_set(X509_get_serialNumber(made.get()), 1);
    ASN1_TIME_set(X509_getm_notBefore(made.get()), 0);
    ASN1_TIME_set(X509_getm_notAfter(made.get()), 4'000'000'000); // 2096
    X509_set_pubkey(made.get(), key.get());
    X509_sign(made.get(), key.get(), EVP_sha256());
    return {library(), encode<Bytes>(made.get(), i2d_X509)};
}

inline const toolkit::Certificate& ownCertificate()
{
    static const toolkit::Certificate made = makeOwnCertificate();
    return made;
}

} // namespace fuzz
