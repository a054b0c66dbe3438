// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Time stamps.
#include "sigil/call.h"

#include "jobs/stamping.h"

using host::need;

int sigil_timestamp(SigilSession* session, const char* url, const void* data, size_t size, SigilBytes* token)
{
    return host::run(session, [&](SigilSession& s) {
        need(url != nullptr && *url, "the address");
        need(token != nullptr, "the token");
        const host::Crypto crypto(s.setting); // of its own: it remembers the request
        host::give(host::stampToken(crypto, url, host::bytesOf(data, size, "the data")), token);
    });
}

int sigil_stamp(SigilSession* session, const void* token, size_t token_size, const void* data, size_t data_size,
    SigilStamp* stamp)
{
    return host::run(session, [&](SigilSession& s) {
        need(stamp != nullptr, "the stamp");
        host::checkSize(stamp->size, sizeof *stamp);
        const host::Crypto crypto(s.setting, SIGIL_TOOLKIT_GPKI); // the other one compares tokens with files alone
        host::Bytes bytes(crypto.handle());
        host::Bytes stamped(crypto.handle());
        host::Bytes authority(crypto.handle());
        host::set(crypto, bytes, host::bytesOf(token, token_size, "the token"));
        host::set(crypto, stamped, host::bytesOf(data, data_size, "the data"));
        crypto.check(TSPVerifyToken2(crypto.handle(), nullptr, stamped.get(), bytes.get(), authority.get()));
        s.stamp = host::stampOf(crypto, bytes);
        SigilStamp read{};
        read.time = s.stamp.time;
        read.policy = s.stamp.policy.c_str();
        read.serial = s.stamp.serial.c_str();
        host::fill(stamp, read);
    });
}
