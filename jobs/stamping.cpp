// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "jobs/stamping.h"

#include <sigildesk/open_toolkit.h>

#include <array>

namespace host {

std::string stampToken(const Crypto& crypto, const std::string& url, std::string_view data)
{
    Bytes text(crypto.handle());
    Bytes nobody(crypto.handle()); // requests are not signed, but something must stand there
    Bytes request(crypto.handle());
    Bytes response(crypto.handle());
    Bytes token(crypto.handle());
    Bytes authority(crypto.handle());
    set(crypto, text, data);
    set(crypto, nobody, "-");
    std::string address = url;
    char anyPolicy[] = "";
    crypto.check(TSPMakeReqMsg(crypto.handle(), text.get(), SIGIL_TK_HASH_SHA256, anyPolicy, true, nobody.get(),
        nobody.get(), request.get()));
    crypto.check(TSPSendAndRecv1(crypto.handle(), address.data(), 0, request.get(), response.get()));
    crypto.check(TSPSendAndRecv2(crypto.handle(), response.get(), token.get(), authority.get()));
    return std::string(view(token));
}

// Only the government library has the functions for that; it is no more than the means here.
std::string stamped(
    const Setting& setting, const std::string& message, const std::string& content, const std::string& url)
{
    const Crypto gpki(setting, SIGIL_TOOLKIT_GPKI);
    Bytes before(gpki.handle());
    Bytes text(gpki.handle());
    Bytes signature(gpki.handle());
    Bytes token(gpki.handle());
    Bytes after(gpki.handle());
    set(gpki, before, message);
    set(gpki, text, content);
    gpki.check(CMSProcessSignedData(gpki.handle(), SIGIL_TK_CHECK_SIGNATURES, before.get(), text.get(), nullptr));
    gpki.check(CMSGetTBTData(gpki.handle(), 0, signature.get()));
    set(gpki, token, stampToken(gpki, url, view(signature)));
    gpki.check(CMSGetTimeStampToken2(gpki.handle(), before.get(), 0, token.get(), after.get()));
    return std::string(view(after));
}

Stamp stampOf(const Crypto& crypto, Bytes& token)
{
    constexpr int capacity = 2048;
    using Text = std::array<char, capacity + 1>;
    std::array<Text, 8> texts{};
    Bytes authority(crypto.handle());
    crypto.check(
        TSPGetTokenInfo(crypto.handle(), token.get(), capacity, texts[0].data(), texts[1].data(), texts[2].data(),
            texts[3].data(), texts[4].data(), texts[5].data(), texts[6].data(), texts[7].data(), authority.get()));
    return {timeOf(texts[6].data()), dotted(texts[2].data()), texts[5].data()};
}

} // namespace host
