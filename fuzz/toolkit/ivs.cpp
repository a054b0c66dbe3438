// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Any bytes as a validation server's response, about the certificates that come with it and signed with them.

#include "toolkit/engine/status/ivs.h"
#include "fuzz/toolkit/input.h"

namespace {

/** The certificates in a CMS message, as far as they are sound. */
std::vector<toolkit::Certificate> certificatesIn(toolkit::View message)
{
    const toolkit::ErrorScope scope;
    std::vector<toolkit::Certificate> all;
    const unsigned char* at = message.data();
    const toolkit::Handle<CMS_ContentInfo, CMS_ContentInfo_free> cms(
        d2i_CMS_ContentInfo(nullptr, &at, static_cast<long>(message.size())));
    const toolkit::CertificatesHandle held(cms ? CMS_get1_certs(cms.get()) : nullptr);
    for (int i = 0; i < sk_X509_num(held.get()); ++i)
        fuzz::attempt([&] {
            all.emplace_back(
                fuzz::library(), toolkit::encode<toolkit::Bytes>(sk_X509_value(held.get(), i), i2d_X509));
        });
    return all;
}

} // namespace

FUZZ_TARGET(toolkit_ivs, input)
{
    constexpr std::time_t now = 1'800'000'000; // 2027: the same in every run
    // The same in every run too, so that an input can repeat it.
    const toolkit::IvsRequest request{toolkit::Bytes(16, 0x11), {}, {}};
    const toolkit::Bytes bytes = fuzz::der(input);
    fuzz::attempt([&] {
        const toolkit::IvsResponse response(fuzz::library(), bytes);
        fuzz::attempt([&] { response.requireMadeAt(now); });
        fuzz::attempt([&] { response.requireAnswerTo(fuzz::library(), request); });
        for (const toolkit::Certificate& own : certificatesIn(bytes)) {
            fuzz::attempt([&] { response.requireSigner(own, now); });
            fuzz::attempt([&] { response.requireValid(own); });
        }
    });
}
