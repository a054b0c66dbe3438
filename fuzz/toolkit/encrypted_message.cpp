// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Any bytes as an enveloped or encrypted message: its recipients, its content for one of them, and under a key that is the same
// in every run; what was signed before it was enveloped is verified.

#include "fuzz/toolkit/input.h"
#include "toolkit/engine/keys/private_key.h"
#include "toolkit/engine/messages/enveloped.h"
#include "toolkit/engine/messages/sealed.h"

namespace {

using namespace toolkit;

/** The recipient of the seeds: messages name it by its issuer, which is itself, and its number. */
Certificate makeRecipient()
{
    const KeyHandle key = loadPrivateKey(fuzz::library(), fuzz::ownKeyInfo());
    const X509Handle made(X509_new_ex(fuzz::library().context(), nullptr));
    X509_NAME* const name = X509_get_subject_name(made.get());
    X509_NAME_add_entry_by_txt(name, "CN", MBSTRING_ASC, reinterpret_cast<const unsigned char*>("x"), -1, -1, 0);
    X509_set_issuer_name(made.get(), name);
    ASN1_INTEGER_set(X509_get_serialNumber(made.get()), 1);
    X509_gmtime_adj(X509_getm_notBefore(made.get()), 0);
    X509_gmtime_adj(X509_getm_notAfter(made.get()), 1);
    X509_set_pubkey(made.get(), key.get());
    X509_sign(made.get(), key.get(), EVP_sha256());
    return {fuzz::library(), encode<Bytes>(made.get(), i2d_X509)};
}

} // namespace

FUZZ_TARGET(toolkit_encrypted_message, input)
{
    static const Certificate recipient = makeRecipient();
    const Bytes bytes = fuzz::der(input);
    const Bytes key(16, 0x11);
    fuzz::attempt([&] {
        const Message message{Input(bytes)};
        fuzz::attempt([&] { recipientsOf(fuzz::library(), message); });
        fuzz::attempt([&] {
            const Secret opened = openMessage(fuzz::library(), message, recipient, openerWith(fuzz::ownKeyInfo()));
            verifyMessage(fuzz::library(), signedWithin(opened), nullptr, {});
        });
        openEncrypted(fuzz::library(), message, key, [](View) {});
    });
}
