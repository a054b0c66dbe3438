// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "keys.h"

namespace host {

void unlock(const Session& session, const Crypto& crypto, const Certificate& certificate, Pair pair, Bytes& key)
{
    mustHave(certificate, pair);
    crypto.check(withPassword(session, certificate.name,
        [&](Secret& password) { return unlockWith(crypto, certificate, pair, password, key); }));
}

} // namespace host
