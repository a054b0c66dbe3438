// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Encryption for the holders of certificates.
#include "sigil/call.h"
#include "sigil/keys.h"

#include "jobs/envelope.h"

#include <sigildesk/open_toolkit.h>

#include <algorithm>
#include <iterator>

using host::Bytes;
using host::need;

namespace {

/** The toolkit's number of each enum SigilCipher. */
constexpr int ciphers[] = {SIGIL_TK_CIPHER_AES256, SIGIL_TK_CIPHER_AES192, SIGIL_TK_CIPHER_AES128,
    SIGIL_TK_CIPHER_ARIA256, SIGIL_TK_CIPHER_ARIA192, SIGIL_TK_CIPHER_ARIA128, SIGIL_TK_CIPHER_SEED,
    SIGIL_TK_CIPHER_3DES};

std::vector<std::string> certificatesOf(const host::Crypto& crypto, const SigilBytes* recipients, int count)
{
    need(recipients != nullptr && count > 0, "the recipients");
    std::vector<std::string> certificates;
    for (const SigilBytes* recipient = recipients; recipient != recipients + count; ++recipient)
        certificates.push_back(host::derOf(crypto, host::bytesOf(recipient->data, recipient->size, "a recipient")));
    return certificates;
}

/** Opens a message with the key of one pair. @return a result of the library */
int open(const host::Crypto& crypto, const host::Entry& entry, host::Pair pair, Bytes& message, Bytes& content)
{
    Bytes certificate(crypto.handle());
    Bytes key(crypto.handle());
    host::setKey(crypto, entry, pair, key);
    host::setCertificate(crypto, entry.certificate, pair, certificate);
    return CMSProcessEnvelopedData(crypto.handle(), certificate.get(), key.get(), message.get(), content.get());
}

void decrypt(const host::Crypto& crypto, const host::Entry& entry, std::string_view data, SigilBytes* to)
{
    host::keyOf(entry, host::Pair::Sign);
    Bytes message(crypto.handle());
    Bytes content(crypto.handle());
    host::set(crypto, message, data);
    std::vector<host::Pair> pairs = host::pairsOf(entry.certificate);
    std::reverse(pairs.begin(), pairs.end()); // the key-management pair is there for this
    int code = SIGIL_TK_CMS_NOBODY;
    for (const host::Pair pair : pairs)
        if (code == SIGIL_TK_CMS_NOBODY)
            code = open(crypto, entry, pair, message, content);
    crypto.check(code);
    host::give(host::view(content), to);
}

} // namespace

int sigil_encrypt(SigilSession* session, int cipher, const SigilBytes* recipients, int count, const void* data,
    size_t size, SigilBytes* message)
{
    return host::run(session, [&](SigilSession& s) {
        need(cipher >= 0 && cipher < static_cast<int>(std::size(ciphers)), "the cipher");
        need(message != nullptr, "the message");
        const std::vector<std::string> certificates = certificatesOf(*s.crypto, recipients, count);
        host::give(host::encrypted(
                       s.setting, *s.crypto, certificates, host::bytesOf(data, size, "the data"), ciphers[cipher]),
            message);
    });
}

int sigil_decrypt(SigilSession* session, int entry, const void* message, size_t size, SigilBytes* content)
{
    return host::run(session, [&](SigilSession& s) {
        need(content != nullptr, "the content");
        decrypt(*s.crypto, host::entryOf(s, entry), host::bytesOf(message, size, "the message"), content);
    });
}
