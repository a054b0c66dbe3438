// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Any text as policies and as a time; and any list of certificates as a path: the first is verified, the last is trusted, the others stand in between.

#include "fuzz/toolkit/input.h"
#include "toolkit/engine/trust/issuer.h"
#include "toolkit/engine/trust/paths.h"
#include "toolkit/engine/trust/soundness.h"
#include "toolkit/engine/x509/object_list.h"

namespace {

using namespace toolkit;

void verify(View list, const std::vector<Certificate>& certificates)
{
    constexpr std::time_t now = 1'800'000'000; // 2027: the same in every run
    const Certificate& leaf = certificates.front();
    const Bytes root = certificates.back().der();
    TrustStore store;
    store.time = now;
    store.trusted.emplace_back(fuzz::library(), root);
    store.authorities = certificatesOf(fuzz::library(), list);
    fuzz::attempt([&] { requireSound(leaf); });
    fuzz::attempt([&] { isTrusted(fuzz::library(), store, leaf, certificatesOf(fuzz::library(), root)); });
    for (const char* policy : {"", "1.2.410.200005.1.1.1"})
        fuzz::attempt([&] {
            VerifyRequest request;
            request.policies = policiesOf(policy);
            const auto path = verifyCertificate(fuzz::library(), store, leaf, request);
            require(path.front() == leaf.der(), "a path begins with the certificate");
            require(path.back() == root, "a path ends with what is trusted");
        });
}

} // namespace

FUZZ_TARGET(toolkit_path, input)
{
    for (const std::string& policy : policiesOf(fuzz::text(input)))
        require(!policy.empty(), "no policy is empty");
    fuzz::attempt([&] { optionalTime(fuzz::text(input)); });
    const Bytes bytes = fuzz::der(input);
    fuzz::attempt([&] {
        const std::vector<Certificate> certificates = certificatesOf(fuzz::library(), bytes);
        if (!certificates.empty())
            verify(bytes, certificates);
    });
}
