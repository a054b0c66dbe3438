// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Private keys: opened, kept, wiped and handed out.
#include "sigil/keys.h"

#include "sigil/call.h"

#include "jobs/failure.h"

#include <sigildesk/open_toolkit.h>

#include <cstring>

using host::Entry;
using host::need;

namespace host {

Secret secretOf(const char* text, const char* argument)
{
    need(text != nullptr && *text, argument);
    return Secret(sigil::SecretBytes(text, text + std::strlen(text)));
}

const sigil::SecretBytes& keyOf(const Entry& entry, Pair pair)
{
    mustHave(entry.certificate, pair);
    const sigil::SecretBytes& key = entry.keys[static_cast<std::size_t>(pair)];
    if (key.empty())
        refuse(SIGIL_LOCKED, entry.certificate.name);
    return key;
}

void setKey(const Crypto& crypto, const Entry& entry, Pair pair, Bytes& bytes)
{
    const sigil::SecretBytes& key = keyOf(entry, pair);
    set(crypto, bytes, {key.data(), key.size()});
}

Pair pairNumbered(int pair)
{
    need(pair == SIGIL_PAIR_SIGNING || pair == SIGIL_PAIR_KEY_MANAGEMENT, "the pair");
    return pair == SIGIL_PAIR_SIGNING ? Pair::Sign : Pair::KeyManagement;
}

} // namespace host

namespace {

/** All keys of a certificate or, when one of them does not open, none. */
void unlock(const host::Crypto& crypto, Entry& entry, host::Secret password)
{
    host::mustHave(entry.certificate, host::Pair::Sign);
    host::Keys keys;
    for (const host::Pair pair : host::pairsOf(entry.certificate)) {
        host::Bytes key(crypto.handle());
        crypto.check(host::unlockWith(crypto, entry.certificate, pair, password, key));
        const std::string_view bytes = host::view(key);
        keys.at(static_cast<std::size_t>(pair)).assign(bytes.begin(), bytes.end());
    }
    entry.keys.swap(keys);
}

void handOut(const host::Crypto& crypto, const Entry& entry, host::Pair pair, const char* password, SigilBytes* to)
{
    const sigil::SecretBytes& key = host::keyOf(entry, pair);
    if (!password)
        return host::give({key.data(), key.size()}, to);
    host::Secret secret = host::secretOf(password, "the new password");
    host::Bytes plain(crypto.handle());
    host::Bytes encrypted(crypto.handle());
    host::setKey(crypto, entry, pair, plain);
    crypto.check(
        PriKeyEncrypt(crypto.handle(), SIGIL_TK_KEY_PBES2_AES256, secret.chars(), plain.get(), encrypted.get()));
    host::give(host::view(encrypted), to);
}

} // namespace

int sigil_unlock(SigilSession* session, int entry, const char* password)
{
    return host::run(session, [&](SigilSession& s) {
        unlock(*s.crypto, host::entryOf(s, entry), host::secretOf(password, "the password"));
    });
}

int sigil_lock(SigilSession* session, int entry)
{
    return host::run(session, [&](SigilSession& s) {
        if (entry != SIGIL_ALL_ENTRIES)
            return host::entryOf(s, entry).lock();
        for (Entry& each : s.entries)
            each.lock();
    });
}

int sigil_private_key(SigilSession* session, int entry, int pair, const char* new_password, SigilBytes* key)
{
    return host::run(session, [&](SigilSession& s) {
        need(key != nullptr, "the key");
        handOut(*s.crypto, host::entryOf(s, entry), host::pairNumbered(pair), new_password, key);
    });
}

int sigil_identity(SigilSession* session, int entry, const char* number)
{
    return host::run(session, [&](SigilSession& s) {
        const Entry& chosen = host::entryOf(s, entry);
        host::Secret secret = host::secretOf(number, "the identity number");
        void* const crypto = s.crypto->handle();
        host::Bytes key(crypto);
        host::Bytes random(crypto);
        host::Bytes certificate(crypto);
        host::setKey(*s.crypto, chosen, host::Pair::Sign, key);
        s.crypto->check(VIDGetRandomFromPriKey(crypto, key.get(), random.get()));
        host::setCertificate(*s.crypto, chosen.certificate, host::Pair::Sign, certificate);
        s.crypto->check(VIDVerify(crypto, certificate.get(), random.get(), secret.chars()));
    });
}
