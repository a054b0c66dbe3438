// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// tokens: slots, tokens and the certificates on them.
#include "certificate.h"
#include "commands.h"

#include <nlohmann/json.hpp>

#include <array>

namespace host {

namespace {

constexpr Words looking{"Looking for tokens ...", "보안토큰을 찾습니다 ..."};
constexpr Words noToken{"No token found.", "보안토큰이 없습니다."};
constexpr Words slotWords{"slot {}", "슬롯 {}"};
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

struct Token {
    unsigned long slot;
    PKCS11_TOKEN_INFO info;
    std::vector<Certificate> certificates;
};

Token readToken(const Session& session, const Crypto& crypto, unsigned long slot)
{
    Token token{slot, {}, {}};
    crypto.check(PKCS11GetTokenInfo(crypto.handle(), slot, &token.info));
    if ((token.info.flags & initialised) == 0)
        return token;
    for (const std::string& der : TokenSession(crypto, slot).certificates())
        token.certificates.push_back(readCertificate(session, crypto, der));
    return token;
}

Json jsonOf(const Token& token)
{
    Json certificates = Json::array();
    for (const Certificate& certificate : token.certificates)
        certificates.push_back(jsonOf(certificate));
    return {{"slot", token.slot}, {"label", field(token.info.label)}, {"maker", field(token.info.manufacturerID)},
        {"model", field(token.info.model)}, {"serial", field(token.info.serialNumber)},
        {"initialised", (token.info.flags & initialised) != 0}, {"certificates", certificates}};
}

void addRows(const Session& session, const Token& token, std::vector<std::vector<Cell>>& rows)
{
    rows.push_back({Cell(session.say(slotWords, {std::to_string(token.slot)})), Cell(field(token.info.label)),
        Cell(field(token.info.manufacturerID) + ", " + field(token.info.model)),
        Cell(field(token.info.serialNumber))});
    for (const Certificate& certificate : token.certificates)
        rows.push_back({Cell(""), Cell(certificate.name), Cell(certificate.issuerName), Cell(day(certificate.to))});
}

} // namespace

int runTokens(Session& session)
{
    const Crypto crypto(session);
    Json list = Json::array();
    std::vector<std::vector<Cell>> rows;
    {
        const Progress progress(session.output, looking);
        for (const unsigned long slot : slotsOf(crypto)) {
            const Token token = readToken(session, crypto, slot);
            list.push_back(jsonOf(token));
            addRows(session, token, rows);
        }
    }
    session.output.document({{"tokens", list}});
    if (rows.empty())
        session.output.line(session.say(noToken));
    session.output.table(rows);
    return rows.empty() ? no : done;
}

} // namespace host
