// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Any bytes as a certificate: every getter, and what reads identity data.

#include "toolkit/engine/x509/certificate.h"
#include "fuzz/toolkit/input.h"
#include "toolkit/engine/keys/identity.h"
#include "toolkit/engine/x509/text.h"

using toolkit::Certificate;

FUZZ_TARGET(toolkit_certificate, input)
{
    const toolkit::Bytes bytes = fuzz::der(input);
    fuzz::attempt([&] {
        const Certificate certificate(fuzz::library(), bytes);
        for (const auto getter : {&Certificate::uid, &Certificate::serialNumber, &Certificate::signatureAlgorithm,
                 &Certificate::signature, &Certificate::issuerName, &Certificate::subjectName,
                 &Certificate::publicKeyAlgorithm, &Certificate::publicKeyLength, &Certificate::publicKeyText,
                 &Certificate::keyUsage, &Certificate::basicConstraints, &Certificate::policies,
                 &Certificate::policyIds, &Certificate::policyConstraints, &Certificate::extendedKeyUsage,
                 &Certificate::subjectAltName, &Certificate::issuerAltName, &Certificate::authorityKeyId,
                 &Certificate::subjectKeyId, &Certificate::crlDistributionPoints, &Certificate::crlUrlText,
                 &Certificate::authorityInfoAccess})
            fuzz::attempt([&] { (certificate.*getter)(); });
        fuzz::attempt([&] { toolkit::timeText(certificate.notBefore()); });
        fuzz::attempt([&] { certificate.remainingDays(0); });
        fuzz::attempt([&] { toolkit::verifyIdentity(fuzz::library(), certificate, toolkit::view("r"), "1"); });
        fuzz::attempt([&] { certificate.publicKey(); });
    });
}
