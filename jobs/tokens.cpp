// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "jobs/tokens.h"

#include <algorithm>

namespace host {

namespace {

constexpr int onlyToRead = 4;                // CKF_SERIAL_SESSION
constexpr unsigned long initialised = 0x400; // CKF_TOKEN_INITIALIZED

/** A text of a token, which is filled up with blanks. */
template <std::size_t N>
std::string field(const unsigned char (&text)[N])
{
    const std::string whole(reinterpret_cast<const char*>(text), N);
    return whole.substr(0, whole.find_last_not_of(std::string(" \0", 2)) + 1);
}

std::vector<unsigned long> slotsOf(const Crypto& crypto)
{
    std::vector<unsigned long> slots(1024);
    unsigned long count = slots.size();
    crypto.check(PKCS11GetSlotList(crypto.handle(), slots.data(), &count));
    slots.resize(std::min<std::size_t>(count, slots.size()));
    return slots;
}

/** A session for as long as its certificates are read. Nobody logs in: certificates are for everybody to see. */
class TokenSession {
public:
    TokenSession(const Crypto& crypto, unsigned long slot)
        : m_crypto(crypto)
    {
        crypto.check(PKCS11OpenSessionWithSlotID(crypto.handle(), slot, nullptr, onlyToRead));
    }
    ~TokenSession() { PKCS11CloseSession(m_crypto.handle()); }
    TokenSession(const TokenSession&) = delete;
    TokenSession& operator=(const TokenSession&) = delete;

    std::vector<std::string> certificates() const
    {
        int count = 0;
        m_crypto.check(PKCS11GetCertCnt(m_crypto.handle(), &count));
        std::vector<std::string> found;
        for (int i = 0; i < count; ++i) {
            int kind = 0;
            Bytes id(m_crypto.handle());
            Bytes certificate(m_crypto.handle());
            m_crypto.check(PKCS11GetCertInfo(m_crypto.handle(), i, &kind, id.get(), certificate.get()));
            found.emplace_back(view(certificate));
        }
        return found;
    }

private:
    const Crypto& m_crypto;
};

Token readToken(const Setting& setting, const Crypto& crypto, unsigned long slot)
{
    PKCS11_TOKEN_INFO info{};
    crypto.check(PKCS11GetTokenInfo(crypto.handle(), slot, &info));
    Token token{slot, (info.flags & initialised) != 0, field(info.label), field(info.manufacturerID),
        field(info.model), field(info.serialNumber), {}};
    if (!token.initialised)
        return token;
    for (const std::string& der : TokenSession(crypto, slot).certificates())
        token.certificates.push_back(readCertificate(setting, crypto, der));
    return token;
}

} // namespace

std::vector<Token> tokens(const Setting& setting, const Crypto& crypto)
{
    std::vector<Token> found;
    for (const unsigned long slot : slotsOf(crypto))
        found.push_back(readToken(setting, crypto, slot));
    return found;
}

} // namespace host
