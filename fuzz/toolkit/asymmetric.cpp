// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Any bytes as a public key, a signature, an encrypted text, and the other side's key.

#include "toolkit/engine/keys/asymmetric.h"
#include "fuzz/toolkit/input.h"

FUZZ_TARGET(toolkit_asymmetric, input)
{
    using namespace toolkit;
    const Bytes bytes = fuzz::der(input);
    const View data = view("data");
    const Bytes& own = fuzz::ownKeyInfo();
    for (const int version : {SIGIL_TK_RSA_V15, SIGIL_TK_RSA_PSS}) {
        const SignatureScheme scheme{SIGIL_TK_HASH_SHA256, version};
        fuzz::attempt([&] { verify(fuzz::library(), scheme, View(bytes), data, bytes); });
        fuzz::attempt([&] {
            verify(fuzz::library(), scheme, View(bytes), data, sign(fuzz::library(), scheme, bytes, data));
        });
    }
    for (const int kind : {SIGIL_TK_ASYM_PUBLIC, SIGIL_TK_ASYM_PRIVATE})
        for (const int padding : {SIGIL_TK_PADDING_V15, SIGIL_TK_PADDING_OAEP}) {
            const EncryptionScheme scheme{padding, SIGIL_TK_HASH_SHA1};
            fuzz::attempt([&] { asymmetricEncrypt(fuzz::library(), scheme, kind, bytes, data); });
            fuzz::attempt([&] { asymmetricDecrypt(fuzz::library(), scheme, kind, bytes, bytes); });
        }
    fuzz::attempt([&] { sharedKey(fuzz::library(), SIGIL_TK_HASH_SHA256, own, bytes); });
    fuzz::attempt([&] { sharedKey(fuzz::library(), SIGIL_TK_SHARED_RAW, bytes, bytes); });
}
