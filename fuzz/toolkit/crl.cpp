// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Any bytes as a revocation list about a certificate, whose issuer is trusted.

#include "toolkit/engine/status/crl.h"
#include "fuzz/toolkit/input.h"
#include "fuzz/toolkit/own_certificate.h"
#include "toolkit/engine/trust/trust.h"

FUZZ_TARGET(toolkit_crl, input)
{
    using namespace toolkit;
    const Bytes bytes = fuzz::der(input);
    fuzz::attempt([&] { parseCrl(fuzz::library(), bytes); });
    fuzz::attempt([&] {
        TrustStore store;
        store.trusted.emplace_back(fuzz::library(), fuzz::ownCertificate().der());
        store.crls.push_back(bytes);
        revocationStatus(fuzz::library(), store, fuzz::ownCertificate(), {});
    });
    fuzz::attempt([&] {
        TrustStore store;
        setTrust(fuzz::library(), store, {}, fuzz::ownCertificate().der(), bytes);
        require(!store.crls.empty() || bytes.empty(), "what is taken is kept");
        VerifyRequest request;
        request.checksRevocation = true;
        verifyCertificate(fuzz::library(), store, fuzz::ownCertificate(), request);
    });
}
