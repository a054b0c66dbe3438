// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Any bytes as an enveloped or encrypted message: its recipients, its content for one of them, and under a key that is the same
// in every run; what was signed before it was enveloped is verified.

#include "fuzz/toolkit/own_certificate.h"
#include "toolkit/engine/messages/enveloped.h"
#include "toolkit/engine/messages/sealed.h"

FUZZ_TARGET(toolkit_encrypted_message, input)
{
    using namespace toolkit;
    const Certificate& recipient = fuzz::ownCertificate();
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
